#!/usr/bin/python3
# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""Draws the topic signs Images/0.xpm to Images/20.xpm.

The tree divides a picture of height h by the whole number q = h / r, where r is the height of a row of text,
and takes the nearest pixel without smoothing. A picture lower than r vanishes; one from r to 2r-1 pixels high
is kept. The signs are 84 pixels high: 84 can be divided by 6, 4, 3 and 2, so that they come out little higher
than the text, whatever the font is:

    row of text    9    10    11-12    13-14    15-16    17-21    22-28    29-42    43-84
    divisor        9     8        7        6        5        4        3        2        1
    sign           9    10       12       14       17       21       28       42       84

A picture of 16 would vanish at rows of 17 and more; one of 26 would double the rows of 14. The signs are drawn on
a grid of 14 units of 6 pixels, with a contour one unit wide, which stays closed at divisors up to 6.

A dark contour shows the shape on light grounds, the brighter inside shows it on dark ones. Signs differ in shape
and in colour; tests/tools/test_icons.py pins how much, for normal and other colour vision.
"""

import argparse
import sys
from pathlib import Path

from icons.picture import xpm
from icons.shapes import SIGNS
from icons.sheet import contact_sheet

IMAGES = Path(__file__).resolve().parent.parent / "Images"


def _parsed_arguments() -> argparse.Namespace:
    parser = argparse.ArgumentParser(description="Draws the topic signs.")
    parser.add_argument("--output", type=Path, default=IMAGES, metavar="DIR", help="folder to write to")
    parser.add_argument("--check", action="store_true", help="write nothing; fail if a file in DIR differs")
    parser.add_argument("--sheet", type=Path, metavar="FILE", help="also write a contact sheet (PNG)")
    return parser.parse_args()


def _is_current(path: Path, text: str) -> bool:
    return path.is_file() and path.read_text(encoding="ascii") == text


def main() -> int:
    arguments = _parsed_arguments()
    texts = {arguments.output / f"{index}.xpm": xpm(index, sign) for index, sign in enumerate(SIGNS)}
    try:
        if arguments.sheet:
            arguments.sheet.write_bytes(contact_sheet())
        if arguments.check:
            stale = [str(path) for path, text in texts.items() if not _is_current(path, text)]
            for name in stale:
                print(f"make_icons: {name} is not what the script draws", file=sys.stderr)
            return 1 if stale else 0
        for path, text in texts.items():
            path.write_text(text, encoding="ascii")
    except OSError as error:
        print(f"make_icons: {error}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
