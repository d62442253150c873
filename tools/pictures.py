#!/usr/bin/python3
# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""Takes the documentation's pictures of the window, with real clicks and keys on a display that nobody watches.

Ends with 0 when every picture shows what it should, else with 1 and one line on standard error.
"""

import sys
from pathlib import Path

import mapquery
from browserwindow import SCRIPTS, TABLE, TEXT, TREE, BrowserWindow, run
from screen import Box, Picture, TourError, active_window, box_of, click, press, type_text, wait_for

NODE = 1
MISSING = "submarine"  # a word that release notes hardly have
HIGHLIGHT = b"\x30\x8c\xc6"  # ground of a selected row
# Places in a window of the size BrowserWindow.enlarge() gives.
FIRST_NODE, NODE_HEIGHT = (60, 45), 16
FIRST_ROW, ROW_HEIGHT = (560, 65), 20
SHOW_MENU, SORT_MENU = (60, 9), (103, 9)
CHECK_BOX = (380, 860)
TREE_SIDE, TABLE_SIDE, RIGHT_SIDE = Box(0, 0, 341, 420), Box(345, 20, 635, 530), Box(345, 20, 635, 880)
MENU_SIDE = Box(0, 0, 980, 300)


def selected_row(picture: Picture, table: Box) -> int:
    """The middle of the selected row, in pixels from the picture's top; 0 when no selected row is in the box."""
    column = picture.cut(Box(table.x + table.width // 2, table.y, 1, table.height)).rows
    marked = [place for place, pixel in enumerate(column) if pixel == HIGHLIGHT]
    return table.y + (marked[0] + marked[-1]) // 2 if marked else 0


class Pictures:
    """The pictures in the order in which they are taken; each step leaves the window as the next needs it."""

    def __init__(self, view: BrowserWindow) -> None:
        self._view = view
        self._word = mapquery.keyword(NODE)
        self._date = mapquery.date_of_text(NODE, self._word)

    def take(self, hierarchy: Path) -> None:
        """All pictures."""
        self._open(hierarchy)
        self._open_branches()
        self._select_node()
        self._color_rows()
        self._open_full_text()
        self._filter_by_date()
        self._use_menu("show-menu", SHOW_MENU)
        self._use_menu("sort-menu", SORT_MENU)

    def _open(self, hierarchy: Path) -> None:
        view = self._view
        view.open(hierarchy)
        view.picture("first-view", view.box, lambda now: not now.cut(view.inner(TREE)).is_blank())
        view.enlarge()

    def _open_branches(self) -> None:
        view = self._view
        before = view.still(lambda now: not now.is_blank())
        self._choose_in_tree_menu(2)
        opened = view.still(lambda now: view.changed(TREE, before, now) > 0.05)
        view.keep("tree", opened.cut(TREE_SIDE))
        self._choose_in_tree_menu(3)
        view.still(lambda now: view.changed(TREE, opened, now) > 0.05)
        press("Right")  # opens the root alone

    def _choose_in_tree_menu(self, entry: int) -> None:
        """Chooses an entry, counted from 1, of the root's menu."""
        click(self._view.window, *FIRST_NODE, button=3)
        wait_for("the menu opens", self._view.others)
        press(*["Down"] * entry, "Return")
        wait_for("the menu closes", lambda: not self._view.others())

    def _select_node(self) -> None:
        view = self._view
        before = view.still(lambda now: not now.cut(view.inner(TREE)).is_blank())
        click(view.window, FIRST_NODE[0], FIRST_NODE[1] + NODE * NODE_HEIGHT)
        view.still(lambda now: view.changed(TABLE, before, now) > 0.02)

    def _color_rows(self) -> None:
        view = self._view
        before = view.still(lambda now: True)
        if not view.host.number("getNumRows int[1] -> n"):
            raise TourError(f"node {NODE} has no documents")
        view.host.ask(view.include(SCRIPTS / "colors.qth"))
        self._mark()
        view.repaint()
        picture = view.picture(
            "browser",
            view.box,
            lambda now: view.changed(TABLE, before, now) > 0.3 and view.changed(TEXT, before, now) > 0.01,
        )
        view.keep("colors", picture.cut(TABLE_SIDE))

    def _mark(self) -> None:
        """Makes the document with the word current; markRow looks for dates behind a time frame of 3660 s."""
        query = f"SELECT TIMESTAMP('{self._date}') + INTERVAL 3659 SECOND"
        self._view.host.ask(f'markRow "{mapquery.first_row("date", query)[0]}" 1')

    def _open_full_text(self) -> None:
        view = self._view
        row = selected_row(view.still(lambda now: True), view.inner(TABLE))
        click(view.window, FIRST_ROW[0], row, times=2)
        viewer = min(wait_for("a double click opens the full text", view.others))
        box = box_of(viewer)
        self._find(viewer, self._word)
        wait_for("the dialog closes", lambda: view.others() == {viewer})
        view.picture("find", box, lambda now: HIGHLIGHT in now.pixels())
        self._find(viewer, MISSING)
        wait_for("a box says that nothing is found", lambda: active_window() not in (viewer, view.window))
        view.picture("nothing-found", box, lambda now: True)
        press("Return")
        wait_for("the box closes", lambda: view.others() == {viewer})
        click(viewer, int(box.width * 0.9), box.height - 20)
        wait_for("Exit closes the full text", lambda: not view.others())

    def _find(self, viewer: str, word: str) -> None:
        wait_for("the full text is active", lambda: active_window() == viewer)
        press("ctrl+f")
        wait_for("the find dialog is active", lambda: active_window() not in ("", viewer, self._view.window))
        dialog = active_window()
        type_text(word)
        press("Return")
        wait_for("the find dialog closes", lambda: dialog not in self._view.others())

    def _filter_by_date(self) -> None:
        view = self._view
        rows = view.host.number("getNumRows int[1]")
        day, number = mapquery.fullest_day(NODE)
        before = view.still(lambda now: True)
        click(view.window, *CHECK_BOX)
        press("Tab")
        type_text(day.replace(".", ""))
        self._wait_for_rows(number)
        click(view.window, *FIRST_ROW)
        picture = view.still(lambda now: view.changed(TEXT, before, now) > 0.002)
        view.keep("date-filter", picture.cut(RIGHT_SIDE))
        click(view.window, *CHECK_BOX)
        self._wait_for_rows(rows)

    def _wait_for_rows(self, number: int) -> None:
        wait_for(
            f"the table has {number} rows", lambda: self._view.host.number("getNumRows int[1]") == number
        )

    def _use_menu(self, name: str, place: tuple[int, int]) -> None:
        """Chooses a menu's last column, and opens the menu once more for the picture."""
        view = self._view
        before = view.still(lambda now: True)
        self._open_menu(place)
        press("Up", "Return")
        wait_for("the menu closes", lambda: not view.others())
        chosen = view.still(lambda now: view.changed(TABLE, before, now) > 0.02)
        self._open_menu(place)
        view.keep(name, view.still(lambda now: now != chosen).cut(MENU_SIDE))
        press("Escape")
        wait_for("the menu closes", lambda: not view.others())

    def _open_menu(self, place: tuple[int, int]) -> None:
        click(self._view.window, *place)
        wait_for("the menu opens", self._view.others)


if __name__ == "__main__":
    sys.exit(
        run("Takes the documentation's pictures.", lambda view, hierarchy: Pictures(view).take(hierarchy))
    )
