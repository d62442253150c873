#!/usr/bin/python3
# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""The demo's tour on a display that nobody watches: drives the host, checks what shows, takes pictures.

Ends with 0 when every check held, else with 1 and one line on standard error.
"""

import sys
from pathlib import Path

from browserwindow import SCRIPTS, TABLE, TEXT, TREE, BrowserWindow, run
from screen import Picture, TourError, box_of, click, still_picture, wait_for

ROW = (560, 150)  # a place in the table that is some row's


class Tour:
    """The steps of the tour, each with its check and its picture."""

    def __init__(self, window: BrowserWindow) -> None:
        self._window = window

    def take(self, hierarchy: Path) -> None:
        """The whole tour."""
        tree = self._fill_tree(hierarchy)
        rows = self._select_node(tree)
        self._color_rows(rows)
        self._open_viewer()

    def _fill_tree(self, hierarchy: Path) -> Picture:
        view = self._window
        view.open(hierarchy)
        view.enlarge()
        return view.picture("1-tree", view.box, lambda now: not now.cut(view.inner(TREE)).is_blank())

    def _select_node(self, before: Picture) -> Picture:
        view = self._window
        rows = view.host.number(view.include(SCRIPTS / "select.qth"))
        if rows < 1:
            raise TourError("the node has no documents: getNumRows gave 0")
        print(f"the node has {rows} documents", flush=True)
        return view.picture("2-documents", view.box, lambda now: view.changed(TABLE, before, now) > 0.02)

    def _color_rows(self, before: Picture) -> None:
        view = self._window
        view.host.ask(view.include(SCRIPTS / "colors.qth"))
        view.host.ask(view.include(SCRIPTS / "read.qth"))
        view.repaint()
        view.picture(
            "3-colors",
            view.box,
            lambda now: view.changed(TABLE, before, now) > 0.3 and view.changed(TEXT, before, now) > 0.002,
        )

    def _open_viewer(self) -> None:
        view = self._window
        click(view.window, *ROW, times=2)
        viewer = box_of(min(wait_for("a double click opens the full text", view.others)))
        still_picture(viewer, lambda now: not now.is_blank())
        view.picture("4-full-text", view.box.with_other(viewer), lambda now: True)


if __name__ == "__main__":
    sys.exit(run("Takes the demo's tour.", lambda window, hierarchy: Tour(window).take(hierarchy)))
