# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""A window on a cluster of which something fails: what is seen, and for how long."""

import time
from collections.abc import Callable
from typing import NamedTuple

from cluster.proof.window import Look, Window
from cluster.runner.processes import LIMIT, ClusterError

PATIENCE = 2.0  # seconds after the first wrong look in which the same window may come right by itself
STEADY = 0.8  # seconds of right looks on end: HAProxy needs half of them to notice that a server is gone
PAUSE = 0.02  # seconds between two looks
NODE = 0
NOTHING = "do nothing"
SAME_WINDOW, NEW_WINDOW = "choose the node again", "close the window and open it again"
EMPTY = "0"


class Glance(NamedTuple):
    """One look, and the seconds from the fault until it was over."""

    look: Look
    end: float
    took: float


class Sight(NamedTuple):
    """What was seen of a fault. Times are in seconds."""

    fault: str
    shown: str  # what the window showed
    calls: str  # what the host's calls returned
    longest: float  # the longest wait for an answer, right or not
    right: float  # from the fault until right rows; the time until the user opens a new window isn't counted
    remedy: str  # what the user must do
    half: bool  # whether anything else was shown than right rows or none


class Scene:
    """A window that is open, with what it is to show."""

    def __init__(self, window: Window, expected: Look) -> None:
        self.window, self._expected = window, expected

    def begin(self) -> None:
        """Opens the window, and anew until it is right."""
        self.window.open()
        self._reopen()

    def see(self, fault: str, strike: Callable[[], object]) -> Sight:
        """Lets the fault happen and looks until the window stays right, in the end by a new window."""
        strike()
        glances = self._watch(time.monotonic())
        wrong = [glance for glance in glances if not self._is_right(glance.look)]
        worst = (wrong or glances)[0]
        first_date = "" if wrong else f", first date {self.window.first_date()}"
        right = (
            next((glance.end for glance in glances if glance.end > wrong[-1].end), None)
            if wrong
            else worst.end
        )
        remedy, boxes = SAME_WINDOW if wrong else NOTHING, list[str]()
        if right is None:
            first_date = f", first date {self.window.first_date()}"
            opened = time.monotonic()
            remedy, boxes = NEW_WINDOW, self._reopen(glances)
            right = worst.end + time.monotonic() - opened
        half = any(glance.look.rows != EMPTY for glance in glances if not self._is_right(glance.look))
        shown = "right rows" if not wrong else "OTHER ROWS" if half else "an empty table"
        shown = f"{shown}; a box: {', '.join(boxes)}" if boxes else shown
        calls = f"getNumRows {worst.look.rows}{first_date}"
        longest = max(glance.took for glance in glances)
        return Sight(fault, shown, calls, longest, right, remedy, half)

    def see_during_answer(self, fault: str, node: int, size: int, strike: Callable[[], object]) -> Sight:
        """Lets the fault happen while a large node is being fetched, which must come whole or not at all."""
        self.window.choose(node)
        strike()
        start = time.monotonic()
        rows = self.window.rows()
        took = time.monotonic() - start
        sight = self.see(fault, lambda: None)
        half = sight.half or rows not in (str(size), EMPTY)
        shown = f"{'OTHER ROWS' if half else 'all rows' if rows != EMPTY else 'an empty table'}, then {sight.shown}"
        calls = f"getNumRows {rows}, then {sight.calls}"
        return sight._replace(
            shown=shown, calls=calls, longest=max(took, sight.longest), right=took + sight.right, half=half
        )

    def see_until_repair(
        self, fault: str, strike: Callable[[], object], repair: Callable[[], object]
    ) -> Sight:
        """Lets a fault happen with which there can be no rows; the time until right rows counts from its repair on."""
        strike()
        start = time.monotonic()
        look, first_date = self.window.look(NODE), self.window.first_date()
        took = time.monotonic() - start
        repair()
        sight = self.see(fault, lambda: None)
        half = sight.half or look.rows != EMPTY
        shown = f"{'OTHER ROWS' if half else 'an empty table'}, when it is back {sight.shown}"
        calls = f"getNumRows {look.rows}, first date {first_date}"
        remedy = f"wait until it is back, then {SAME_WINDOW if sight.remedy == NOTHING else sight.remedy}"
        return sight._replace(shown=shown, calls=calls, longest=took, remedy=remedy, half=half)

    def _watch(self, start: float) -> list[Glance]:
        """Looks until the window has stayed right for a while, or wrong for too long."""
        glances: list[Glance] = []
        right, wrong = start, 0.0  # when the looks became right, and the first wrong one
        while True:
            begin = time.monotonic()
            look = self.window.look(NODE)
            end = time.monotonic()
            glances.append(Glance(look, end - start, end - begin))
            if not self._is_right(look):
                right, wrong = end, wrong or end
            if end > right + STEADY or (wrong and end > wrong + PATIENCE and right == end):
                return glances
            time.sleep(PAUSE)

    def _is_right(self, look: Look) -> bool:
        return look == self._expected

    def _reopen(self, glances: list[Glance] | None = None) -> list[str]:
        """Opens new windows until one is right; the texts of boxes that came up. The looks are added to those given."""
        boxes: list[str] = []
        start = time.monotonic()
        while True:
            if glances is not None:
                self.window.close()
                boxes += self.window.open()
            look = self.window.look(NODE)
            if self._is_right(look):
                return boxes
            if time.monotonic() > start + LIMIT:
                raise ClusterError(f"no right rows within {LIMIT:.0f} s, but {look}")
            glances = [] if glances is None else glances
            glances.append(Glance(look, 0.0, 0.0))
