# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""Contact sheet: all signs as rows of several heights show them, on the three grounds."""

from collections.abc import Sequence

from pngfile import png

from .picture import Color, Picture, colors, divisor_at, draw, scaled
from .shapes import SIGNS
from .vision import GROUNDS

GAP = 6
# Height of a row of text in pixels, and how many times each pixel is enlarged on the sheet.
VIEWS = ((13, 1), (16, 1), (20, 1), (28, 1), (42, 1), (13, 8))


def contact_sheet() -> bytes:
    """The sheet as the bytes of a PNG file."""
    pictures = [draw(sign.shape) for sign in SIGNS]
    lines: list[list[Color]] = []
    for ground in GROUNDS.values():
        for row_height, enlargement in VIEWS:
            small = [scaled(picture, divisor_at(row_height)) for picture in pictures]
            lines += _strip(small, ground, enlargement)
    width = max(map(len, lines))
    padded = [line + [line[0]] * (width - len(line)) for line in lines]
    return png([bytes(value for pixel in line for value in pixel) for line in padded])


def _strip(pictures: Sequence[Picture], ground: Color, enlargement: int) -> list[list[Color]]:
    painted = [colors(picture, sign.color, ground) for picture, sign in zip(pictures, SIGNS)]
    height = len(painted[0]) * enlargement
    lines = [[ground] * GAP for _ in range(height)]
    for line, row in ((lines[row], row // enlargement) for row in range(height)):
        for picture in painted:
            line += [pixel for pixel in picture[row] for _ in range(enlargement)] + [ground] * GAP
    blank = [[ground] * len(lines[0])] * GAP
    return blank + lines + blank
