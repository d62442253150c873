# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""One of several copies of a document: found and sorted in a table on disk, so that memory doesn't grow."""

import os
import sqlite3
from collections.abc import Iterable, Iterator
from contextlib import closing
from datetime import datetime
from typing import NamedTuple

from mapmaker.sources.document import Document, SourceError

TABLE = """CREATE TABLE copy (source, version, own, at_home,
    date, title, url, text, author, urgency, package, UNIQUE (source, version))"""
ADD = """INSERT INTO copy VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)
    ON CONFLICT (source, version) DO UPDATE SET own = excluded.own, at_home = excluded.at_home,
        date = excluded.date, title = excluded.title, url = excluded.url, text = excluded.text,
        author = excluded.author, urgency = excluded.urgency, package = excluded.package
    WHERE (excluded.own, excluded.date, excluded.at_home, excluded.package) > (own, date, at_home, package)"""
SORTED = "SELECT date, title, url, text, author, urgency, package FROM copy ORDER BY date, title, rowid"


class Entry(NamedTuple):
    """One changelog entry and the file it was found in."""

    source: str
    version: str
    owner: str  # source of the file's newest entry, so of the package that installed it
    document: Document


def row(entry: Entry) -> tuple[str | bytes | bool, ...]:
    """The entry in the order of the columns; date as text, and package as bytes, as folders may be called anything."""
    document = entry.document
    own, at_home = entry.owner == entry.source, document.package == entry.source
    columns = document.date.isoformat(), *document[1:-1], os.fsencode(document.package)
    return (entry.source, entry.version, own, at_home, *columns)


def unique(entries: Iterable[Entry]) -> Iterator[Document]:
    """Documents by date and title, one per source and version.

    A copy in a file of the same source wins, then the newest; the rest only makes the choice unique.
    Raises SourceError when the disk is full.
    """
    try:
        with closing(sqlite3.connect("")) as table:
            table.execute(TABLE)
            table.executemany(ADD, (row(entry) for entry in entries if entry.document.text))
            for date, *columns, package in table.execute(SORTED):
                yield Document._make((datetime.fromisoformat(date), *columns, os.fsdecode(package)))
    except sqlite3.Error as error:
        raise SourceError(f"the documents cannot be sorted: {error}") from error
