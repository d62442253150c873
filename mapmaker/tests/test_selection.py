# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""The window's statements on tables with the indices of docs/database.md: a node's choice reads its rows only."""

import re
from collections.abc import Iterator
from pathlib import Path
from typing import Any

import pytest

from mapmaker.tests.privateserver import connect
from mapmaker.tests.doctorbase import run

PAGE = (Path(__file__).parents[2] / "docs" / "database.md").read_text(encoding="utf-8")
NODES = 10
DAY = "2005-03-01"


def page_tables() -> str:
    """The tables as docs/database.md has them, in databases of this test."""
    (block,) = re.findall(r"```sql\n(.*?)```", PAGE, re.DOTALL)
    statements = re.sub(r",(\s*\))", r"\1", re.sub(r"--.*| +\.\.\.", "", block))
    return statements.replace("TABLE document", "TABLE fast_texts.document").replace(
        "TABLE news", "TABLE fast_map.news"
    )


def page_statements() -> list[str]:
    """The selection of a node, without and with a date, as docs/database.md has it."""
    found = re.findall(r"^\| .* \| `([^`]*node=7[^`]*)` \|$", PAGE, re.MULTILINE)
    whole = found[0].removesuffix(" ORDER BY date")
    statements = [found[0]] + [whole + tail.removeprefix("... AND node=7") for tail in found[1:]]
    return [statement.replace("texts.document", "fast_texts.document") for statement in statements]


@pytest.fixture
def link(server: dict[str, str]) -> Iterator[Any]:
    """A connection to empty tables as the page has them."""
    opened = connect(server)
    try:
        run(opened, "CREATE DATABASE fast_map;\nCREATE DATABASE fast_texts;\nUSE fast_map")
        run(opened, page_tables())
        yield opened
    finally:
        run(opened, "DROP DATABASE IF EXISTS fast_map;\nDROP DATABASE IF EXISTS fast_texts")
        opened.close()


def put(link: Any, documents: int, own: int) -> None:
    """Fills the tables: node 7 has so many documents, spread over the table, the other nodes share the rest."""
    run(link, "DELETE FROM fast_map.news_train;\nDELETE FROM fast_texts.document")
    each = documents // own
    numbers = f"FROM (SELECT seq FROM seq_0_to_{documents - 1}) AS numbers"
    run(
        link,
        f"INSERT INTO fast_texts.document SELECT seq, '{DAY}' + INTERVAL seq HOUR, 't', 'u', 'x' {numbers};\n"
        f"INSERT INTO fast_map.news_train SELECT IF(seq % {each}, 8 + seq % {NODES}, 7), 0.5, seq {numbers};\n"
        "ANALYZE TABLE fast_texts.document, fast_map.news_train",
    )


def ask(link: Any, statement: str) -> list[tuple[Any, ...]]:
    """All rows of a statement."""
    with link.cursor() as cursor:
        cursor.execute(statement)
        return list(cursor.fetchall())


def rows_read(link: Any, statement: str) -> tuple[int, int]:
    """How many rows the server reads for a statement, in tables and while sorting, and how many it gives."""

    def handler() -> int:
        return sum(int(value) for _, value in ask(link, "SHOW SESSION STATUS LIKE 'Handler_read%'"))

    idle = handler()
    idle = handler() - idle
    before = handler()
    given = len(ask(link, statement))
    return handler() - before - idle, given


def test_the_pages_statements_are_the_windows_three() -> None:
    tails = [statement.partition("node=7")[2] for statement in page_statements()]
    assert tails == [
        " ORDER BY date",
        f' AND fast_texts.document.date like "{DAY}%" ORDER BY date',
        f' AND fast_texts.document.date ="{DAY}T13:00:00" ORDER BY date',
    ]


@pytest.mark.parametrize("statement", page_statements(), ids=["all", "day", "time"])
def test_a_selection_looks_rows_up_by_primary_keys(link: Any, statement: str) -> None:
    put(link, 4000, 50)
    plan = [(row[2], row[3], row[5]) for row in ask(link, "EXPLAIN " + statement)]
    assert plan == [("news_train", "ref", "PRIMARY"), ("document", "eq_ref", "PRIMARY")]


@pytest.mark.parametrize("statement", page_statements(), ids=["all", "day", "time"])
def test_a_selection_reads_as_many_rows_in_a_larger_collection(link: Any, statement: str) -> None:
    put(link, 2000, 50)
    small, _ = rows_read(link, statement)
    put(link, 8000, 50)
    large, _ = rows_read(link, statement)
    assert large == small


def test_a_selection_reads_in_proportion_to_its_node(link: Any) -> None:
    put(link, 8000, 50)
    few, given = rows_read(link, page_statements()[0])
    assert given == 50
    put(link, 8000, 400)
    many, given = rows_read(link, page_statements()[0])
    assert given == 400
    assert few <= 5 * 50
    assert many <= 8 * few


def test_without_the_key_all_assignments_are_read(link: Any) -> None:
    put(link, 2000, 50)
    run(link, "ALTER TABLE fast_map.news_train DROP PRIMARY KEY")
    read, given = rows_read(link, page_statements()[0])
    assert given == 50
    assert read > 2000
