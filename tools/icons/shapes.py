# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""Outlines and colours of the 21 topic signs, on a grid of 14 x 14 units.

x runs right, y runs down, both from 0 to UNITS. A shape is a function that says whether a point lies inside.
"""

import math
from collections.abc import Callable, Sequence
from typing import NamedTuple

UNITS = 14

Point = tuple[float, float]
Shape = Callable[[float, float], bool]


class Sign(NamedTuple):
    """A topic sign: its name, the colour of its inside as "#rrggbb", and its outline."""

    name: str
    color: str
    shape: Shape


def disc(cx: float, cy: float, radius: float) -> Shape:
    return lambda x, y: math.hypot(x - cx, y - cy) <= radius


def box(left: float, top: float, right: float, bottom: float) -> Shape:
    return lambda x, y: left <= x <= right and top <= y <= bottom


def union(*shapes: Shape) -> Shape:
    return lambda x, y: any(shape(x, y) for shape in shapes)


def minus(shape: Shape, hole: Shape) -> Shape:
    return lambda x, y: shape(x, y) and not hole(x, y)


def polygon(*corners: Point) -> Shape:
    """The inside of a closed line by the even-odd rule."""
    sides = list(zip(corners, corners[1:] + corners[:1]))

    def inside(x: float, y: float) -> bool:
        crossings = 0
        for (x1, y1), (x2, y2) in sides:
            if (y1 > y) != (y2 > y) and x < x1 + (y - y1) * (x2 - x1) / (y2 - y1):
                crossings += 1
        return crossings % 2 == 1

    return inside


def star(cx: float, cy: float, outer: float, inner: float, points: int) -> Shape:
    corners: list[Point] = []
    for step in range(2 * points):
        radius = inner if step % 2 else outer
        angle = math.pi * step / points
        corners.append((cx + radius * math.sin(angle), cy - radius * math.cos(angle)))
    return polygon(*corners)


def _house() -> Shape:
    return polygon((7, 0), (14, 7), (12, 7), (12, 14), (2, 14), (2, 7), (0, 7))


def _heart() -> Shape:
    return union(
        disc(3.75, 4.5, 3.75), disc(10.25, 4.5, 3.75), polygon((0.6, 6.6), (7, 3), (13.4, 6.6), (7, 14))
    )


def _drop() -> Shape:
    return union(disc(7, 9.4, 4.6), polygon((7, 0), (11.2, 7.5), (2.8, 7.5)))


def _cross() -> Shape:
    return polygon(
        *((3, 0), (7, 4), (11, 0), (14, 3), (10, 7), (14, 11)),
        *((11, 14), (7, 10), (3, 14), (0, 11), (4, 7), (0, 3)),
    )


def _plus() -> Shape:
    return union(box(5, 0, 9, 14), box(0, 5, 14, 9))


def _arrow() -> Shape:
    return polygon((0, 4), (7, 4), (7, 0), (14, 7), (7, 14), (7, 10), (0, 10))


def _bolt() -> Shape:
    return polygon((6, 0), (12, 0), (9, 5), (13, 5), (4, 14), (6, 8), (2, 8))


def _crown() -> Shape:
    return polygon((0, 2), (3.5, 6), (7, 1), (10.5, 6), (14, 2), (13, 13), (1, 13))


def _flag() -> Shape:
    return union(box(1, 0, 4, 14), polygon((1, 0), (14, 0), (11, 4), (14, 8), (1, 8)))


def _steps() -> Shape:
    return polygon((0, 14), (0, 10), (5, 10), (5, 5), (10, 5), (10, 0), (14, 0), (14, 14))


def _clover() -> Shape:
    return union(
        disc(7, 3.2, 3.2),
        disc(3.2, 7.6, 3.2),
        disc(10.8, 7.6, 3.2),
        polygon((5, 4), (9, 4), (8.5, 9), (11, 14), (3, 14), (5.5, 9)),
    )


SIGNS: Sequence[Sign] = (
    Sign("house", "#ffffff", _house()),
    Sign("disc", "#ec6c5d", disc(7, 7, 6.5)),
    Sign("columns", "#6ea7ff", union(box(1, 0, 6, 14), box(8, 0, 13, 14))),
    Sign("triangle", "#ffdb39", polygon((7, 0), (14, 14), (0, 14))),
    Sign("plus", "#c8ff65", _plus()),
    Sign("diamond", "#fac8d1", polygon((7, 0), (14, 7), (7, 14), (0, 7))),
    Sign("ring", "#ffa326", minus(disc(7, 7, 7), disc(7, 7, 2.5))),
    Sign("star", "#a1f7ff", star(7, 7.6, 7.6, 3.4, 5)),
    Sign("heart", "#ff75bd", _heart()),
    Sign("crescent", "#fff6a0", minus(disc(6.5, 7, 6.5), disc(10.5, 5.5, 5))),
    Sign("arrow", "#8774ff", _arrow()),
    Sign("drop", "#0570a9", _drop()),
    Sign("cross", "#bdb297", _cross()),
    Sign("hourglass", "#d594e1", polygon((1, 0), (13, 0), (9, 7), (13, 14), (1, 14), (5, 7))),
    Sign("bolt", "#dbff00", _bolt()),
    Sign("frame", "#736869", minus(box(0, 0, 14, 14), box(4.5, 4.5, 9.5, 9.5))),
    Sign("clover", "#2cffbb", _clover()),
    Sign("crown", "#ffba88", _crown()),
    Sign("flag", "#f173f8", _flag()),
    Sign("steps", "#8a8446", _steps()),
    Sign("dots", "#71a5b7", union(disc(7, 3.2, 3.2), disc(3.2, 10.6, 3.2), disc(10.8, 10.6, 3.2))),
)
