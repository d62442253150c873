# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""Whether the window's statements give the same on a cluster as on one server, and how much longer they take."""

import time
from collections.abc import Iterator, Sequence
from typing import NamedTuple

from bench.runner.ratios import in_turn
from cluster.proof.data import DAY, KEYWORD_QUERY, PROBE, Sizes, selection
from cluster.runner.client import Client, Row

DATE = 3  # column of a selection: node, dist, id, date, ...
SAME, TIES, ANOTHER_ROW, DIFFERENT = "same", "same, ties in another order", "another row", "DIFFERENT"


class Times(NamedTuple):
    """Seconds of a statement on one server and on a cluster."""

    plain: float
    other: float

    @property
    def ratio(self) -> float:
        return self.other / self.plain


class Finding(NamedTuple):
    """A statement: whether its result was the same, its times, and their wanted ratio, if any."""

    statement: str
    outcome: str
    times: Times
    goal: float | None = None


def compare_ordered(plain: Sequence[Row], other: Sequence[Row]) -> str:
    """Results whose whole order counts."""
    return SAME if list(plain) == list(other) else DIFFERENT


def compare_by_date(plain: Sequence[Row], other: Sequence[Row]) -> str:
    """Results in order of date, in which rows of the same date may stand in any order."""
    if list(plain) == list(other):
        return SAME
    same_rows = sorted(map(repr, plain)) == sorted(map(repr, other))
    same_dates = [row[DATE] for row in plain] == [row[DATE] for row in other]
    return TIES if same_rows and same_dates else DIFFERENT


def compare_probe(plain: Client, other: Client) -> str:
    """The statement without a condition: the window takes the names of its columns and shows its one row."""
    rows = [client.rows(PROBE) for client in (plain, other)]
    if plain.columns(PROBE) != other.columns(PROBE) or len(rows[0]) != len(rows[1]):
        return DIFFERENT
    return SAME if rows[0] == rows[1] else ANOTHER_ROW


def seconds(client: Client, statement: str) -> float:
    start = time.perf_counter()
    client.store(statement)
    return time.perf_counter() - start


def times(plain: Client, other: Client, statement: str, rounds: int) -> Times:
    """Each side's shortest time over rounds in which both take turns: other work of the machine only adds to it."""
    sides = (plain, other)
    taken: tuple[list[float], list[float]] = ([], [])
    for client in sides:
        client.store(statement)  # what is read for the first time comes from disk
    for number in range(rounds):
        for side in in_turn((0, 1), number):
            taken[side].append(seconds(sides[side], statement))
    return Times(min(taken[0]), min(taken[1]))


def findings(plain: Client, other: Client, sizes: Sizes, rounds: int, goal: float) -> Iterator[Finding]:
    """All statements, one after the other. Both clients are in the map's database."""
    yield Finding("1: columns", compare_probe(plain, other), times(plain, other, PROBE, rounds))
    for node, size in enumerate(sizes.nodes, 1):
        text = selection(node)
        outcome = compare_by_date(plain.rows(text), other.rows(text))
        wanted = goal if size == 10_000 else None
        yield Finding(f"2: {size:,} documents", outcome, times(plain, other, text, rounds), wanted)
    text = selection(sizes.large, DAY)
    outcome = compare_by_date(plain.rows(text), other.rows(text))
    yield Finding("2: of one day", outcome, times(plain, other, text, rounds))
    outcome = compare_ordered(plain.rows(KEYWORD_QUERY), other.rows(KEYWORD_QUERY))
    yield Finding("3: keywords", outcome, times(plain, other, KEYWORD_QUERY, rounds))
