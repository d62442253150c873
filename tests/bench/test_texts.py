# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""Invented documents."""

from bench.runner.texts import MINUTES, Texts, date


def test_texts_are_the_same_in_every_run() -> None:
    assert Texts().text(5, 100).startswith("ta ly tashigla")
    assert Texts().title(3).startswith("Shistnoser ka")
    assert date(4) == "2004-01-22 23:56:34"


def test_every_document_has_a_minute_of_its_own() -> None:
    assert len({date(number)[:16] for number in range(1, 20_000)}) == 19_999
    assert MINUTES > 1_000_000


def test_texts_fit_their_columns_and_the_servers_file_format() -> None:
    texts = Texts()
    fields = [texts.title(n) for n in range(500)] + [texts.text(n, 2000) for n in range(500)]
    assert not any("\t" in field or "\n" in field for field in fields)
    assert all(len(field) <= 200 for field in fields[:500])
    assert all(1900 <= len(field) <= 2000 for field in fields[500:])


def test_some_titles_are_not_plain_ascii() -> None:
    texts = Texts()
    assert sum(not texts.title(number).isascii() for number in range(1, 501)) == 10
