# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""Pictures of signs: drawing, scaling by 1/q as the tree does it, XPM text.

A picture is a list of rows; each row is a string with one character a pixel, a key of LEGEND or FILL.
"""

from collections.abc import Sequence

from .shapes import UNITS, Shape, Sign

SCALE = 6
SIZE = UNITS * SCALE
NOTHING, CONTOUR, FILL = ".", "#", "o"
CONTOUR_COLOR = "#1a1a1a"

Picture = list[str]
Color = tuple[int, int, int]


def rgb(text: str) -> Color:
    """The three bytes of "#rrggbb"."""
    return int(text[1:3], 16), int(text[3:5], 16), int(text[5:7], 16)


def draw(shape: Shape) -> Picture:
    """A shape at full size (SIZE x SIZE) with a contour of one unit inside its edge."""
    mask = [_row_bits(shape, row) for row in range(SIZE)]
    inner = _eroded(mask, SCALE)
    return [
        "".join(_pixel(mask[row] >> column & 1, inner[row] >> column & 1) for column in range(SIZE))
        for row in range(SIZE)
    ]


def _row_bits(shape: Shape, row: int) -> int:
    y = (row + 0.5) / SCALE
    return sum(1 << column for column in range(SIZE) if shape((column + 0.5) / SCALE, y))


def _pixel(covered: int, inside: int) -> str:
    return FILL if inside else CONTOUR if covered else NOTHING


def _eroded(mask: Sequence[int], radius: int) -> list[int]:
    """The pixels whose whole neighbourhood, a disc of `radius` pixels, is covered. A row is a bit field."""
    result = []
    for row in range(len(mask)):
        bits = -1
        for step in range(-radius, radius + 1):
            near = mask[row + step] if 0 <= row + step < len(mask) else 0
            reach = int((radius * radius - step * step) ** 0.5)
            for shift in range(1, reach + 1):
                bits &= near << shift & near >> shift
            bits &= near
        result.append(bits)
    return result


def scaled(picture: Picture, divisor: int) -> Picture:
    """The picture scaled by 1/divisor: of each block the pixel nearest to its middle, without smoothing."""
    size = round(len(picture) / divisor)
    places = [min(int((index + 0.5) * divisor), len(picture) - 1) for index in range(size)]
    return ["".join(picture[row][column] for column in places) for row in places]


def divisor_at(row_height: int) -> int:
    """The whole number by which the tree divides the pictures where a row of text is `row_height` pixels high."""
    return SIZE // row_height


def colors(picture: Picture, color: str, ground: Color) -> list[list[Color]]:
    """The picture's pixels on a ground."""
    legend = {NOTHING: ground, CONTOUR: rgb(CONTOUR_COLOR), FILL: rgb(color)}
    return [[legend[pixel] for pixel in row] for row in picture]


def xpm(index: int, sign: Sign) -> str:
    """The text of Images/<index>.xpm."""
    picture = draw(sign.shape)
    head = [
        f"{SIZE} {SIZE} 3 1",
        f"{NOTHING} c None",
        f"{CONTOUR} c {CONTOUR_COLOR}",
        f"{FILL} c {sign.color}",
    ]
    lines = ",\n".join(f'"{line}"' for line in head + picture)
    return f"/* XPM */\n/* topic {index}: {sign.name} */\nstatic const char *topic_{index}[] = {{\n{lines}\n}};\n"
