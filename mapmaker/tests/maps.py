# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""Small maps that carry a mark in every row, and readers who look whether rows of two maps are mixed."""

import threading
from collections.abc import Iterator
from contextlib import contextmanager
from typing import Any

from mapmaker import store
from mapmaker.driver import ServerError
from mapmaker.tests.conftest import document
from mapmaker.tests.privateserver import connect

NAMES = store.Names("texts", "som", "notes")
READER = (
    "SELECT node, dist, document.* FROM notes_train, texts.document "
    "WHERE texts.document.id=notes_train.item AND node=1 ORDER BY date"
)
DOCUMENTS = 60


def marked(mark: int) -> store.Content:
    """A map whose distances, titles and keywords are the mark; a third of the documents lies in node 1."""
    texts = [
        document(f"{mark}", f"Größe {number} 🐝", day=28 - number % 28)._replace(author=str(number))
        for number in range(DOCUMENTS)
    ]
    members = [(number % 3, float(mark), number) for number in range(DOCUMENTS)]
    return store.Content(
        [texts[:25], texts[25:]], [members], [(mark, f"grün {mark} {node} 🐝") for node in range(3)]
    )


def put(environment: dict[str, str], content: store.Content, home: store.Home = store.SameServer()) -> None:
    """Stores a map."""
    with store.connection(environment) as link:
        store.fill(link, NAMES, content, home=home)
        store.swap(link, NAMES.tables())


def ask(environment: dict[str, str], statement: str) -> list[tuple[Any, ...]]:
    """The rows of a statement in the map's database."""
    link = connect(environment)
    link.select_db("som")
    with link.cursor() as cursor:
        cursor.execute(statement)
        rows = list(cursor.fetchall())
    link.close()
    return rows


def marks(rows: list[tuple[Any, ...]]) -> set[tuple[float, str]]:
    """The marks of a node's rows: of their distances and of their titles."""
    return {(row[1], row[4]) for row in rows}


@contextmanager
def watched(environment: dict[str, str]) -> Iterator[list[object]]:
    """Reads node 1 again and again while the caller acts; all that came: marks of a result, or a server's error."""
    seen: list[object] = []
    done = threading.Event()

    def read() -> None:
        while not done.is_set():
            try:
                rows = ask(environment, READER)
                seen.append((len(rows), frozenset(marks(rows))))
            except ServerError as error:
                seen.append(error.args[0])

    thread = threading.Thread(target=read)
    thread.start()
    try:
        yield seen
    finally:
        done.set()
        thread.join()


def whole(mark: int) -> tuple[int, frozenset[tuple[float, str]]]:
    """What a reader of node 1 sees of a map with a mark."""
    return (DOCUMENTS // 3, frozenset({(float(mark), str(mark))}))
