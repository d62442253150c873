# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""The tables of a map in MariaDB; the only module that knows SQL.

New tables are filled under other names and then take the place of the old ones by one statement, so that
a reader sees the old map or the new one.
"""

import os
import re
from collections.abc import Iterable, Iterator, Mapping, Sequence
from contextlib import contextmanager
from itertools import count
from typing import Any, NamedTuple, Protocol

from mapmaker import hostoptions, inserts
from mapmaker.driver import ServerError, connect
from mapmaker.progress import Track, silent
from mapmaker.sources.document import LONGEST_ADDRESS, Document, is_safe_address

SECONDS_TO_WAIT = 60  # for readers that keep a table locked
LONGEST_NAME = 40  # a table name of the server has up to 64 characters, ours get suffixes
FILLED, REPLACED = "__new", "__old"

INNODB = "ENGINE=InnoDB DEFAULT CHARSET=utf8mb4"

DOCUMENT = f"""(
    `id` INT NOT NULL PRIMARY KEY,
    `date` DATETIME NOT NULL,
    `title` VARCHAR(255) NOT NULL,
    `URL` VARCHAR({LONGEST_ADDRESS}) NOT NULL,
    `text` MEDIUMTEXT NOT NULL,
    `author` VARCHAR(255) NOT NULL,
    `urgency` VARCHAR(32) NOT NULL,
    `package` VARCHAR(255) NOT NULL
)"""
WIDTHS = {"title": 255, "author": 255, "urgency": 32, "package": 255}

TRAIN = """(
    node INT NOT NULL,
    dist DOUBLE NOT NULL,
    item INT NOT NULL,
    PRIMARY KEY (node, item)
)"""

# Readers take the k-th row as node k without asking for an order. InnoDB keeps rows in the order of the
# primary key; another index that covers the columns would spoil that, so there must be none. The nodes' numbers
# are written, because a cluster leaves gaps in numbers of its own (AUTO_INCREMENT).
SOM = """(
    node INT NOT NULL PRIMARY KEY,
    _assigned_topic INT,
    _keywords TEXT
)"""


class StoreError(Exception):
    """The map cannot be stored; the message is one line."""


class Names(NamedTuple):
    """Where the tables go."""

    source_database: str
    som_database: str
    name: str

    def check(self) -> None:
        """Raises StoreError unless all names are plain: they become part of statements."""
        for name in self:
            if not re.fullmatch(rf"[A-Za-z0-9_]{{1,{LONGEST_NAME}}}", name):
                raise StoreError(
                    f"bad table name {name!r}: only A-Z, a-z, 0-9 and _ and up to {LONGEST_NAME} characters"
                )

    def tables(self) -> tuple[str, str, str]:
        """Full names of the tables of documents, memberships and nodes."""
        som = f"{self.som_database}.{self.name}"
        return (f"{self.source_database}.document", f"{som}_train", f"{som}_som")


class Content(NamedTuple):
    """The rows of a map in batches, each read once; nodes and documents are numbered from 0 in their order."""

    documents: Iterable[Sequence[Document]]
    memberships: Iterable[Sequence[tuple[int, float, int]]]  # node, distance, document
    nodes: Sequence[tuple[int, str]]  # topic, keywords


class Home(Protocol):
    """Where the documents of a new map go."""

    def prepare(self, link: Any, names: Names) -> str:
        """Makes what the table of documents needs, and gives its definition: what follows its name."""

    def write(self, link: Any, table: str, rows: Sequence[tuple[Any, ...]]) -> None:
        """Adds documents to the table."""


class SameServer:
    """Documents in the server of the map."""

    def prepare(self, link: Any, names: Names) -> str:
        """A plain table."""
        return f"{DOCUMENT} {INNODB}"

    def write(self, link: Any, table: str, rows: Sequence[tuple[Any, ...]]) -> None:
        """Adds documents to the table."""
        inserts.insert(link, table, rows)


def settings(environment: Mapping[str, str]) -> dict[str, Any]:
    """Parameters of the connection from MYSQL_HOST, MYSQL_USER and MYSQL_PWD.

    MYSQL_HOST may also hold options with semicolons between them. Host localhost means the Unix socket, whose path is MYSQL_UNIX_PORT or Debian's default. Any other host is
    asked on the port in MYSQL_TCP_PORT, or the usual one.
    """
    missing = [name for name in ("MYSQL_HOST", "MYSQL_USER", "MYSQL_PWD") if name not in environment]
    if missing:
        raise StoreError(f"missing in the environment: {', '.join(missing)}")
    port = environment.get("MYSQL_TCP_PORT")
    try:
        found = hostoptions.parameters(environment["MYSQL_HOST"])
        found.setdefault("port", int(port) if port else 0)
    except ValueError as error:
        raise StoreError(
            f"the port in MYSQL_HOST or MYSQL_TCP_PORT is no number: {one_line(error)}"
        ) from error
    if found["host"] == "localhost":
        found.setdefault("unix_socket", environment.get("MYSQL_UNIX_PORT", "/run/mysqld/mysqld.sock"))
    return {**found, "user": environment["MYSQL_USER"], "password": environment["MYSQL_PWD"]}


@contextmanager
def connection(environment: Mapping[str, str] = os.environ, autocommit: bool | None = False) -> Iterator[Any]:
    """An open connection, closed at the end; every failure of the server becomes a StoreError.

    Without a value for `autocommit` the server's own setting is left alone.
    """
    parameters = settings(environment)
    try:
        link = connect(**parameters, charset="utf8mb4", autocommit=autocommit)
    except ServerError as error:
        raise StoreError(f"no connection to the server: {one_line(error)}") from error
    except OSError as error:
        raise StoreError(f"the files for TLS in MYSQL_HOST cannot be read: {one_line(error)}") from error
    try:
        yield link
    except ServerError as error:
        raise StoreError(f"the server refuses: {one_line(error)}") from error
    except inserts.RowError as error:
        raise StoreError(str(error)) from error
    finally:
        link.close()


@contextmanager
def other_server(title: str, place: Mapping[str, Any], environment: Mapping[str, str]) -> Iterator[Any]:
    """A connection to another server at this host and port, or socket, as the same user and with the same TLS."""
    parameters = settings(environment)
    parameters.pop("unix_socket", None)
    try:
        link = connect(**{**parameters, **place}, charset="utf8mb4", autocommit=False)
    except ServerError as error:
        raise StoreError(f"no connection to {title}: {one_line(error)}") from error
    try:
        yield link
    finally:
        link.close()


def one_line(error: Exception) -> str:
    """The text of a server's error in one line."""
    return " ".join(str(error.args[-1] if error.args else error).split())


def document_row(number: int, document: Document) -> tuple[Any, ...]:
    """One row of the document table, texts cut to the widths of their columns.

    Raises StoreError for an address that a reader's shell could take for more than an address.
    """
    if not is_safe_address(document.url):
        raise StoreError(f"unsafe address {document.url!r} of document {document.title!r}")
    cut = document._replace(**{column: getattr(document, column)[:width] for column, width in WIDTHS.items()})
    return (number, *cut)


def batches(content: Content, track: Track) -> Iterator[tuple[int, list[tuple[Any, ...]]]]:
    """All rows as they are stored, a batch at a time with the number of its table."""
    document = count()
    for texts in track(content.documents):
        yield 0, [document_row(number, text) for text, number in zip(texts, document)]
    for members in track(content.memberships):
        yield 1, list(members)
    yield 2, [(number, *node) for number, node in enumerate(content.nodes)]


def fill(link: Any, names: Names, content: Content, track: Track = silent, home: Home = SameServer()) -> None:
    """Writes the new tables beside those in use. Creates the databases where they are missing."""
    names.check()
    tables = [table + FILLED for table in names.tables()]
    with link.cursor() as cursor:
        cursor.execute(f"SET SESSION lock_wait_timeout = {SECONDS_TO_WAIT}")
        for database in sorted({names.source_database, names.som_database}):
            create_database(cursor, database)
        definitions = (home.prepare(link, names), f"{TRAIN} {INNODB}", f"{SOM} {INNODB}")
        for table, definition in zip(tables, definitions):
            cursor.execute(f"DROP TABLE IF EXISTS {table}")
            cursor.execute(f"CREATE TABLE {table} {definition}")
    for number, rows in batches(content, track):
        (home.write if number == 0 else inserts.insert)(link, tables[number], rows)
    with link.cursor() as cursor:
        cursor.execute("ANALYZE TABLE " + ", ".join(tables))


def create_database(cursor: Any, database: str) -> None:
    """Creates a database unless it is there."""
    if not found(cursor, "SCHEMATA WHERE schema_name = %s", (database,)):
        cursor.execute(f"CREATE DATABASE IF NOT EXISTS {database} DEFAULT CHARACTER SET utf8mb4")


def found(cursor: Any, condition: str, values: tuple[str, ...]) -> bool:
    """Whether the server's catalogue knows something."""
    cursor.execute(f"SELECT COUNT(*) FROM information_schema.{condition}", values)
    return bool(cursor.fetchone()[0])


def swap(link: Any, tables: Iterable[str]) -> None:
    """Puts the filled tables in the place of the old ones, all at once, and drops the old."""
    moves, old = [], []
    with link.cursor() as cursor:
        for table in tables:
            cursor.execute(f"DROP TABLE IF EXISTS {table}{REPLACED}")
            if found(cursor, "TABLES WHERE table_schema = %s AND table_name = %s", tuple(table.split("."))):
                moves.append(f"{table} TO {table}{REPLACED}")
                old.append(table + REPLACED)
            moves.append(f"{table}{FILLED} TO {table}")
        cursor.execute("RENAME TABLE " + ", ".join(moves))
        if old:
            cursor.execute("DROP TABLE " + ", ".join(old))
