# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""Figures that tell how good a map is."""

import hashlib
from collections.abc import Iterable, Iterator, Sequence

import numpy as np
from scipy.sparse import csr_matrix

from mapmaker.keywords import meetings, pair_npmi
from mapmaker.points import Floats, Ints, Points
from mapmaker.som import Grid, distances, neighbours, scores

COHERENCE_WORDS = 3


def quantization_error(points: Points, models: Floats, units: Ints) -> float:
    """Mean distance of the points (n, d) to the model (u, d) of their unit (n), which is the nearest."""
    total = sum(distances(batch, models, units[place]).sum() for place, batch in points.batches())
    return float(total / len(points))


def topographic_error(points: Points, models: Floats, grid: Grid) -> float:
    """Share of points whose nearest two units don't touch (Kiviluoto 1996)."""
    apart = ~neighbours(grid)
    errors = 0
    for _, batch in points.batches():
        errors += int(apart[nearest_two(scores(batch, models))].sum())
    return errors / len(points)


def nearest_two(far: Floats) -> tuple[Ints, Ints]:
    """Columns of the two smallest values of each row (n, u), which are overwritten; the first wins a tie."""
    rows = np.arange(len(far))
    nearest: Ints = far.argmin(axis=1)
    far[rows, nearest] = np.inf
    return nearest, far.argmin(axis=1)


def empty_units(units: Ints, count: int) -> int:
    """How many of so many units have no document; `units` (n) gives each document's unit."""
    return count - len(np.unique(units))


def first_of_their_kind(counts: Iterable[csr_matrix]) -> Ints:
    """Numbers of the documents whose counts no document before them has."""
    prints = np.fromiter(
        (row_print(batch, row) for batch in counts for row in range(batch.shape[0])), np.uint64
    )
    first: Ints = np.sort(np.unique(prints, return_index=True)[1])
    return first


def row_print(counts: csr_matrix, row: int) -> int:
    """A number of 64 bits that differs, as good as surely, from that of any other row."""
    own = slice(counts.indptr[row], counts.indptr[row + 1])
    content = counts.indices[own].tobytes() + counts.data[own].tobytes()
    return int.from_bytes(hashlib.blake2b(content, digest_size=8).digest(), "little")


def rows_of(counts: Iterable[csr_matrix], documents: Ints) -> Iterator[csr_matrix]:
    """Of counts in batches only the rows of the given documents, in ascending order."""
    start = 0
    for batch in counts:
        first, last = np.searchsorted(documents, (start, start + batch.shape[0]))
        yield batch[documents[first:last] - start]
        start += batch.shape[0]


def coherence(words: Sequence[str], counts: Iterable[csr_matrix], keywords: Sequence[Sequence[str]]) -> float:
    """Mean NPMI of the pairs among the first three keywords of each node that has as many.

    Parameters: the words (m), counts in batches (b, m) that are read twice, and the keywords of the nodes.
    Copies of a text would fake co-occurrence and count once. Roeder et al. 2015 compare such measures with
    people's judgement.
    """
    place = {word: column for column, word in enumerate(words)}
    groups = [[place[word] for word in chosen[:COHERENCE_WORDS]] for chosen in keywords]
    columns = [np.array(group) for group in groups if len(group) == COHERENCE_WORDS]
    documents = first_of_their_kind(counts)
    pairs = np.triu_indices(COHERENCE_WORDS, 1)
    means = [
        pair_npmi(together, len(documents))[pairs].mean()
        for together in meetings(rows_of(counts, documents), columns)
    ]
    return float(np.mean(means)) if means else 0.0


def unique_first(keywords: Sequence[Sequence[str]]) -> float:
    """Share of nodes whose first keyword is the first of no other node; nodes without keywords don't count up."""
    first = [chosen[0] for chosen in keywords if chosen]
    single = sum(first.count(word) == 1 for word in first)
    return single / len(keywords) if keywords else 0.0
