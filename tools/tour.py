#!/usr/bin/python3
# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""The demo's tour on a display that nobody watches: drives the host, checks what shows, takes pictures.

Ends with 0 when every check held, else with 1 and one line on standard error.
"""

import argparse
import sys
from collections.abc import Callable
from pathlib import Path

from hostprocess import HostProcess
from pngfile import png
from screen import (
    Box,
    Picture,
    TourError,
    box_of,
    capture,
    double_click,
    resize,
    still_picture,
    wait_for,
    windows,
)

TOP = Path(__file__).resolve().parent.parent
SCRIPTS = TOP / "host/scripts"
WINDOW_CLASS = "Ombrel"
WINDOW_SIZE = (980, 900)
# Parts of the window, as shares of its width and height.
TREE = (0.0, 0.06, 0.34, 0.95)
TABLE = (0.37, 0.08, 0.97, 0.58)
TEXT = (0.37, 0.635, 0.97, 0.89)
ROW = (560, 150)  # a place in the table that is some row's


class Tour:
    """The tour's window, and the pictures taken so far."""

    def __init__(self, host: HostProcess, output: Path) -> None:
        self._host, self._output = host, output
        self._window, self._box = "", Box(0, 0, 0, 0)

    def take(self, hierarchy: Path) -> None:
        """The whole tour."""
        tree = self._fill_tree(hierarchy)
        rows = self._select_node(tree)
        self._color_rows(rows)
        self._open_viewer()

    def _include(self, script: Path) -> str:
        return f'.include "{script}"'

    def _fill_tree(self, hierarchy: Path) -> Picture:
        for script in (SCRIPTS / "open.qth", hierarchy, SCRIPTS / "show.qth"):
            self._host.ask(self._include(script))
        self._window = min(wait_for("the window shows", lambda: windows(WINDOW_CLASS)))
        self._box = resize(self._window, *WINDOW_SIZE)
        return self._picture("1-tree", self._box, lambda now: not now.cut(self._inner(TREE)).is_blank())

    def _select_node(self, before: Picture) -> Picture:
        rows = self._host.number(self._include(SCRIPTS / "select.qth"))
        if rows < 1:
            raise TourError("the node has no documents: getNumRows gave 0")
        print(f"the node has {rows} documents", flush=True)
        return self._picture("2-documents", self._box, lambda now: self._changed(TABLE, before, now) > 0.02)

    def _color_rows(self, before: Picture) -> None:
        self._host.ask(self._include(SCRIPTS / "colors.qth"))
        self._host.ask(self._include(SCRIPTS / "read.qth"))
        self._repaint()
        self._picture(
            "3-colors",
            self._box,
            lambda now: self._changed(TABLE, before, now) > 0.3 and self._changed(TEXT, before, now) > 0.002,
        )

    def _repaint(self) -> None:
        """Has the window paint every row, for rows take their colours only then."""
        resize(self._window, WINDOW_SIZE[0], WINDOW_SIZE[1] + 50)
        resize(self._window, *WINDOW_SIZE)

    def _open_viewer(self) -> None:
        double_click(self._window, *ROW)
        new = wait_for("a double click opens the full text", lambda: windows(WINDOW_CLASS) - {self._window})
        viewer = box_of(min(new))
        still_picture(viewer, lambda now: not now.is_blank())
        self._picture("4-full-text", self._box.with_other(viewer), lambda now: True)

    def _inner(self, part: tuple[float, float, float, float]) -> Box:
        return Box(0, 0, self._box.width, self._box.height).part(*part)

    def _changed(self, part: tuple[float, float, float, float], before: Picture, now: Picture) -> float:
        box = self._inner(part)
        return now.cut(box).difference(before.cut(box))

    def _picture(self, name: str, box: Box, shows: Callable[[Picture], bool]) -> Picture:
        picture = still_picture(box, lambda now: not now.is_blank() and shows(now))
        path = self._output / f"{name}.png"
        path.write_bytes(png(picture.rows))
        print(path, flush=True)
        return picture


def parsed_arguments() -> argparse.Namespace:
    parser = argparse.ArgumentParser(description="Takes the demo's tour.")
    parser.add_argument("--host", type=Path, required=True, metavar="PROGRAM", help="the host program")
    parser.add_argument("--module", type=Path, required=True, metavar="FILE", help="the module")
    parser.add_argument(
        "--hierarchy", type=Path, required=True, metavar="FILE", help="script with the map's nodes"
    )
    parser.add_argument("--output", type=Path, required=True, metavar="DIR", help="folder of the pictures")
    return parser.parse_args()


def take_tour(tour: Tour, arguments: argparse.Namespace) -> None:
    """The whole tour; where a check fails, a picture shows what there was instead."""
    try:
        tour.take(arguments.hierarchy.resolve())
    except TourError as error:
        path = arguments.output / "failed.png"
        path.write_bytes(png(capture().rows))
        raise TourError(f"{error}; see {path}") from None


def main() -> int:
    arguments = parsed_arguments()
    try:
        arguments.output.mkdir(parents=True, exist_ok=True)
        with HostProcess(arguments.host, arguments.module) as host:
            take_tour(Tour(host, arguments.output), arguments)
            host.ask("FREE_CNodeBrowser")
            code = host.close()
            if code:
                raise TourError(f"the host ended with {code}")
    except (TourError, OSError) as error:
        print(f"tour: {error}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
