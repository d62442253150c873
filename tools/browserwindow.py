# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""The window that a host opens on the demo's map, and the pictures taken of it."""

import argparse
import sys
from collections.abc import Callable
from pathlib import Path

from hostprocess import HostProcess
from pngfile import png
from screen import Box, Picture, TourError, box_of, capture, resize, still_picture, wait_for, windows

TOP = Path(__file__).resolve().parent.parent
SCRIPTS = TOP / "host/scripts"
WINDOW_CLASS = "Ombrel"
WINDOW_SIZE = (980, 900)
# Parts of the window, as shares of its width and height.
TREE = (0.0, 0.06, 0.34, 0.95)
TABLE = (0.37, 0.08, 0.97, 0.58)
TEXT = (0.37, 0.635, 0.97, 0.89)

Shows = Callable[[Picture], bool]


class BrowserWindow:
    """A host's window; its pictures become PNG files in a folder."""

    def __init__(self, host: HostProcess, output: Path) -> None:
        self.host, self._output = host, output
        self.window, self.box = "", Box(0, 0, 0, 0)

    def open(self, hierarchy: Path) -> None:
        """Opens the window on the map whose hierarchy is given. It has the size that it gives itself."""
        for script in (SCRIPTS / "open.qth", hierarchy, SCRIPTS / "show.qth"):
            self.host.ask(self.include(script))
        self.window = min(wait_for("the window shows", lambda: windows(WINDOW_CLASS)))
        self.box = box_of(self.window)

    def include(self, script: Path) -> str:
        """The statement that runs a script."""
        return f'.include "{script}"'

    def enlarge(self) -> None:
        """Gives the window the size of most pictures."""
        self.box = resize(self.window, *WINDOW_SIZE)

    def repaint(self) -> None:
        """Has the window paint every row, for rows take their colours only then."""
        resize(self.window, WINDOW_SIZE[0], WINDOW_SIZE[1] + 50)
        self.enlarge()

    def others(self) -> set[str]:
        """The host's other visible windows: full texts, menus, dialogs."""
        return windows(WINDOW_CLASS) - {self.window}

    def inner(self, part: tuple[float, float, float, float]) -> Box:
        """A part of the window in pixels of a picture of the window."""
        return Box(0, 0, self.box.width, self.box.height).part(*part)

    def changed(self, part: tuple[float, float, float, float], before: Picture, now: Picture) -> float:
        """The share of a part's pixels that differ between two pictures of the window."""
        box = self.inner(part)
        return now.cut(box).difference(before.cut(box))

    def still(self, shows: Shows) -> Picture:
        """The window as soon as it shows what it should."""
        return still_picture(self.box, shows)

    def picture(self, name: str, box: Box, shows: Shows) -> Picture:
        """Takes a part of the screen as soon as it shows what it should, and keeps it."""
        picture = still_picture(box, lambda now: not now.is_blank() and shows(now))
        self.keep(name, picture)
        return picture

    def keep(self, name: str, picture: Picture) -> Path:
        """Writes a picture and says so."""
        path = self._output / f"{name}.png"
        path.write_bytes(png(picture.rows))
        print(path, flush=True)
        return path


Take = Callable[[BrowserWindow, Path], None]


def run(description: str, take: Take) -> int:
    """The main program: has pictures taken on the display, which needs map and server as ./demo makes them.

    Returns 0 when take(window, hierarchy) did, else 1 after one line on standard error.
    """
    arguments = _parsed_arguments(description)
    try:
        arguments.output.mkdir(parents=True, exist_ok=True)
        with HostProcess(arguments.host, arguments.module) as host:
            _take_or_show(BrowserWindow(host, arguments.output), take, arguments.hierarchy.resolve())
            host.ask("FREE_CNodeBrowser")
            code = host.close()
            if code:
                raise TourError(f"the host ended with {code}")
    except (TourError, OSError) as error:
        print(f"{Path(sys.argv[0]).stem}: {error}", file=sys.stderr)
        return 1
    return 0


def _parsed_arguments(description: str) -> argparse.Namespace:
    parser = argparse.ArgumentParser(description=description)
    parser.add_argument("--host", type=Path, required=True, metavar="PROGRAM", help="the host program")
    parser.add_argument("--module", type=Path, required=True, metavar="FILE", help="the module")
    parser.add_argument(
        "--hierarchy", type=Path, required=True, metavar="FILE", help="script with the map's nodes"
    )
    parser.add_argument("--output", type=Path, required=True, metavar="DIR", help="folder of the pictures")
    return parser.parse_args()


def _take_or_show(window: BrowserWindow, take: Take, hierarchy: Path) -> None:
    """Where a check fails, a picture shows what there was instead."""
    try:
        take(window, hierarchy)
    except TourError as error:
        path = window.keep("failed", capture())
        raise TourError(f"{error}; see {path}") from None
