# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""Rows go to the server in statements that it takes."""

from collections.abc import Iterator
from typing import Any

import pytest

from mapmaker import inserts, store
from mapmaker.tests.conftest import document
from mapmaker.tests.privateserver import connect
from mapmaker.tests.doctorbase import global_setting

NAMES = store.Names("long_texts", "long_map", "long")


@pytest.mark.parametrize(
    "longest, expected",
    [
        (100, [b"I (a),(bb),(ccc),(d)"]),
        (14, [b"I (a),(bb)", b"I (ccc),(d)"]),
        (10, [b"I (a),(bb)", b"I (ccc)", b"I (d)"]),
        (9, [b"I (a)", b"I (bb)", b"I (ccc)", b"I (d)"]),
    ],
)
def test_a_statement_has_as_many_rows_as_fit(longest: int, expected: list[bytes]) -> None:
    assert list(inserts.statements(b"I ", [b"(a)", b"(bb)", b"(ccc)", b"(d)"], longest)) == expected


def test_no_rows_are_no_statement() -> None:
    assert list(inserts.statements(b"I ", [], 9)) == []


def test_statements_are_no_longer_than_helps(monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.setattr(inserts, "LONGEST", 10)
    made = list(inserts.statements(b"I ", [b"(a)", b"(b)", b"(" + b"c" * 20 + b")", b"(d)"], 100))
    assert made == [b"I (a),(b)", b"I (" + b"c" * 20 + b")", b"I (d)"]


def test_a_row_that_never_fits_is_one_line() -> None:
    with pytest.raises(inserts.RowError, match=r"^a row of 9 bytes .* \(11\): set it higher$"):
        list(inserts.statements(b"I ", [b"(" + b"a" * 7 + b")"], 10))


def long_map(length: int) -> store.Content:
    """A map of documents with texts of so many bytes, and one node."""
    texts = [document(f"t{number}", "ä" * (length // 2 - 1) + "'") for number in range(40)]
    return store.Content([texts], [[(0, 0.5, number) for number in range(40)]], [(0, "a")])


@pytest.fixture
def narrow(server: dict[str, str]) -> Iterator[Any]:
    """A link of one who may do all to a server that takes packets up to 16 KB; the map is dropped at the end."""
    link = connect(server)
    with global_setting(link, "max_allowed_packet", 16384):
        yield link
    with link.cursor() as cursor:
        for database in NAMES[:2]:
            cursor.execute(f"DROP DATABASE IF EXISTS {database}")
    link.close()


@pytest.mark.parametrize("length", [100, 5000, 16000])
def test_a_server_that_takes_little_gets_little_at_once(
    server: dict[str, str], narrow: Any, length: int
) -> None:
    content = long_map(length)
    with store.connection(server) as link:
        store.fill(link, NAMES, content)
        store.swap(link, NAMES.tables())
    narrow.rollback()
    with narrow.cursor() as cursor:
        cursor.execute("SELECT text FROM long_texts.document ORDER BY id")
        assert [row[0] for row in cursor.fetchall()] == [text.text for text in list(content.documents)[0]]


def test_a_document_that_the_server_never_takes_is_one_line(server: dict[str, str], narrow: Any) -> None:
    with pytest.raises(
        store.StoreError, match=r"^a row of \d+ bytes doesn't fit .*\(16384\): set it higher$"
    ):
        with store.connection(server) as link:
            store.fill(link, NAMES, long_map(16300))
