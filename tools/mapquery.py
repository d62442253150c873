# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""Questions to the demo's map: what there is worth a picture."""

import os

from screen import TourError, output_of

DOCUMENTS = "som.changelogs_train AS t JOIN texts.document AS d ON d.id = t.item"
LINES = "CHAR_LENGTH(d.text) - CHAR_LENGTH(REPLACE(d.text, '\\n', ''))"


def all_rows(what: str, query: str) -> list[list[str]]:
    """The fields of the result's rows. Raises TourError, naming what was asked for, when there is none."""
    user = os.environ.get("MYSQL_USER", "")
    output = output_of("mariadb", "--no-defaults", "--batch", "-N", f"--user={user}", "-e", query)
    lines = output.decode().splitlines()
    if not lines:
        raise TourError(f"the map has no {what}")
    return [line.split("\t") for line in lines]


def first_row(what: str, query: str) -> list[str]:
    """The fields of the result's first row."""
    return all_rows(what, query)[0]


def keyword(node: int, place: int = 1) -> str:
    """A keyword of a node; the first one is at place 1."""
    line = f"SUBSTRING_INDEX(SUBSTRING_INDEX(_keywords, '\\n', {place}), '\\n', -1)"
    query = f"SELECT {line} FROM som.changelogs_som LIMIT {node}, 1"
    return first_row(f"keyword for node {node}", query)[0]


def date_of_text(node: int, word: str) -> str:
    """The date of a document with a word, the only one of its second: if possible without names, of ten lines."""
    query = (
        f"SELECT d.date FROM {DOCUMENTS} WHERE t.node = {node} GROUP BY d.date"
        f" HAVING COUNT(*) = 1 AND MAX(d.text) LIKE '%{word}%'"
        f" ORDER BY MAX(d.text) RLIKE '[[@<]|thank', ABS(MAX({LINES}) - 10), d.date LIMIT 1"
    )
    return first_row(f"text with {word} in node {node}", query)[0]


def rows(node: int, word: str) -> list[tuple[float, bool, str]]:
    """For each document of a node, in the window's order: its distance, whether it has a word, its package."""
    query = (
        f"SELECT dist, text LIKE '%{word}%', package FROM som.changelogs_train, texts.document"
        f" WHERE texts.document.id=changelogs_train.item AND node={node} ORDER BY date"
    )
    found = all_rows(f"documents in node {node}", query)
    return [(float(distance), hit == "1", package) for distance, hit, package in found]


def fullest_day(node: int) -> tuple[str, int]:
    """The day ("31.12.2005") with the most documents of a node, and their number."""
    query = (
        f"SELECT DATE_FORMAT(d.date, '%d.%m.%Y'), COUNT(*) AS number FROM {DOCUMENTS} WHERE t.node = {node}"
        " GROUP BY DATE(d.date) ORDER BY number DESC, MIN(d.date) LIMIT 1"
    )
    day, number = first_row(f"documents in node {node}", query)
    return day, int(number)
