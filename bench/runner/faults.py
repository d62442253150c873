# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""How soon a host's questions are answered when something around it has failed, and how soon a new window is right."""

import time
from collections.abc import Callable
from typing import NamedTuple

from bench.runner.faultbed import Bed, Node, Reply
from bench.runner.question import Sampler
from bench.runner.worker import Answer, BenchError, Worker
from cluster.runner.processes import ClusterError, wait_for

ANSWERS, NEW_WINDOW = "answers", "new window"
CONSTRUCT = ("construct", "som", "news", "news_train")
BOX, BOX_LINE = "SQL Error", "show error"
WINDOW = "Ombrel"
TREE = "4"  # nodes
UNMARKED = Reply("0", "0")  # nothing there, nothing marked yet
UNANSWERED = Reply("-1", "-1")  # what the host had in its variables


class Trial:
    """One host through one fault. Its questions are getNumRows and getFirstDateInFrame, after a choice and a mark."""

    def __init__(self, bed: Bed, host: Worker) -> None:
        self.bed, self.host = bed, host
        self.figures: dict[str, float] = {}  # seconds, each the longest so far

    @property
    def nothing(self) -> Reply:
        """No rows, and the date that was marked before."""
        return Reply("0", self.bed.first.reply.date)

    def open(self) -> None:
        """A window is shown, and right."""
        self.host.go(*CONSTRUCT)
        self.host.go("show")
        self.bed.display.wait_active(WINDOW)
        self.choose(self.bed.first)
        check(self.host.go("ask"), self.bed.first.reply)

    def choose(self, node: Node) -> None:
        """Chooses a node and marks its first date; nobody waits for that."""
        self.host.go("select", str(node.number), *node.date.split())

    def ask(self, *wanted: Reply, node: Node | None = None) -> Reply:
        """Chooses another node and asks, now that the fault is over or has just happened."""
        begin = time.monotonic()
        self.choose(node or self.bed.chosen)
        self.host.give("ask")
        return self.hear(begin, *wanted)

    def hear(self, begin: float, *wanted: Reply) -> Reply:
        """Waits for the answers to what was asked."""
        answer = self.host.answer()
        self._note(ANSWERS, begin)
        check(answer, *wanted)
        return Reply(**answer.results)

    def lose_display(self, wanted: Reply) -> None:
        """Asks until the loss has come to light; every question returns, at first maybe with an answer."""
        self.bed.display.kill()
        wait_for("the loss is known", lambda: self.ask(UNANSWERED, wanted) == UNANSWERED)

    def reopen(self) -> None:
        """Takes the window back and makes a new one, which is right."""
        begin = time.monotonic()
        self.host.go("free")
        self.host.go(*CONSTRUCT)
        self.choose(self.bed.chosen)
        answer = self.host.go("ask")
        self._note(NEW_WINDOW, begin)
        check(answer, self.bed.chosen.reply)

    def open_box(self) -> None:
        """A window without a database is shown, under the box that its tree has brought up."""
        self.host.give(*CONSTRUCT)
        self.bed.display.press(BOX, "Return")
        self.host.expect(BOX_LINE)
        self.host.answer()
        self.host.go("show")
        self.bed.display.wait_active(WINDOW)
        self.host.give("tree", TREE)
        self.host.expect(BOX_LINE)
        self.host.answer()
        self.bed.display.wait_active(BOX)

    def _note(self, figure: str, begin: float) -> None:
        self.figures[figure] = max(self.figures.get(figure, 0.0), time.monotonic() - begin)


def check(answer: Answer, *wanted: Reply) -> None:
    """Raises BenchError when an answer is none of those that are right."""
    for name in Reply._fields:
        value = answer.results.get(name)
        right = list(dict.fromkeys(getattr(reply, name) for reply in wanted))
        if value not in right:
            raise BenchError(f"{name} is {value}, not {' or '.join(right)}")


def server_halted(trial: Trial) -> None:
    """The question waits already when the server goes on."""
    trial.open()
    trial.bed.server.stop()
    trial.choose(trial.bed.chosen)
    trial.host.go("settle")  # the window waits for the server
    trial.host.give("ask")
    trial.bed.server.go_on()
    trial.hear(time.monotonic(), trial.bed.chosen.reply)


def connection_killed(trial: Trial) -> None:
    trial.open()
    trial.bed.cut_connections()
    trial.ask(trial.nothing)
    trial.reopen()


def server_killed(trial: Trial) -> None:
    """Questions are asked while the server is away, and once it is back."""
    trial.open()
    trial.bed.server.kill()
    trial.ask(trial.nothing)
    trial.bed.restart()
    trial.ask(trial.nothing)
    trial.reopen()


def server_restarted(trial: Trial) -> None:
    trial.open()
    trial.bed.restart()
    trial.ask(trial.nothing)
    trial.reopen()


def idle_for_too_long(trial: Trial) -> None:
    trial.bed.set("wait_timeout", "1")
    trial.open()
    trial.bed.wait_cut()
    trial.bed.set("wait_timeout", "DEFAULT")
    trial.ask(trial.nothing)
    trial.reopen()


def large_row(trial: Trial) -> None:
    trial.bed.set("max_allowed_packet", "1024")
    trial.open()
    trial.bed.set("max_allowed_packet", "DEFAULT")
    trial.ask(trial.bed.large.reply, node=trial.bed.large)


def table_dropped(trial: Trial) -> None:
    """Questions are asked while the table is away, and once it is back."""
    trial.open()
    trial.bed.server.script("DROP TABLE som.news_train")
    trial.ask(trial.nothing)
    trial.bed.server.script(
        "CREATE TABLE som.news_train LIKE som.kept; INSERT INTO som.news_train SELECT * FROM som.kept"
    )
    trial.ask(trial.bed.chosen.reply)


def box_open(trial: Trial) -> None:
    """The new window is made under the box, as soon as the account is open again."""
    trial.bed.change_reader("ACCOUNT LOCK")
    trial.open_box()
    trial.ask(UNMARKED)
    trial.bed.change_reader("ACCOUNT UNLOCK")
    trial.reopen()


def window_closed(trial: Trial) -> None:
    trial.open()
    trial.bed.display.press(WINDOW, "alt+F4")
    trial.ask(trial.bed.chosen.reply)


def display_gone(trial: Trial) -> None:
    trial.open()
    trial.lose_display(trial.bed.chosen.reply)


def display_gone_under_box(trial: Trial) -> None:
    trial.bed.change_reader("ACCOUNT LOCK")
    trial.open_box()
    trial.bed.change_reader("ACCOUNT UNLOCK")
    trial.lose_display(UNMARKED)


class Fault(NamedTuple):
    """A fault, and what is measured: a new window where the old one has lost its connection for good."""

    happen: Callable[[Trial], None]
    figures: tuple[str, ...] = (ANSWERS,)


BOTH = (ANSWERS, NEW_WINDOW)
FAULTS = {
    "server halted": Fault(server_halted),
    "connection killed": Fault(connection_killed, BOTH),
    "server killed": Fault(server_killed, BOTH),
    "server restarted": Fault(server_restarted, BOTH),
    "idle for too long": Fault(idle_for_too_long, BOTH),
    "row above the limit": Fault(large_row),
    "table dropped": Fault(table_dropped),
    "error box open": Fault(box_open, BOTH),
    "window closed": Fault(window_closed),
    "display gone": Fault(display_gone),
    "display gone, box": Fault(display_gone_under_box),
}


class Samplers:
    """Makes a sampler for each fault, which is the command's last word; all share a server and a display."""

    def __init__(self) -> None:
        self._bed: Bed | None = None

    def __call__(self, command: list[str]) -> Sampler:
        return _Sampler(self, command)

    def bed(self) -> Bed:
        if self._bed is None:
            self._bed = Bed()
        return self._bed

    def close(self) -> None:
        if self._bed is not None:
            self._bed.close()
            self._bed = None


class _Sampler:
    def __init__(self, samplers: Samplers, command: list[str]) -> None:
        self._samplers, self._command = samplers, command

    def sample(self, size: int) -> Answer:
        fault = self._command[-1]
        try:
            bed = self._samplers.bed()
            host = Worker(self._command, bed.variables())
            trial = Trial(bed, host)
            FAULTS[fault].happen(trial)
            host.close()
        except (BenchError, ClusterError) as error:
            self.close()
            raise BenchError(f"{fault}: {error}") from None
        return Answer(trial.figures, {})

    def close(self) -> None:
        self._samplers.close()
