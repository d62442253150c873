# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""What can fail in each kind of cluster, one thing after the other, and how it is put right again."""

from collections.abc import Callable, Iterator
from contextlib import AbstractContextManager, ExitStack, nullcontext

from cluster.proof.data import Sizes
from cluster.proof.scene import NODE, Scene, Sight
from cluster.proof.watcher import Watcher
from cluster.runner.client import Address, QueryError, connected
from cluster.runner.galera import Galera, Node
from cluster.runner.head import Head, HeadBeforeReplicas
from cluster.runner.kind import Kind
from cluster.runner.processes import wait_for
from cluster.runner.replicas import Replicas
from cluster.runner.server import Server
from cluster.runner.shards import Shards

QUORUM = "SET GLOBAL wsrep_provider_options = 'pc.bootstrap = 1'"


class Stage:
    """A scene on a cluster, with somebody else who reads all the time."""

    def __init__(self, scene: Scene, kind: Kind, watcher: Watcher, sizes: Sizes, short: bool) -> None:
        self.scene, self.kind, self.watcher, self.sizes, self.short = scene, kind, watcher, sizes, short

    def alone(self) -> AbstractContextManager[None]:
        """The window gets the same connections again where others could get them: a head has them in common."""
        return self.watcher.paused() if isinstance(self.kind, HeadBeforeReplicas) else nullcontext()

    def see_serving(self, fault: str, strike: Callable[[Server], object]) -> tuple[Server, Sight]:
        """Lets something happen to the server that carries out the window's statements."""
        with self.alone():
            server = self.serving()
            return server, self.scene.see(fault, lambda: strike(server))

    def see(self, fault: str, strike: Callable[[], object]) -> Sight:
        with self.alone():
            self.scene.window.look(NODE)
            return self.scene.see(fault, strike)

    def serving(self) -> Server:
        """The server that carries out the window's statements."""
        servers = [server for server in self.kind.servers.values() if not isinstance(server, Head)]
        more: dict[Server, int] = {}
        with self.watcher.paused():
            before = [selects(server) for server in servers]
            self.scene.window.look(NODE)
            more.update((server, selects(server) - count) for server, count in zip(servers, before))
        return max(more, key=lambda server: more[server])

    def see_while_answering(self) -> tuple[Server, Sight]:
        with self.alone():
            server, size = self.serving(), self.sizes.nodes[-1]
            fault = "a node is killed while it answers"
            return server, self.scene.see_during_answer(fault, self.sizes.large, size, server.kill)

    def wait_used(self, address: Address, server: Server) -> None:
        """Returns when HAProxy leads readers to a server."""
        wait_for(f"{server.name} is used again", lambda: str(server.port) in self._ports(address))

    def _ports(self, address: Address) -> list[str]:
        """The servers that as many connections as there are servers are led to."""
        try:
            with ExitStack() as stack:
                opened = [connected(address, self.kind.place.reader) for _ in self.kind.servers]
                clients = [stack.enter_context(connection) for connection in opened]
                return [client.value("SELECT @@port") for client in clients]
        except QueryError:
            pass
        return []


def selects(server: Server) -> int:
    with server.client() as client:
        return int(client.rows("SHOW GLOBAL STATUS LIKE 'Com_select'")[0][1] or b"0")


def restart(server: Server) -> None:
    server.kill()
    server.start()
    server.wait_ready()


def replicas(stage: Stage, kind: Replicas) -> Iterator[Sight]:
    """A replica dies, hangs and comes back; HAProxy and the primary fail."""

    def come_back(node: Server) -> None:
        restart(node)
        kind.wait_copied()
        stage.wait_used(kind.proxy.address, node)

    node, sight = stage.see_serving("a node is killed", Server.kill)
    yield sight
    yield stage.see("it comes back", lambda: come_back(node))
    if stage.short:
        return
    node, sight = stage.see_while_answering()
    yield sight
    come_back(node)
    node, sight = stage.see_serving("a node hangs", Server.stop)
    yield sight
    node.go_on()
    stage.wait_used(kind.proxy.address, node)
    yield stage.see("HAProxy is restarted", kind.proxy.restart)
    yield stage.see("HAProxy is reloaded", kind.proxy.reload)
    yield stage.see("the primary is killed", kind.primary.kill)
    restart(kind.primary)


def before_replicas(stage: Stage, kind: HeadBeforeReplicas) -> Iterator[Sight]:
    """As without a head; and the head itself fails."""
    yield from replicas(stage, kind)
    yield stage.see("the head is restarted", lambda: restart(kind.head))


def galera(stage: Stage, kind: Galera) -> Iterator[Sight]:
    """A node dies, hangs and comes back; HAProxy fails; the majority is lost."""

    def come_back(server: Server) -> None:
        node = as_node(server)
        node.join(*(other for other in kind.nodes if other is not node))
        node.wait_ready()
        node.wait_synced()
        stage.wait_used(kind.address, node)

    server, sight = stage.see_serving("a node is killed", Server.kill)
    yield sight
    if stage.short:
        return
    yield stage.see("it comes back", lambda: come_back(server))
    server, sight = stage.see_while_answering()
    yield sight
    come_back(server)
    server, sight = stage.see_serving("a node hangs", Server.stop)
    yield sight
    server.go_on()
    as_node(server).wait_synced()
    stage.wait_used(kind.address, server)
    yield stage.see("HAProxy is restarted", kind.proxy.restart)
    yield stage.see("HAProxy is reloaded", kind.proxy.reload)
    yield from without_majority(stage, kind)


def without_majority(stage: Stage, kind: Galera) -> Iterator[Sight]:
    """Two of three nodes die, first the others than the window's; then they come back."""
    last = as_node(stage.serving())
    others = [node for node in kind.nodes if node is not last]

    def kill_others() -> None:
        for node in others:
            node.kill()
        wait_for("the majority is lost", lambda: last.state() not in ("Synced", ""))

    def come_back() -> None:
        last.value(QUORUM)
        for node in others:
            node.join(last)
        for node in others:
            node.wait_ready()
            node.wait_synced()

    def open_anew() -> None:
        stage.scene.window.close()
        stage.scene.window.open()

    yield stage.see("the majority is lost", kill_others)
    yield stage.see("a new window without majority", open_anew)
    yield stage.see("the majority is back", come_back)


def as_node(server: Server) -> Node:
    assert isinstance(server, Node)
    return server


def shards(stage: Stage, kind: Shards) -> Iterator[Sight]:
    """A shard dies, hangs and comes back; the head fails."""
    scene, shard = stage.scene, kind.shards["b2"]
    yield scene.see_until_repair("a shard is killed", shard.kill, lambda: restart(shard))
    if stage.short:
        return
    yield scene.see_until_repair("a shard hangs", shard.stop, shard.go_on)
    yield stage.see("the head is restarted", lambda: restart(kind.head))


def faults(stage: Stage) -> Iterator[Sight]:
    """All faults of the stage's cluster."""
    match stage.kind:
        case HeadBeforeReplicas():
            yield from before_replicas(stage, stage.kind)
        case Replicas():
            yield from replicas(stage, stage.kind)
        case Galera():
            yield from galera(stage, stage.kind)
        case Shards():
            yield from shards(stage, stage.kind)
