# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""Figures that tell how good a map is."""

from collections.abc import Sequence

import numpy as np
from scipy.sparse import csr_matrix

from mapmaker.keywords import pair_npmi
from mapmaker.som import Grid, distances, neighbours, scores, winners
from mapmaker.vectors import Floats

COHERENCE_WORDS = 3


def quantization_error(points: Floats, models: Floats) -> float:
    """Mean distance of the points (n, d) to the nearest model (u, d)."""
    return float(distances(points, models, winners(points, models)).mean())


def topographic_error(points: Floats, models: Floats, grid: Grid) -> float:
    """Share of points whose nearest two units don't touch (Kiviluoto 1996)."""
    nearest = np.argsort(scores(points, models), axis=1, kind="stable")[:, :2]
    return float((~neighbours(grid)[nearest[:, 0], nearest[:, 1]]).mean())


def empty_units(points: Floats, models: Floats) -> int:
    """Number of units that are nearest to no point."""
    return len(models) - len(np.unique(winners(points, models)))


def distinct_rows(counts: csr_matrix) -> csr_matrix:
    """The document-word matrix without repeated rows: copies of a text would fake co-occurrence."""
    first: dict[bytes, int] = {}
    for row in range(counts.shape[0]):
        own = slice(counts.indptr[row], counts.indptr[row + 1])
        first.setdefault(counts.indices[own].tobytes() + counts.data[own].tobytes(), row)
    return counts[sorted(first.values())]


def coherence(words: Sequence[str], counts: csr_matrix, keywords: Sequence[Sequence[str]]) -> float:
    """Mean NPMI of the pairs among the first three keywords of each node that has as many.

    Parameters: the words (m), counts (n, m), and the keywords of the nodes. Roeder et al. 2015 compare
    such measures with people's judgement.
    """
    place = {word: column for column, word in enumerate(words)}
    used = (distinct_rows(counts) > 0).astype(np.float64).tocsc()
    means = []
    for chosen in keywords:
        columns = [place[word] for word in chosen[:COHERENCE_WORDS]]
        if len(columns) == COHERENCE_WORDS:
            bonds = pair_npmi(used[:, columns])
            means.append(bonds[np.triu_indices(COHERENCE_WORDS, 1)].mean())
    return float(np.mean(means)) if means else 0.0


def unique_first(keywords: Sequence[Sequence[str]]) -> float:
    """Share of nodes whose first keyword is the first of no other node; nodes without keywords don't count up."""
    first = [chosen[0] for chosen in keywords if chosen]
    single = sum(first.count(word) == 1 for word in first)
    return single / len(keywords) if keywords else 0.0
