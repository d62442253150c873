# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""Memory follows the size of the batches, not that of the collection; and the map is the same with any size."""

import resource
import sqlite3
import tracemalloc
import weakref
from collections.abc import Iterator
from pathlib import Path

import numpy as np
import pytest
from scipy.sparse import csr_matrix

from mapmaker import cli, keywords, mapping, projection, som, spool, store, vectors
from mapmaker.progress import silent
from mapmaker.sources import copies, sample
from mapmaker.sources.document import Document, SourceError
from mapmaker.spool import Spool, batched, spooled
from mapmaker.tests.conftest import document

BATCH = 100
GRID = som.Grid(6, 5)
QUICK = som.Schedule(passes=3, full_passes=2)


class Kept:
    """An object that can be watched: how many of its kind are alive."""

    alive: "weakref.WeakSet[Kept]" = weakref.WeakSet()

    def __init__(self, number: int) -> None:
        self.number = number
        Kept.alive.add(self)

    def __setstate__(self, state: dict[str, int]) -> None:
        self.__dict__.update(state)
        Kept.alive.add(self)


def collection(documents: int, batch: int) -> Spool[list[Document]]:
    """Invented texts in batches."""
    return spooled(sample.make(documents, np.random.default_rng(2), "/doc"), batch)[0]


def whole_map(
    texts: Spool[list[Document]], batch: int
) -> tuple[list[list[mapping.Row]], list[list[str]], dict[str, float]]:
    """Rows, keywords and quality of a map on a grid that doesn't grow."""
    rng = np.random.default_rng(1)
    made = mapping.vectors(texts, rng, batch)
    models = som.train(made.points, GRID, rng, QUICK)
    trained = mapping.SOM(GRID, models, som.assign(made.points, models))
    nodes = mapping.tree(made.points, trained)
    chosen = keywords.node_keywords(made.words, made.counts, trained.units, nodes)
    rows = list(mapping.memberships(made.points, trained, nodes, 50))
    return rows, chosen, mapping.figures(made, trained, chosen)


def peak_memory(documents: int) -> int:
    """Bytes that the steps of a map have in use at most, without its rows."""
    texts = collection(documents, BATCH)
    tracemalloc.start()
    try:
        whole_map(texts, BATCH)
        return tracemalloc.get_traced_memory()[1]
    finally:
        tracemalloc.stop()


def test_four_times_the_documents_take_hardly_more_memory(monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.setattr(mapping, "memberships", lambda *_: ())
    peak_memory(300)  # loads what is loaded once
    assert peak_memory(3000) < 1.25 * peak_memory(750)


def test_the_map_is_the_same_with_any_size_of_batch() -> None:
    rows, words, figures = whole_map(collection(1000, 1000), 1000)
    other_rows, other_words, other_figures = whole_map(collection(1000, 83), 83)
    assert sorted(row for batch in rows for row in batch) == sorted(
        row for batch in other_rows for row in batch
    )
    assert words == other_words
    assert figures == pytest.approx(other_figures, rel=1e-12)


def test_a_spool_holds_one_batch_at_a_time() -> None:
    kept, number = spooled((Kept(number) for number in range(1000)), 50)
    assert (number, len(kept)) == (1000, 20)
    most = 0
    for batch in kept:
        most = max(most, len(Kept.alive))
        assert len(batch) == 50
    assert most <= 100  # one batch, and the one before while its name is being given away


def resident() -> int:
    """Bytes of this process that are in memory."""
    return int(Path("/proc/self/statm").read_text(encoding="ascii").split()[1]) * resource.getpagesize()


def test_documents_are_sorted_and_made_unique_without_holding_them() -> None:
    size, number = 10_000, 10_000

    def entries() -> Iterator[copies.Entry]:
        for place in range(number):
            note = document(f"t{place % 9000:04}", f"{place}" + "x" * size, day=1 + place % 28)
            yield copies.Entry("source", str(place % 9000), "source", note)

    before = most = resident()
    titles = []
    for note in copies.unique(entries()):
        titles.append((note.date, note.title))
        most = max(most, resident())
    assert len(titles) == 9000
    assert titles == sorted(titles)
    assert most - before < size * number / 4


def test_a_disk_that_is_too_full_to_sort_is_one_line(monkeypatch: pytest.MonkeyPatch) -> None:
    def small(place: str) -> sqlite3.Connection:
        table = real(place)
        table.execute("PRAGMA max_page_count = 3")
        return table

    real = sqlite3.connect
    monkeypatch.setattr(sqlite3, "connect", small)
    notes = [copies.Entry("a", str(number), "a", document("t", "x" * 5000)) for number in range(9)]
    with pytest.raises(SourceError, match="^the documents cannot be sorted: database or disk is full$"):
        list(copies.unique(notes))


class Text(str):
    """A text that can be watched."""


def test_words_are_counted_without_holding_the_texts() -> None:
    alive: weakref.WeakSet[Text] = weakref.WeakSet()
    most = 0

    def batches() -> Iterator[list[Text]]:
        nonlocal most
        for number in range(20):
            batch = [Text(f"same word{number * 10 + place} other{place}") for place in range(10)]
            alive.update(batch)
            most = max(most, len(alive))
            yield batch

    made = vectors.count_words(batches(), 5, 0.5)
    assert (made.documents, len(made.words)) == (200, 10)
    assert most <= 20


def test_a_batch_is_stored_before_the_next_one_is_made() -> None:
    made = 0

    def batches() -> Iterator[list[Document]]:
        nonlocal made
        for number in range(5):
            made += 1
            yield [document(f"{number}")]

    content = store.Content(batches(), iter([[(0, 0.5, 0)], [(0, 0.5, 1)]]), [(0, "a")])
    seen = [(table, rows[0][0], made) for table, rows in store.batches(content, silent)]
    assert seen == [(0, number, number + 1) for number in range(5)] + [(1, 0, 5), (1, 0, 5), (2, 0, 5)]


def test_sums_over_batches_have_the_same_last_bit() -> None:
    rng = np.random.default_rng(3)
    rows = csr_matrix(rng.random((500, 40)))
    directions = rng.random((40, 7))
    products = [
        projection.gram_product(lambda: (rows[i : i + size] for i in range(0, 500, size)), directions)
        for size in (500, 77, 1)
    ]
    assert products[0] == pytest.approx(rows.T @ (rows @ directions))
    assert products[0].tobytes() == products[1].tobytes() == products[2].tobytes()


def test_several_loops_read_a_spool_at_once() -> None:
    numbers = Spool(range(4))
    assert [(a, b) for a in numbers for b in numbers] == [(a, b) for a in range(4) for b in range(4)]


def test_a_spool_can_grow_while_it_is_read() -> None:
    numbers = Spool([1, 2])
    for number in numbers:
        if number == 1:
            numbers.append(3)
    assert list(numbers) == [1, 2, 3]


def test_batches_keep_order_and_are_full_but_the_last() -> None:
    assert list(batched(iter(range(7)), 3)) == [[0, 1, 2], [3, 4, 5], [6]]
    assert list(batched((), 3)) == []


def test_a_full_disk_is_one_line(
    server: dict[str, str], monkeypatch: pytest.MonkeyPatch, capsys: pytest.CaptureFixture[str]
) -> None:
    for name, value in server.items():
        monkeypatch.setenv(name, value)
    monkeypatch.setattr(spool, "TemporaryFile", lambda prefix: open("/dev/full", "w+b"))
    assert cli.main(["sample", "--documents", "300"]) == 2
    assert capsys.readouterr().err == "mapmaker: temporary files: No space left on device\n"


def test_the_files_are_gone_at_the_end(tmp_path: Path, monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.setenv("TMPDIR", str(tmp_path))
    monkeypatch.setattr("tempfile.tempdir", None)
    numbers = Spool(range(4))
    assert list(tmp_path.iterdir()) == []
    assert list(numbers) == [0, 1, 2, 3]
