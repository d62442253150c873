# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""The tables of the questions, made in the run's own server."""

import os
import tempfile
from collections.abc import Iterable
from pathlib import Path
from typing import Any

import pymysql  # type: ignore[import]

from bench.runner.texts import Texts, date

SOM = "bench_som"
DOCUMENT = """CREATE TABLE {}.document (
    id INT NOT NULL PRIMARY KEY,
    date DATETIME NOT NULL,
    title {} NOT NULL,
    URL VARCHAR(200) NOT NULL,
    text MEDIUMTEXT NOT NULL
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4"""
TRAIN = """CREATE TABLE {} (
    node INT NOT NULL, dist DOUBLE NOT NULL, item INT NOT NULL, PRIMARY KEY (node, item)
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4"""
KEYWORDS = """CREATE TABLE {} (
    node INT NOT NULL PRIMARY KEY, _assigned_topic INT, _keywords TEXT
) ENGINE=InnoDB DEFAULT CHARSET=utf8mb4"""
CACHE = 512 * 1024 * 1024  # bytes: all tables stay in the server's memory
LARGEST_ROW = 256 * 1024 * 1024
HUGE_TEXT = 64 * 1024 * 1024  # characters
HUGE_ROWS = 1000  # with and without the huge text


class Data:
    """Makes tables on demand, each once, and none larger than a size."""

    def __init__(self, largest: int) -> None:
        self._largest = largest
        self._texts = Texts()
        self._made: set[str] = set()
        self._connection = self._connect()
        with self._connection.cursor() as cursor:
            cursor.execute(
                f"SET GLOBAL innodb_buffer_pool_size={CACHE}, GLOBAL max_allowed_packet={LARGEST_ROW}"
            )
            cursor.execute(f"CREATE DATABASE {SOM}")
        self._connection = self._connect()  # larger rows hold for new connections

    def documents(self, name: str, sizes: Iterable[int], length: int) -> None:
        """Documents with texts of a length in the database bench_<name>, and the table <name>_train whose node
        number n has the first n of them."""
        if not self._is_new(name):
            return
        sizes = [size for size in sizes if size <= self._largest]
        self._make_documents(name, "VARCHAR(200)")
        self._fill(f"bench_{name}.document", (self._document(i, length) for i in range(1, max(sizes) + 1)))
        self._fill(
            f"{SOM}.{name}_train", (f"{size}\t{i / 7:.3f}\t{i}" for size in sizes for i in range(1, size + 1))
        )

    def maps(self, sizes: Iterable[int]) -> None:
        """Nodes without documents, with keywords: tables map<size>_train and map<size>_som."""
        for size in sizes:
            name = f"map{size}"
            if size <= self._largest and self._is_new(name):
                self._execute(TRAIN.format(f"{SOM}.{name}_train"), KEYWORDS.format(f"{SOM}.{name}_som"))
                self._fill(
                    f"{SOM}.{name}_som", (f"{i}\t{i % 24}\t{self._texts.keywords(i)}" for i in range(size))
                )

    def bare_map(self) -> None:
        """A table bare_train without a keyword table."""
        if self._is_new("bare"):
            self._execute(TRAIN.format(f"{SOM}.bare_train"))

    def huge_text(self) -> None:
        """Node 1 has plain documents, node 2 the same after one whose title has 64 MB."""
        if not self._is_new("huge"):
            return
        self._make_documents("huge", "LONGTEXT")
        rows = range(1, HUGE_ROWS + 1)
        self._fill("bench_huge.document", (self._document(i, 2000) for i in [*rows, HUGE_ROWS + 1]))
        self._execute(
            f"UPDATE bench_huge.document SET title=REPEAT('abcd efg', {HUGE_TEXT // 8}), date='2003-12-31' "
            f"WHERE id={HUGE_ROWS + 1}"
        )
        nodes = [f"{node}\t0\t{i}" for node in (1, 2) for i in rows]
        self._fill(f"{SOM}.huge_train", [*nodes, f"2\t0\t{HUGE_ROWS + 1}"])

    def _is_new(self, name: str) -> bool:
        is_new = name not in self._made
        self._made.add(name)
        return is_new

    def _connect(self) -> "pymysql.connections.Connection[Any]":
        return pymysql.connect(
            unix_socket=os.environ["MYSQL_UNIX_PORT"],
            user=os.environ["MYSQL_USER"],
            password=os.environ["MYSQL_PWD"],
            charset="utf8mb4",
            autocommit=True,
        )

    def _document(self, number: int, length: int) -> str:
        texts = self._texts
        address = f"http://www.example.org/{number}"
        return "\t".join(
            (str(number), date(number), texts.title(number), address, texts.text(number, length))
        )

    def _make_documents(self, name: str, title: str) -> None:
        self._execute(
            f"CREATE DATABASE bench_{name}",
            DOCUMENT.format(f"bench_{name}", title),
            TRAIN.format(f"{SOM}.{name}_train"),
        )

    def _execute(self, *statements: str) -> None:
        with self._connection.cursor() as cursor:
            for statement in statements:
                cursor.execute(statement)

    def _fill(self, table: str, lines: Iterable[str]) -> None:
        """Has the server read a file of lines with fields between tabs."""
        folder = Path(os.environ["MYSQL_UNIX_PORT"]).parent
        with tempfile.NamedTemporaryFile("w", dir=folder, encoding="utf-8") as file:
            os.chmod(file.name, 0o644)
            file.writelines(line + "\n" for line in lines)
            file.flush()
            self._execute(
                f"LOAD DATA INFILE '{file.name}' INTO TABLE {table} CHARACTER SET utf8mb4",
                f"ANALYZE TABLE {table}",
            )
