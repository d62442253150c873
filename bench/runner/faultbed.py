# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""What can fail around a host, and is there for the question of faults alone: a server and a display."""

import atexit
import shutil
import tempfile
from contextlib import ExitStack
from datetime import datetime
from pathlib import Path
from typing import NamedTuple

from bench.runner.display import Display
from cluster.runner.client import Address
from cluster.runner.keeping import end_in_order, kept
from cluster.runner.place import TOP
from cluster.runner.processes import wait_for
from cluster.runner.server import Server

MAP = TOP / "tests/data/news.sql"
READER = "'reader'@'localhost'"
# A node whose one row is larger than the smallest limit of packets, and a copy of the assignments.
FURTHER = """INSERT INTO news.document (id, date, text) VALUES (8, '2006-05-12 12:00:00', REPEAT('word ', 20000));
INSERT INTO som.news_train VALUES (3, 0.5, 8);
CREATE TABLE som.kept LIKE som.news_train; INSERT INTO som.kept SELECT * FROM som.news_train"""
CONNECTIONS = "FROM information_schema.processlist WHERE user = 'reader'"


class Reply(NamedTuple):
    """The answers to getNumRows and getFirstDateInFrame, as the host prints them."""

    rows: str
    date: str


class Node(NamedTuple):
    """A node, its first date, and what it answers when that is marked; by plain SQL."""

    number: int
    date: str
    reply: Reply


class Bed:
    """A server with a small map and a reader, and a display. Raises ClusterError."""

    def __init__(self) -> None:
        end_in_order()
        self._stack = ExitStack()
        atexit.register(self.close)
        self._folder = Path(tempfile.mkdtemp(prefix="qtutils-"))
        self._stack.callback(shutil.rmtree, self._folder, ignore_errors=True)
        self.server = Server(self._stack.enter_context(kept(self._folder)), "server", [], {})
        self._start()
        account = f"CREATE USER {READER} IDENTIFIED BY 'reader'; GRANT SELECT ON *.* TO {READER};\n"
        self.server.script(account + MAP.read_text(encoding="utf-8") + FURTHER)
        self.first, self.chosen, self.large = (self._node(number) for number in (0, 2, 3))
        self._display: Display | None = None

    @property
    def display(self) -> Display:
        """A display that works: a new one where the last is gone."""
        if self._display is None or self._display.is_gone():
            self._display = Display(self._folder)
            self._stack.callback(self._display.kill)
        return self._display

    def variables(self) -> dict[str, str]:
        """The variables by which a host finds server and display."""
        account = {"MYSQL_USER": "reader", "MYSQL_PWD": "reader"}
        return {**Address(socket=self.server.socket).variables(), **account, **self.display.variables}

    def close(self) -> None:
        """Ends all; a further call does nothing."""
        self._stack.close()

    def change_reader(self, change: str) -> None:
        self.server.script(f"ALTER USER {READER} {change}")

    def set(self, name: str, value: str) -> None:
        """A variable of the server, for new connections."""
        self.server.script(f"SET GLOBAL {name} = {value}")

    def cut_connections(self) -> None:
        """Ends the reader's connections; returns when they are gone."""
        with self.server.client() as client:
            for (number,) in client.rows(f"SELECT id {CONNECTIONS}"):
                assert number
                client.rows(f"KILL {number.decode()}")
        self.wait_cut()

    def wait_cut(self) -> None:
        """Returns when the reader has no connection."""
        wait_for("no connection", lambda: self.server.value(f"SELECT COUNT(*) {CONNECTIONS}") == "0")

    def restart(self) -> None:
        """Starts the server again; returns when it answers."""
        self.server.end()
        self._start()

    def _start(self) -> None:
        self.server.start()
        self.server.wait_ready()

    def _node(self, number: int) -> Node:
        from_node = f"FROM som.news_train JOIN news.document ON item = id WHERE node = {number}"
        date = self.server.value(f"SELECT MIN(date) {from_node}")
        minutes = int(datetime.fromisoformat(date).timestamp()) // 60
        return Node(number, date, Reply(self.server.value(f"SELECT COUNT(*) {from_node}"), str(minutes)))
