# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""Three Galera nodes, and HAProxy before them."""

from cluster.runner.client import Address, QueryError
from cluster.runner.kind import Kind
from cluster.runner.place import Place
from cluster.runner.processes import wait_for
from cluster.runner.proxy import Proxy
from cluster.runner.server import Server

NODES = ("db1", "db2", "db3")


class Node(Server):
    """A Galera node, which has three ports of its own beside that of the readers."""

    def __init__(self, place: Place, name: str) -> None:
        self.group_port, changes_port, copy_port = (place.ports.take() for _ in range(3))
        options = {
            "wsrep-node-name": name,
            "wsrep-node-address": f"127.0.0.1:{self.group_port}",
            "wsrep-sst-receive-address": f"127.0.0.1:{copy_port}",
            "wsrep-provider": str(place.program("libgalera_smm.so")),
            "wsrep-provider-options": f'"base_port={self.group_port};'
            f"gmcast.listen_addr=tcp://127.0.0.1:{self.group_port};"
            f'ist.recv_addr=127.0.0.1:{changes_port}"',
        }
        super().__init__(place, name, ["galera/node.cnf"], options)
        for script in ("wsrep_sst_rsync", "wsrep_sst_common"):
            place.program(script)

    def join(self, *others: "Node") -> None:
        """Starts the node as one of a cluster; without others it begins a new one."""
        members = ",".join(f"127.0.0.1:{node.group_port}" for node in others)
        first = [] if others else ["--wsrep-new-cluster"]
        if others and not self.data.exists():
            self.data.mkdir()  # it gets its data from another node
            self.place.give(self.data)
        self.start(f"--wsrep-cluster-address=gcomm://{members}", *first)

    def status(self, name: str) -> str:
        """A value of "SHOW STATUS"; empty while the node doesn't answer."""
        try:
            with self.client() as client:
                return (client.rows(f"SHOW STATUS LIKE '{name}'")[0][1] or b"").decode()
        except QueryError:
            return ""

    def state(self) -> str:
        """Such as "Synced"."""
        return self.status("wsrep_local_state_comment")

    def changes(self) -> int:
        """The number of the last change of the cluster that this node has."""
        return int(self.status("wsrep_last_committed"))

    def wait_synced(self) -> None:
        wait_for(f"{self.name} is part of the cluster", lambda: self.state() == "Synced")


class Galera(Kind):
    """Maps are written to "db1"; readers come in by HAProxy, which leads them to any node."""

    def __init__(self, place: Place) -> None:
        super().__init__(place)
        self.nodes = [Node(place, name) for name in NODES]
        self.proxy = Proxy(place, "galera/haproxy.cfg", self.servers)

    @property
    def servers(self) -> dict[str, Server]:
        return {node.name: node for node in self.nodes}

    @property
    def writer(self) -> Server:
        return self.nodes[0]

    @property
    def map_options(self) -> list[str]:
        return ["--cluster", "galera"]

    @property
    def address(self) -> Address:
        return self.proxy.address

    def start(self) -> None:
        first, *others = self.nodes
        first.join()
        first.wait_ready()
        first.script(self.place.text("users.sql"))
        for node in others:
            node.join(first)
        for node in others:
            node.wait_ready()
            node.wait_synced()
        self.proxy.start()

    def check(self) -> None:
        self.proxy.check()

    def publish(self, name: str) -> None:
        self.writer.script(self.place.text("reader.sql", MAP=name))
        written = self.nodes[0].changes()
        for node in self.nodes[1:]:
            wait_for(f"{node.name} has the map", lambda: node.changes() >= written)
        self.wait_readable(name, self.address)
