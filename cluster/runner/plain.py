# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""One server, with which the clusters are compared."""

from cluster.runner.client import Address
from cluster.runner.kind import Kind, start_servers
from cluster.runner.place import Place
from cluster.runner.server import Server


class Plain(Kind):
    """Readers and mapmaker come to the same server."""

    def __init__(self, place: Place) -> None:
        super().__init__(place)
        self._server = Server(place, "one", [], {})

    @property
    def servers(self) -> dict[str, Server]:
        return {self._server.name: self._server}

    @property
    def writer(self) -> Server:
        return self._server

    @property
    def map_options(self) -> list[str]:
        return []

    @property
    def address(self) -> Address:
        return self._server.address

    def start(self) -> None:
        start_servers([self._server])
        self._server.script(self.place.text("users.sql"))

    def publish(self, name: str) -> None:
        self._server.script(self.place.text("reader.sql", MAP=name))
        self.wait_readable(name, self.address)
