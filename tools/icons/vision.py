# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""How different two signs look, to readers with normal and with other colour vision.

Colours are compared by CIE76, the Euclidean distance in CIELAB: about 2.3 is just noticeable, 100 is black
against white. The matrices for missing cones act on linear RGB and are those of Machado, Oliveira and
Fernandes, "A Physiologically-based Model for Simulation of Color Vision Deficiency" (2009), severity 1.
"""

import itertools
import math
from functools import lru_cache

from .picture import FILL, NOTHING, Color, Picture, colors, rgb

Vector = tuple[float, float, float]
Matrix = tuple[Vector, Vector, Vector]

LUMINANCE: Vector = (0.2126, 0.7152, 0.0722)
VISIONS: dict[str, Matrix] = {
    "normal": ((1, 0, 0), (0, 1, 0), (0, 0, 1)),
    "protanopia": (
        (0.152286, 1.052583, -0.204868),
        (0.114503, 0.786281, 0.099216),
        (-0.003882, -0.048116, 1.051998),
    ),
    "deuteranopia": (
        (0.367322, 0.860646, -0.227968),
        (0.280085, 0.672501, 0.047413),
        (-0.011820, 0.042940, 0.968881),
    ),
    "tritanopia": (
        (1.255528, -0.076749, -0.178779),
        (-0.078411, 0.930809, 0.147602),
        (0.004733, 0.691367, 0.303900),
    ),
    "grey": (LUMINANCE, LUMINANCE, LUMINANCE),
}
GROUNDS: dict[str, Color] = {"white": (255, 255, 255), "dark": (32, 35, 38), "highlight": (48, 140, 198)}

_TO_XYZ: Matrix = ((0.4124, 0.3576, 0.1805), (0.2126, 0.7152, 0.0722), (0.0193, 0.1192, 0.9505))
_WHITE: Vector = (0.9505, 1.0, 1.089)


def _product(matrix: Matrix, vector: Vector) -> Vector:
    first, second, third = (sum(a * b for a, b in zip(row, vector)) for row in matrix)
    return first, second, third


def _linear(byte: int) -> float:
    share = byte / 255
    return share / 12.92 if share <= 0.04045 else math.pow((share + 0.055) / 1.055, 2.4)


def _linear_rgb(color: Color) -> Vector:
    red, green, blue = (_linear(byte) for byte in color)
    return red, green, blue


def _cube_root(share: float) -> float:
    return math.cbrt(share) if share > 0.008856 else 7.787 * share + 16 / 116


@lru_cache(maxsize=None)
def lab(color: Color, vision: str) -> Vector:
    """The CIELAB coordinates of a colour as a reader with that vision sees it."""
    red, green, blue = (min(max(part, 0.0), 1.0) for part in _product(VISIONS[vision], _linear_rgb(color)))
    x, y, z = (_cube_root(part / white) for part, white in zip(_product(_TO_XYZ, (red, green, blue)), _WHITE))
    return 116 * y - 16, 500 * (x - y), 200 * (y - z)


@lru_cache(maxsize=None)
def color_distance(one: Color, other: Color, vision: str) -> float:
    return math.dist(lab(one, vision), lab(other, vision))


def contrast(one: Color, other: Color) -> float:
    """The contrast ratio of two colours by WCAG: 1 (equal) to 21 (black and white)."""
    first, second = (sum(a * b for a, b in zip(LUMINANCE, _linear_rgb(color))) for color in (one, other))
    return (max(first, second) + 0.05) / (min(first, second) + 0.05)


def color_difference(one: str, other: str, vision: str) -> float:
    return color_distance(rgb(one), rgb(other), vision)


def silhouette_difference(one: Picture, other: Picture) -> float:
    """The share of the pixels covered by either sign that only one of them covers: 0 to 1."""
    pairs = list(zip("".join(one), "".join(other)))
    either = sum(a != NOTHING or b != NOTHING for a, b in pairs)
    return sum((a == NOTHING) != (b == NOTHING) for a, b in pairs) / either


def inside_difference(one: Picture, other: Picture) -> float:
    """As silhouette_difference(), of the insides alone: what is left on a ground as dark as the contour."""
    pairs = list(zip("".join(one), "".join(other)))
    either = sum(FILL in pair for pair in pairs)
    return sum((a == FILL) != (b == FILL) for a, b in pairs) / either


def picture_difference(
    one: tuple[Picture, str], other: tuple[Picture, str], vision: str, ground: str
) -> float:
    """The mean colour distance of two signs (picture, colour of the inside) over all their pixels."""
    rows = (itertools.chain.from_iterable(colors(*sign, GROUNDS[ground])) for sign in (one, other))
    distances = [color_distance(a, b, vision) for a, b in zip(*rows)]
    return sum(distances) / len(distances)
