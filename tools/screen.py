# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""Eyes and hands on an X display: pictures of it, its windows, clicks.

Waiting is always for a condition; the pauses between two looks are short.
"""

import re
import subprocess
import time
from collections import Counter
from collections.abc import Callable
from dataclasses import dataclass
from typing import TypeVar

LIMIT = 60.0  # seconds that a condition may take to come true
PAUSE = 0.1  # seconds between two looks

T = TypeVar("T")


class TourError(Exception):
    """Something is not as it should be; the message is one line."""


def wait_for(what: str, look: Callable[[], T | None]) -> T:
    """The first result of look() that is not None or False. Raises TourError after LIMIT."""
    end = time.monotonic() + LIMIT
    while time.monotonic() < end:
        found = look()
        if found:
            return found
        time.sleep(PAUSE)
    raise TourError(f"waited {LIMIT:.0f} s in vain: {what}")


def output_of(*command: str) -> bytes:
    """Standard output of a program; empty where it fails (xdotool does when it finds no window)."""
    return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=False).stdout


@dataclass(frozen=True)
class Box:
    """A rectangle of pixels on the screen."""

    x: int
    y: int
    width: int
    height: int

    def with_other(self, other: "Box") -> "Box":
        """The smallest rectangle around both."""
        x, y = min(self.x, other.x), min(self.y, other.y)
        right, bottom = (max(a, b) for a, b in zip(self._end(), other._end()))
        return Box(x, y, right - x, bottom - y)

    def _end(self) -> tuple[int, int]:
        return self.x + self.width, self.y + self.height

    def part(self, left: float, top: float, right: float, bottom: float) -> "Box":
        """The part between shares (0 to 1) of width and height."""
        x, y = self.x + int(left * self.width), self.y + int(top * self.height)
        return Box(x, y, int((right - left) * self.width), int((bottom - top) * self.height))


@dataclass(frozen=True)
class Picture:
    """Rows of three bytes (red, green, blue) a pixel."""

    rows: tuple[bytes, ...]

    def cut(self, box: Box) -> "Picture":
        rows = self.rows[max(box.y, 0) : box.y + box.height]
        return Picture(tuple(row[3 * max(box.x, 0) : 3 * (box.x + box.width)] for row in rows))

    def pixels(self) -> list[bytes]:
        return [row[place : place + 3] for row in self.rows for place in range(0, len(row), 3)]

    def is_blank(self) -> bool:
        """Whether one colour covers nearly all, or hardly a colour is there."""
        counts = Counter(self.pixels())
        return len(counts) < 20 or counts.most_common(1)[0][1] > 0.97 * counts.total()

    def difference(self, other: "Picture") -> float:
        """The share of the pixels that differ; 1 for pictures of different sizes."""
        mine, others = self.pixels(), other.pixels()
        if len(mine) != len(others):
            return 1.0
        return sum(a != b for a, b in zip(mine, others)) / len(mine)


def capture() -> Picture:
    """The whole screen."""
    data = output_of("import", "-silent", "-window", "root", "-depth", "8", "ppm:-")
    head = re.match(rb"P6\s+(\d+)\s+(\d+)\s+255\s", data)
    if not head:
        raise TourError("import made no picture of the screen")
    length = 3 * int(head[1])
    return Picture(tuple(data[place : place + length] for place in range(head.end(), len(data), length)))


def still_picture(box: Box, shows: Callable[[Picture], bool]) -> Picture:
    """A part of the screen as soon as it shows what it should, twice in a row the same."""
    last: list[Picture] = []

    def look() -> Picture | None:
        now = capture().cut(box)
        is_still = last[-1:] == [now] and shows(now)
        last[:] = [now]
        return now if is_still else None

    return wait_for("the picture is still and shows what it should", look)


def windows(window_class: str) -> set[str]:
    """Numbers of the visible windows of a class."""
    return set(output_of("xdotool", "search", "--onlyvisible", "--class", window_class).decode().split())


def box_of(window: str) -> Box:
    """Where a window's inside is. Raises TourError when the window is gone."""
    text = output_of("xwininfo", "-id", window).decode()
    names = ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height")
    found = [re.search(rf"{name}:\s+(-?\d+)", text) for name in names]
    x, y, width, height = (int(match[1]) if match else -1 for match in found)
    if width < 0:
        raise TourError("a window is gone")
    return Box(x, y, width, height)


def resize(window: str, width: int, height: int) -> Box:
    output_of("xdotool", "windowsize", window, str(width), str(height))

    def look() -> Box | None:
        box = box_of(window)
        return box if (box.width, box.height) == (width, height) else None

    return wait_for(f"the window is {width} x {height}", look)


def click(window: str, x: int, y: int, button: int = 1, times: int = 1) -> None:
    """Clicks at a place of a window."""
    move = ("mousemove", "--sync", "--window", window, str(x), str(y))
    output_of("xdotool", *move, "click", "--repeat", str(times), str(button))


def press(*keys: str) -> None:
    """Presses and releases keys one after the other, for instance "ctrl+f"; the window with the focus gets them."""
    output_of("xdotool", "key", *keys)


def type_text(text: str) -> None:
    """Types a text; the window with the focus gets it."""
    output_of("xdotool", "type", text)


def active_window() -> str:
    """The number of the window that the window manager has made active; empty if there is none."""
    return output_of("xdotool", "getactivewindow").decode().strip()
