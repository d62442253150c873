# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""A primary, two replicas, and HAProxy before them."""

from cluster.runner.client import Address
from cluster.runner.kind import Kind, start_servers
from cluster.runner.place import Place
from cluster.runner.processes import LIMIT, ClusterError
from cluster.runner.proxy import Proxy
from cluster.runner.server import Server


class Replicas(Kind):
    """Maps are written to the primary "db1"; readers come in by HAProxy, which leads them to "db2" and "db3"."""

    def __init__(self, place: Place) -> None:
        super().__init__(place)
        self.primary = Server(place, "db1", ["replicas/primary.cnf"], {})
        self.replicas = [
            Server(place, f"db{number}", ["replicas/replica.cnf"], {"server-id": str(number)})
            for number in (2, 3)
        ]
        self.proxy = Proxy(place, "replicas/haproxy.cfg", self.servers)

    @property
    def servers(self) -> dict[str, Server]:
        return {server.name: server for server in (self.primary, *self.replicas)}

    @property
    def writer(self) -> Server:
        return self.primary

    @property
    def map_options(self) -> list[str]:
        return ["--cluster", "replicas"]

    @property
    def address(self) -> Address:
        return self.proxy.address

    def start(self) -> None:
        start_servers([self.primary, *self.replicas])
        self.primary.script(self.place.text("users.sql") + self.place.text("replicas/users.sql"))
        master = {"PRIMARY_HOST": "127.0.0.1", "PRIMARY_PORT": str(self.primary.port)}
        for replica in self.replicas:
            replica.script(self.place.text("replicas/replica.sql", **master))
        self.wait_copied()
        self.proxy.start()

    def check(self) -> None:
        self.proxy.check()

    def publish(self, name: str) -> None:
        self.primary.script(self.place.text("reader.sql", MAP=name))
        self.wait_copied()
        self.wait_readable(name, self.address)

    def wait_copied(self) -> None:
        """Returns when the replicas have all that the primary has. Raises ClusterError."""
        position = self.primary.value("SELECT @@gtid_binlog_pos")
        for replica in self.replicas:
            if replica.value(f"SELECT MASTER_GTID_WAIT('{position}', {LIMIT})") != "0":
                raise ClusterError(f"{replica.name} doesn't copy the primary")
