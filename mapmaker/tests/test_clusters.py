# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""A map on a primary with a replica, and on a node of a cluster; options that make no sense."""

from collections.abc import Callable
from typing import NamedTuple

import pytest

from mapmaker import cli, clusters, options, store
from mapmaker.tests.maps import NAMES, READER, ask, marked, marks, put, watched, whole
from mapmaker.tests.privateserver import PASSWORD, USER, PrivateServer, free_port, galera_options

PORT_CLOSED = 1
DEADLOCK = 1213


class Pair(NamedTuple):
    """A primary, and its replica, which is read-only."""

    primary: PrivateServer
    replica: PrivateServer


@pytest.fixture(scope="module")
def pair(servers: Callable[..., PrivateServer]) -> Pair:
    """Running servers; the replica follows."""
    primary = servers("primary", "--log-bin=log", "--server-id=1", port=free_port())
    replica = servers("replica", "--server-id=2", "--read-only", "--log-bin=log", port=free_port())
    replica.ask(
        f"CHANGE MASTER TO master_host='127.0.0.1', master_port={primary.port}, master_user='{USER}',"
        f" master_password='{PASSWORD}', master_use_gtid=slave_pos;\nSTART SLAVE"
    )
    return Pair(primary, replica)


@pytest.fixture(scope="module")
def node(servers: Callable[..., PrivateServer]) -> PrivateServer:
    """A cluster of one node."""
    return servers("node", *galera_options(), port=free_port())


def check_kind(server: dict[str, str], *arguments: str) -> None:
    """Looks whether the server is of a kind."""
    chosen = options.parser().parse_args(["sample", *arguments])
    with store.connection(server) as link, clusters.home(link, chosen, NAMES, server):
        pass


def store_and_wait(server: dict[str, str], mark: int, kind: str, *places: tuple[str, int]) -> list[str]:
    """Stores a marked map; tells who hasn't got it."""
    put(server, marked(mark))
    with store.connection(server) as link:
        store.fill(link, NAMES, marked(mark))
        store.swap(link, NAMES.tables())
        return clusters.late(link, kind, places, NAMES.tables()[2], server)


def test_a_replica_has_the_map_at_the_end(pair: Pair) -> None:
    check_kind(pair.primary.environment, "--cluster", "replicas")
    for mark in (1, 2):
        place = ("127.0.0.1", pair.replica.port)
        assert store_and_wait(pair.primary.environment, mark, "replicas", place) == []
        assert marks(ask(pair.replica.environment, READER)) == {(float(mark), str(mark))}


def test_a_replica_that_stands_still_is_named(pair: Pair, monkeypatch: pytest.MonkeyPatch) -> None:
    pair.replica.ask("STOP SLAVE SQL_THREAD")
    monkeypatch.setattr(store, "SECONDS_TO_WAIT", 1)
    place = ("127.0.0.1", pair.replica.port)
    late = store_and_wait(pair.primary.environment, 3, "replicas", place, ("127.0.0.1", PORT_CLOSED))
    assert late[0] == f"127.0.0.1:{pair.replica.port} hasn't got the map after 1 s"
    assert late[1].startswith("no connection to 127.0.0.1:1: ")
    pair.replica.ask("START SLAVE SQL_THREAD")


def test_a_replica_s_reader_sees_the_old_map_or_the_new_one(pair: Pair) -> None:
    place = ("127.0.0.1", pair.replica.port)
    store_and_wait(pair.primary.environment, 0, "replicas", place)
    with watched(pair.replica.environment) as seen:
        for mark in range(1, 5):
            assert store_and_wait(pair.primary.environment, mark, "replicas", place) == []
    assert set(seen) <= {whole(mark) for mark in range(5)}


def test_only_a_primary_is_written_to(pair: Pair, server: dict[str, str]) -> None:
    with pytest.raises(
        store.StoreError, match="^this server is read-only, .*: name the primary in MYSQL_HOST$"
    ):
        check_kind(pair.replica.environment, "--cluster", "replicas")
    with pytest.raises(store.StoreError, match="^this server keeps no binary log, [^\n]*$"):
        check_kind(server, "--cluster", "replicas")


def test_a_node_takes_a_map(node: PrivateServer) -> None:
    check_kind(node.environment, "--cluster", "galera")
    place = ("127.0.0.1", node.port)
    assert store_and_wait(node.environment, 1, "galera", place) == []
    assert marks(ask(node.environment, READER)) == {(1.0, "1")}
    assert ask(node.environment, "SELECT node FROM notes_som") == [(0,), (1,), (2,)]


def test_a_node_s_reader_sees_a_whole_map_or_an_error(node: PrivateServer) -> None:
    put(node.environment, marked(0))
    with watched(node.environment) as seen:
        for mark in range(1, 5):
            put(node.environment, marked(mark))
    assert set(seen) <= {DEADLOCK, *(whole(mark) for mark in range(5))}
    assert whole(0) in seen


def test_a_statement_that_runs_at_the_swap_fails_on_a_node(node: PrivateServer) -> None:
    put(node.environment, marked(1))
    with store.connection(node.environment) as link, store.connection(node.environment) as reader:
        store.fill(link, NAMES, marked(2))
        with reader.cursor() as cursor:
            cursor.execute("SELECT 1 FROM som.notes_som")  # the transaction stays open, and holds its table
            store.swap(link, NAMES.tables())
            with pytest.raises(Exception, match="Deadlock"):
                cursor.execute("SELECT 1 FROM som.notes_som")


def test_a_server_without_a_cluster_is_one_line(server: dict[str, str], node: PrivateServer) -> None:
    with pytest.raises(
        store.StoreError, match="^this server is no working node: wsrep_cluster_status is [^\n]*$"
    ):
        check_kind(server, "--cluster", "galera")


@pytest.mark.parametrize(
    "arguments, line",
    [
        ("--cluster head", "--cluster must be replicas, galera or shards"),
        ("--cluster shards", "--cluster shards needs --servers"),
        ("--cluster shards --servers a --load fast", "--load must be straight or head"),
        ("--cluster galera --servers a,b", "--servers belongs to --cluster shards"),
        ("--load head", "--load belongs to --cluster shards"),
        ("--cluster galera --link-ca /a", "--link-ca belongs to --cluster shards"),
        ("--wait-for db1", "--wait-for needs --cluster"),
        ("--cluster galera --wait-for db1:x", "--wait-for: 'db1:x' is no host and port"),
        ("--cluster galera --wait-for db1:65536", "--wait-for: 'db1:65536' is no host and port"),
        ("--cluster galera --wait-for db1,:1", "--wait-for: ':1' is no host and port"),
    ],
)
def test_options_that_make_no_sense_are_one_line(
    monkeypatch: pytest.MonkeyPatch, capsys: pytest.CaptureFixture[str], arguments: str, line: str
) -> None:
    monkeypatch.setenv("MYSQL_HOST", "127.0.0.1")
    monkeypatch.setenv("MYSQL_TCP_PORT", str(PORT_CLOSED))
    assert cli.main(["sample", *arguments.split()]) == 2
    assert capsys.readouterr().err == f"mapmaker: {line}\n"


def test_places_are_hosts_with_or_without_a_port() -> None:
    assert clusters.places("db1,db2:3307,[::1],[::1]:3308") == [
        ("db1", 0),
        ("db2", 3307),
        ("::1", 0),
        ("::1", 3308),
    ]
    assert clusters.places(None) == []


def test_the_command_tells_who_is_late(
    pair: Pair, monkeypatch: pytest.MonkeyPatch, capsys: pytest.CaptureFixture[str]
) -> None:
    for name, value in pair.primary.environment.items():
        monkeypatch.setenv(name, value)
    command = ["sample", "--documents", "60", "--cluster", "replicas", "--wait-for"]
    assert cli.main([*command, f"127.0.0.1:{pair.replica.port}"]) == 0
    assert pair.replica.ask("SELECT COUNT(*) FROM texts.document") == [(60,)]
    capsys.readouterr()
    assert cli.main([*command, f"127.0.0.1:{PORT_CLOSED}"]) == 2
    assert capsys.readouterr().err.startswith(
        "mapmaker: the map is stored, but not everywhere yet: no connection to 127.0.0.1:1: "
    )
