# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""What all kinds of clusters have in common."""

import os
import subprocess
from abc import ABC, abstractmethod
from collections.abc import Sequence

from cluster.runner.client import Address, QueryError, connected
from cluster.runner.place import TOP, Place
from cluster.runner.processes import ClusterError, wait_for
from cluster.runner.server import Server

MAPMAKER = ("/usr/bin/python3", "-m", "mapmaker")


class Kind(ABC):
    """A private cluster: start(), then make_map() or scripts to the writer, then publish() for each map."""

    def __init__(self, place: Place) -> None:
        self.place = place

    @property
    @abstractmethod
    def servers(self) -> dict[str, Server]:
        """All servers by their names, in the order of their starting."""

    @property
    @abstractmethod
    def writer(self) -> Server:
        """The server that maps are written to."""

    @property
    @abstractmethod
    def address(self) -> Address:
        """Where readers come in."""

    @abstractmethod
    def start(self) -> None:
        """Starts everything and makes the accounts; returns when readers could come in."""

    @abstractmethod
    def publish(self, name: str) -> None:
        """Gives the reader rights on a map that the writer has; returns when every server has it."""

    def check(self) -> None:
        """Raises ClusterError when what leads readers to the servers has ended."""

    def document_tables(self) -> list[tuple[Server, str, str]]:
        """Where documents are written: server, table, and the condition on ids "seq" that belong there."""
        return [(self.writer, f"{self.place.words['TEXTS']}.document", "TRUE")]

    def environment(self) -> dict[str, str]:
        """The variables by which the window, and mapmaker's doctor, find the map."""
        reader = self.place.reader
        return {**self.address.variables(), "MYSQL_USER": reader.user, "MYSQL_PWD": reader.password}

    @property
    @abstractmethod
    def map_options(self) -> list[str]:
        """What mapmaker is told of this kind."""

    def make_map(self, arguments: Sequence[str]) -> None:
        """Has mapmaker make a map. Raises ClusterError."""
        self.run_mapmaker(self.writer, [*arguments, *self.map_options])

    def run_mapmaker(self, server: Server, arguments: Sequence[str]) -> None:
        """Runs mapmaker on a server, as the account for it. Raises ClusterError with what it says last."""
        address, maker = Address(socket=server.socket), self.place.maker
        account = {"MYSQL_USER": maker.user, "MYSQL_PWD": maker.password}
        databases = [
            "--som-database",
            self.place.words["SOM"],
            "--source-database",
            self.place.words["TEXTS"],
        ]
        result = subprocess.run(
            [*MAPMAKER, *arguments, *databases],
            cwd=TOP,
            env={**os.environ, **address.variables(), **account},
            stdout=subprocess.PIPE,
            stderr=subprocess.STDOUT,
            text=True,
            check=False,
        )
        if result.returncode:
            raise ClusterError(f"mapmaker: {(result.stdout.splitlines() or ['it says nothing'])[-1]}")

    def wait_readable(self, name: str, address: Address) -> None:
        """Returns when a new connection of the reader to that address finds the map. Raises ClusterError."""
        statement = f"SELECT 1 FROM {self.place.words['SOM']}.{name}_train LIMIT 1"

        def is_readable() -> bool:
            self.check()
            try:
                with connected(address, self.place.reader) as client:
                    return client.value(statement) == "1"
            except QueryError:
                return False

        wait_for("the map can be read", is_readable)


def start_servers(servers: Sequence[Server]) -> None:
    """Starts servers at the same time."""
    for server in servers:
        server.start()
    for server in servers:
        server.wait_ready()
