# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""Documents in three shards, behind a Spider head that has the rest."""

from cluster.runner.client import Address
from cluster.runner.head import Head
from cluster.runner.kind import Kind, start_servers
from cluster.runner.place import Place
from cluster.runner.server import Server

SHARDS = ("b1", "b2", "b3")


class Shards(Kind):
    """Maps are written to the head; documents go straight to the shards."""

    def __init__(self, place: Place) -> None:
        super().__init__(place)
        self.head = Head(place, "shards/head.cnf")
        self.shards = {name: Server(place, name, ["shards/shard.cnf"], {}) for name in SHARDS}

    @property
    def servers(self) -> dict[str, Server]:
        return {"head": self.head, **self.shards}

    @property
    def writer(self) -> Server:
        return self.head

    @property
    def map_options(self) -> list[str]:
        return ["--cluster", "shards", "--servers", ",".join(SHARDS)]

    @property
    def address(self) -> Address:
        return self.head.address

    def document_tables(self) -> list[tuple[Server, str, str]]:
        table = f"{self.place.words['TEXTS']}.document__1"  # that of the first map
        shards = enumerate(self.shards.values())
        return [(shard, table, f"seq MOD {len(SHARDS)} = {number}") for number, shard in shards]

    def start(self) -> None:
        start_servers(list(self.servers.values()))
        for shard in self.shards.values():
            shard.script(self.place.text("shards/users.sql"))
        self.head.make_accounts(**{name: shard.address for name, shard in self.shards.items()})

    def publish(self, name: str) -> None:
        self.head.let_read(name)
        self.wait_readable(name, self.address)
