# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""A Spider head: a server whose tables lie on others."""

from cluster.runner.client import Address
from cluster.runner.place import Place
from cluster.runner.replicas import Replicas
from cluster.runner.server import Server

LOCAL = "localhost"


class Head(Server):
    """Readers come in by its Unix socket; it knows other servers by names."""

    def __init__(self, place: Place, configuration: str) -> None:
        library = place.program("ha_spider.so")
        super().__init__(place, "head", [configuration], {"plugin-dir": str(library.parent)})

    @property
    def address(self) -> Address:
        return Address(socket=self.socket)

    def make_accounts(self, **servers: Address) -> None:
        """The accounts, and the servers behind the head."""
        text = self.place.text("head/users.sql", CLIENTS=LOCAL)
        for name, address in servers.items():
            words = {"SERVER": name, "CLUSTER_HOST": "127.0.0.1", "CLUSTER_PORT": str(address.port)}
            text += self.place.text("head/servers.sql", **words)
        self.script(text)

    def let_read(self, name: str) -> None:
        """Gives the reader rights on a map."""
        self.script(self.place.text("reader.sql", MAP=name, CLIENTS=LOCAL))


class HeadBeforeReplicas(Replicas):
    """A head without rows, before HAProxy with replicas; maps are written to the primary."""

    def __init__(self, place: Place) -> None:
        self.head = Head(place, "head/head.cnf")
        super().__init__(place)

    @property
    def servers(self) -> dict[str, Server]:
        return {**super().servers, "head": self.head}

    @property
    def address(self) -> Address:
        return self.head.address

    def start(self) -> None:
        self.head.start()
        super().start()
        self.head.wait_ready()
        self.head.make_accounts(cluster=self.proxy.address)

    def check(self) -> None:
        self.proxy.check()

    def publish(self, name: str) -> None:
        self.primary.script(self.place.text("reader.sql", MAP=name))
        self.wait_copied()
        self.wait_readable(name, self.proxy.address)
        self.run_mapmaker(self.head, ["head", f"{name}_train", "--server", "cluster"])
        self.head.let_read(name)
        self.wait_readable(name, self.address)
