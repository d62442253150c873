# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""What the window's statements ask of shards: neither more rows nor more statements than it takes."""

from collections.abc import Callable, Iterator
from pathlib import Path

import pytest

from cluster.proof.data import PROBE, SHORT, load, selection
from cluster.runner.client import Client, connected
from cluster.runner.keeping import kept
from cluster.runner.shards import SHARDS, Shards

LOT = 500  # keys that go along in one statement
FEW = 10  # rows of other statements: the count itself, and what the head asks about its tables
DOCUMENTS_FIRST = PROBE.replace("prove_train, texts.document", "texts.document STRAIGHT_JOIN prove_train")


@pytest.fixture
def shards(open_folder: Path, need_clusters: None) -> Iterator[Shards]:
    """A cluster with more documents in each shard than a lot has."""
    with kept(open_folder / "shards") as place:
        cluster = Shards(place)
        cluster.start()
        load(cluster, SHORT)
        yield cluster


@pytest.fixture
def reader(shards: Shards) -> Iterator[Client]:
    """The window's user, in the map's database."""
    with connected(shards.address, shards.place.reader, "som") as client:
        yield client


def more(shards: Shards, counter: str, act: Callable[[], object]) -> list[int]:
    """By how much a counter of each shard grows."""

    def counts() -> list[int]:
        statement = (
            f"SELECT variable_value FROM information_schema.GLOBAL_STATUS WHERE variable_name = '{counter}'"
        )
        return [int(shard.value(statement)) for shard in shards.shards.values()]

    before = counts()
    act()
    return [after - count for after, count in zip(counts(), before)]


@pytest.mark.parametrize("statement", [PROBE, DOCUMENTS_FIRST])
def test_a_new_window_has_no_shard_send_all_its_documents(
    shards: Shards, reader: Client, statement: str
) -> None:
    assert SHORT.total / len(SHARDS) > LOT + FEW
    sent = more(shards, "ROWS_SENT", lambda: reader.rows(statement))
    assert 0 < sum(sent) <= LOT + 1 + FEW, sent


def test_a_node_takes_one_statement_for_each_lot(shards: Shards, reader: Client) -> None:
    size = SHORT.nodes[-1]
    own = 1  # the count's own statement
    rows: list[int] = []
    asked = more(shards, "COM_SELECT", lambda: rows.append(len(reader.rows(selection(SHORT.large)))))
    assert rows == [size]
    assert [count - own for count in asked] == [-(-size // len(SHARDS) // LOT)] * len(SHARDS)
