# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""Documents on two shards behind a head with the engine SPIDER."""

from collections.abc import Callable
from typing import NamedTuple

import pytest

from mapmaker import driver, store
from mapmaker.shards import Shards, shards
from mapmaker.tests.maps import DOCUMENTS, NAMES, READER, ask, marked, marks, put, watched, whole
from mapmaker.tests.privateserver import PASSWORD, USER, PrivateServer, free_port, spider_options

BATCHED = [
    "--optimizer-switch=mrr=on,mrr_sort_keys=on",
    "--join-cache-level=6",
    "--spider-bka-mode=2",
    "--spider-semi-split-read=0",
    "--spider-multi-split-read=500",
    "--spider-quick-mode=2",
    "--spider-quick-page-size=20",
    "--spider-first-read=501",
    "--join-buffer-size=64K",
]


class Cluster(NamedTuple):
    """A head and two shards, which it knows as b1 and b2."""

    head: PrivateServer
    shards: list[PrivateServer]

    @property
    def environment(self) -> dict[str, str]:
        """The way to the head."""
        return self.head.environment


def known(head: PrivateServer, name: str, place: PrivateServer) -> None:
    """Makes a server known to a head."""
    head.ask(
        f"CREATE OR REPLACE SERVER {name} FOREIGN DATA WRAPPER mysql OPTIONS (HOST 'localhost', "
        f"SOCKET '{place.folder}/socket', USER '{USER}', PASSWORD '{PASSWORD}')"
    )


@pytest.fixture(scope="module")
def cluster(servers: Callable[..., PrivateServer]) -> Cluster:
    """Running servers without a map."""
    made = Cluster(servers("head", *spider_options(), *BATCHED), [servers("b1"), servers("b2")])
    for number, shard in enumerate(made.shards, 1):
        known(made.head, f"b{number}", shard)
    return made


def put_in_shards(cluster: Cluster, mark: int, straight: bool = True, servers: str = "b1,b2") -> None:
    """Stores a marked map."""
    with store.connection(cluster.environment) as link:
        with shards(link, servers.split(","), straight, cluster.environment) as home:
            store.fill(link, NAMES, marked(mark), home=home)
            store.swap(link, NAMES.tables())


@pytest.mark.parametrize("straight", [True, False])
def test_the_head_gives_what_one_server_would(
    cluster: Cluster, server: dict[str, str], straight: bool
) -> None:
    put(server, marked(7))
    put_in_shards(cluster, 7, straight)
    for statement in (READER.replace("date", "document.date, id"), "SELECT * FROM notes_som"):
        assert ask(cluster.environment, statement) == ask(server, statement)


@pytest.mark.parametrize("straight", [True, False])
def test_each_document_lies_where_the_head_looks_for_it(cluster: Cluster, straight: bool) -> None:
    put_in_shards(cluster, 2, straight)
    found = [
        ask(cluster.environment, f"SELECT author FROM texts.document WHERE id={i}") for i in range(DOCUMENTS)
    ]
    assert found == [[(str(number),)] for number in range(DOCUMENTS)]
    assert tables(cluster.head) == ["document"]
    for number, shard in enumerate(cluster.shards):
        table = max(tables(shard), key=lambda name: int(name.split("__")[1]))
        assert shard.ask(f"SELECT COUNT(*), MIN(id MOD 2), MAX(id MOD 2) FROM texts.{table}") == [
            (DOCUMENTS // 2, number, number)
        ]


def tables(server: PrivateServer) -> list[str]:
    """Names of the tables in the documents' database."""
    return sorted(name for (name,) in server.ask("SHOW TABLES FROM texts"))


def test_a_node_s_documents_come_in_batches(cluster: Cluster) -> None:
    put_in_shards(cluster, 3)
    plan = ask(cluster.environment, "EXPLAIN " + READER)
    assert [row[2] for row in plan] == ["notes_train", "document"]
    assert "BKA join" in plan[1][-1]


def test_a_reader_sees_the_old_map_or_the_new_one(cluster: Cluster) -> None:
    put_in_shards(cluster, 0)
    with watched(cluster.environment) as seen:
        for mark in range(1, 8):
            put_in_shards(cluster, mark)
    assert len(set(seen)) > 2
    assert set(seen) <= {whole(mark) for mark in range(8)}


def test_the_map_before_stays_on_the_shards_until_the_next_one(cluster: Cluster) -> None:
    for mark in (1, 2, 3):
        put_in_shards(cluster, mark)
    for shard in cluster.shards:
        titles = [shard.ask(f"SELECT DISTINCT title FROM texts.{name}") for name in tables(shard)]
        assert sorted(titles) == [[("2",)], [("3",)]]


def test_a_run_that_breaks_off_leaves_the_old_map(cluster: Cluster) -> None:
    put_in_shards(cluster, 1)
    for _ in range(2):
        with store.connection(cluster.environment) as link:
            with shards(link, ["b1", "b2"], True, cluster.environment) as home:
                store.fill(link, NAMES, marked(2), home=home)
    assert marks(ask(cluster.environment, READER)) == {(1.0, "1")}
    put_in_shards(cluster, 3)
    assert marks(ask(cluster.environment, READER)) == {(3.0, "3")}
    assert all(len(tables(shard)) == 2 for shard in cluster.shards)


def test_another_number_of_shards_is_a_new_map(cluster: Cluster) -> None:
    put_in_shards(cluster, 1)
    put_in_shards(cluster, 2, servers="b2")
    assert whole(2) == (len(rows := ask(cluster.environment, READER)), frozenset(marks(rows)))
    put_in_shards(cluster, 3, servers="b2,b1")
    assert whole(3) == (len(rows := ask(cluster.environment, READER)), frozenset(marks(rows)))


@pytest.mark.parametrize(
    "names, line",
    [
        ("b1,b3", "no CREATE SERVER has been made for b3"),
        ("b1,b1", "the server b1 is named twice"),
        ("b1,again", "two of the servers have one address: each document would be found twice"),
        ("b1,b 2", "bad server name 'b 2': only A-Z, a-z, 0-9 and _"),
        ("b1,", "bad server name '': only A-Z, a-z, 0-9 and _"),
    ],
)
def test_bad_servers_are_one_line(cluster: Cluster, names: str, line: str) -> None:
    known(cluster.head, "again", cluster.shards[0])
    with pytest.raises(store.StoreError) as caught:
        put_in_shards(cluster, 1, servers=names)
    assert str(caught.value) == line


def test_a_shard_that_is_down_is_named(cluster: Cluster) -> None:
    cluster.head.ask(
        "CREATE OR REPLACE SERVER down FOREIGN DATA WRAPPER mysql OPTIONS (HOST 'localhost', SOCKET '/nowhere')"
    )
    with pytest.raises(store.StoreError, match="^no connection to the shard down: [^\n]*$"):
        put_in_shards(cluster, 1, servers="b1,down")


def test_a_shard_that_refuses_is_named(cluster: Cluster) -> None:
    broken = Shards({"b1": driver.connect(**store.settings(cluster.shards[0].environment))}, True)
    broken.table = "texts.absent"
    with pytest.raises(store.StoreError, match="^the shard b1 refuses: [^\n]*absent[^\n]*$"):
        broken.write(None, "", [(0, 1)])
    broken.links["b1"].close()


def test_a_server_without_the_engine_is_one_line(cluster: Cluster) -> None:
    with pytest.raises(store.StoreError, match="^the server has no engine SPIDER: start it with [^\n]*$"):
        put_in_shards(cluster._replace(head=cluster.shards[0]), 1)


@pytest.fixture(scope="module")
def heads(cluster: Cluster, servers: Callable[..., PrivateServer]) -> tuple[Cluster, PrivateServer]:
    """The shards behind a head with a binary log, and a second head that is its replica."""
    first = servers("first", *spider_options(), "--log-bin=log", "--server-id=1", port=free_port())
    second = servers("second", *spider_options(), "--server-id=2", "--read-only", port=free_port())
    for head in (first, second):
        for number, shard in enumerate(cluster.shards, 1):
            known(head, f"b{number}", shard)
    second.ask(
        f"CHANGE MASTER TO master_host='127.0.0.1', master_port={first.port}, master_user='{USER}',"
        f" master_password='{PASSWORD}', master_use_gtid=slave_pos;\nSTART SLAVE"
    )
    return cluster._replace(head=first), second


def test_no_rows_go_through_a_head_whose_replicas_would_write_them_again(
    heads: tuple[Cluster, PrivateServer]
) -> None:
    with pytest.raises(store.StoreError, match="^the head keeps a binary log, .*: use --load straight$"):
        put_in_shards(heads[0], 1, straight=False)


def test_a_head_s_replica_shows_the_old_map_or_the_new_one(heads: tuple[Cluster, PrivateServer]) -> None:
    cluster, second = heads

    def put_on_both(mark: int) -> None:
        put_in_shards(cluster, mark)
        position = cluster.head.ask("SELECT @@gtid_binlog_pos")[0][0]
        assert second.ask(f"SELECT MASTER_GTID_WAIT('{position}', 30)") == [(0,)]
        assert marks(ask(second.environment, READER)) == {(float(mark), str(mark))}

    put_on_both(0)
    with watched(second.environment) as seen:
        for mark in range(1, 4):
            put_on_both(mark)
    assert set(seen) <= {whole(mark) for mark in range(4)}
