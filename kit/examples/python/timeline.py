# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""Shows a map with rows coloured by date: red for a node's first document, blue for its last one.

Prints the number of documents of each node and the first one's date. Ends with standard input.

timeline.py SOM_DATABASE SOURCE_DATABASE TABLE HIERARCHY
HIERARCHY is a file with a line for each node: the numbers of its children.
"""

import sys
from collections.abc import Sequence
from pathlib import Path

from qtutils import NO_DATE, Error, Minutes, NodeBrowser

LAST_HUE = 240  # blue
WHITE = (0, 0, 255)


def read_hierarchy(file: str) -> list[list[int]]:
    return [[int(child) for child in line.split()] for line in Path(file).read_text().splitlines()]


def color_by_date(minutes: Minutes) -> Sequence[tuple[int, int, int]]:
    rows = [int(minute) for minute in minutes]
    dates = [minute for minute in rows if minute != NO_DATE]
    first, last = min(dates, default=0), max(dates, default=0)
    length = max(last - first, 1)
    return [
        WHITE if minute == NO_DATE else (LAST_HUE * (minute - first) // length, 90, 255) for minute in rows
    ]


def show_node(browser: NodeBrowser, node: int) -> None:
    browser.select_colored(node, color_by_date)
    if browser.num_rows == 0:
        print(f"node {node}: no documents")
    else:
        print(f"node {node}: {browser.num_rows} documents from {browser.first_date_in_selection}")


def main(som_database: str, source_database: str, table: str, hierarchy: str) -> None:
    children = read_hierarchy(hierarchy)
    with NodeBrowser(som_database, source_database) as browser:
        browser.set_som_table(table)
        browser.pass_hierarchy(children)
        browser.show()
        for node in reversed(range(len(children))):
            show_node(browser, node)
        print("the map is shown until standard input ends", flush=True)
        sys.stdin.read()


if __name__ == "__main__":
    if len(sys.argv) != 5:
        sys.exit("usage: timeline.py SOM_DATABASE SOURCE_DATABASE TABLE HIERARCHY")
    try:
        main(*sys.argv[1:])
    except (Error, OSError) as error:
        sys.exit(f"timeline: {error}")
