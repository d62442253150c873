#!/usr/bin/python3
# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""Takes a picture of the table for each recipe of row colours, on a display that nobody watches.

A host in Python itself: it needs the kit's package and library, and the map as ./demo makes it. Ends with 0 when every
picture shows what it should, else with 1 and one line on standard error.
"""

import argparse
import os
import subprocess
import sys
from pathlib import Path

import mapquery
from browserwindow import TOP, WINDOW_CLASS, WINDOW_SIZE
from pngfile import png
from qtutils import ColorCallback, Error, NodeBrowser, read_hierarchy, recipes
from screen import Box, Picture, TourError, resize, still_picture, wait_for, windows

NODE = 1
KEYWORD = 5  # a word that some of its documents have
TABLE = Box(345, 20, 635, 300)  # the upper part of it, in a window of WINDOW_SIZE
EXAMPLE = TOP / "kit/examples/python/notes.py"
CHROMA = 30  # of a row's colour, at least: the difference of the largest and the least of red, green and blue
Rows = list[tuple[float, bool, str]]


def chosen_recipes(rows: Rows) -> dict[str, ColorCallback]:
    """A recipe for each picture. The groups are packages, numbered as they come."""
    packages = list(dict.fromkeys(package for _, _, package in rows))
    return {
        "colors-by-date": recipes.by_date,
        "colors-by-distance": recipes.by_distance([distance for distance, _, _ in rows]),
        "colors-by-hit": recipes.by_hit([hit for _, hit, _ in rows]),
        "colors-by-group": recipes.by_group([packages.index(package) for _, _, package in rows]),
    }


def take(browser: NodeBrowser, output: Path) -> None:
    """Shows the node in each recipe's colours, and keeps what is seen."""
    rows = mapquery.rows(NODE, mapquery.keyword(NODE, KEYWORD))
    window = ""
    last = Picture(())
    for name, recipe in chosen_recipes(rows).items():
        browser.select_colored(NODE, recipe)
        if browser.num_rows != len(rows):
            raise TourError(f"node {NODE} has {browser.num_rows} documents, and the map {len(rows)}")
        if not window:
            browser.show()
            window = min(wait_for("the window shows", lambda: windows(WINDOW_CLASS)))
        box = resize(window, *WINDOW_SIZE)
        seen = Box(box.x + TABLE.x, box.y + TABLE.y, TABLE.width, TABLE.height)
        before = last
        last = still_picture(seen, lambda now: is_colored(now) and now.difference(before) > 0.05)
        keep(name, last, output)


def take_example(module: Path, hierarchy: Path, output: Path) -> None:
    """Runs the example of a host in a few lines, asks it for a node, and keeps what is seen."""
    wait_for("the window before is gone", lambda: not windows(WINDOW_CLASS))
    environment = {**os.environ, "QTUTILS_MODULE": str(module)}
    command = ["setpriv", "--pdeathsig", "TERM", sys.executable, str(EXAMPLE), str(hierarchy)]
    with subprocess.Popen(command, env=environment, stdin=subprocess.PIPE, text=True) as example:
        assert example.stdin
        window = min(wait_for("the example's window shows", lambda: windows(WINDOW_CLASS)))
        box = resize(window, *WINDOW_SIZE)
        before = still_picture(box, lambda now: not now.is_blank())
        example.stdin.write(f"{NODE}\n")
        example.stdin.flush()
        after = still_picture(box, lambda now: is_colored(now) and now.difference(before) > 0.05)
        keep("notes", after, output)


def is_colored(picture: Picture) -> bool:
    """Whether some rows have colours; before, the window shows the same rows in white."""
    pixels = picture.pixels()
    return sum(max(pixel) - min(pixel) > CHROMA for pixel in pixels) > 0.05 * len(pixels)


def keep(name: str, picture: Picture, output: Path) -> None:
    """Writes a picture and says so."""
    path = output / f"{name}.png"
    path.write_bytes(png(picture.rows))
    print(path, flush=True)


def main() -> int:
    parser = argparse.ArgumentParser(description="Takes the pictures of the recipes for row colours.")
    parser.add_argument("--module", type=Path, required=True, metavar="FILE", help="the module")
    parser.add_argument(
        "--hierarchy", type=Path, required=True, metavar="FILE", help="script with the map's nodes"
    )
    parser.add_argument("--output", type=Path, required=True, metavar="DIR", help="folder of the pictures")
    arguments = parser.parse_args()
    try:
        arguments.output.mkdir(parents=True, exist_ok=True)
        with NodeBrowser("som", "texts", arguments.module.resolve()) as browser:
            browser.set_som_table("changelogs_train")
            browser.pass_hierarchy(read_hierarchy(arguments.hierarchy))
            take(browser, arguments.output)
        take_example(arguments.module.resolve(), arguments.hierarchy, arguments.output)
    except (Error, TourError, OSError, ValueError) as error:
        print(f"color_pictures: {error}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
