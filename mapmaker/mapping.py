# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""The whole way from documents to the rows of a map, step by step."""

from collections.abc import Iterable, Iterator, Sequence
from typing import NamedTuple

import numpy as np

from mapmaker import hierarchy, keywords, quality, som
from mapmaker.hierarchy import Node
from mapmaker.points import Floats, Ints, Points
from mapmaker.som import Grid
from mapmaker.sources.document import Document, SourceError
from mapmaker.spool import BATCH
from mapmaker.vectors import Vectors, vectorize

Row = tuple[int, float, int]  # node, distance, document


class SOM(NamedTuple):
    """A trained map of n documents: u units of d dimensions."""

    grid: Grid
    models: Floats  # (u, d)
    units: Ints  # (n,), the unit of each document


class Branch:
    """An inner node and the documents nearest to the mean of all its documents, while they are being read."""

    def __init__(self, node: Node, sums: Floats, number: Floats) -> None:
        """Sums (u, d) and numbers (u, 1) of the documents of all units."""
        self.node = node.number
        self.holds = np.zeros(len(sums), dtype=np.bool_)
        self.holds[node.units] = True
        self.centre = sums[node.units].sum(axis=0) / number[node.units].sum()
        self.gaps = np.empty(0)
        self.items = np.empty(0, dtype=np.int64)

    def see(self, items: Ints, units: Ints, points: Floats, most: int) -> None:
        """Keeps the nearest `most` of those so far and of a batch: numbers, units and points of documents."""
        own = self.holds[units]
        gaps = np.concatenate([self.gaps, rounded_lengths(points[own] - self.centre)])
        nearest = np.argsort(gaps, kind="stable")[:most]
        self.gaps, self.items = gaps[nearest], np.concatenate([self.items, items[own]])[nearest]

    def rows(self) -> list[Row]:
        """The rows in order of the documents."""
        order = np.argsort(self.items)
        return row_list(np.full(len(order), self.node), self.gaps[order], self.items[order])


def vectors(documents: Iterable[Sequence[Document]], rng: np.random.Generator, batch: int = BATCH) -> Vectors:
    """Vectors of the documents, which come in batches; the title counts as text, so that names of packages
    have weight. Raises SourceError when hardly a word occurs in several documents.
    """
    texts = ([f"{document.title}\n{document.text}" for document in some] for some in documents)
    try:
        return vectorize(texts, rng, batch=batch)
    except ValueError as error:
        raise SourceError("the texts have too few words in common") from error


def tree(points: Points, trained: SOM) -> list[Node]:
    """Nodes over the units that hold documents."""
    regions = hierarchy.unit_regions(points, trained.units, trained.models)
    whole = hierarchy.merge_all(regions, som.neighbours(trained.grid))
    return hierarchy.build(whole, set(trained.units.tolist()))


def rounded_lengths(differences: Floats) -> Floats:
    """Length of each row (n), without the last digits."""
    lengths: Floats = np.round(np.sqrt((differences**2).sum(axis=1)), 9)
    return lengths


def row_list(nodes: Ints, gaps: Floats, items: Ints) -> list[Row]:
    """The rows of a batch as they are stored."""
    return list(zip(nodes.tolist(), gaps.tolist(), items.tolist()))


def memberships(
    points: Points, trained: SOM, nodes: Sequence[Node], branch_documents: int
) -> Iterator[list[Row]]:
    """Which documents each node shows, a batch of documents at a time; the branches come at the end.

    A unit shows all its documents with their distance to its model; a branch the `branch_documents`
    nearest to the mean of its documents, with the distance to that mean.
    """
    leaves = np.zeros(trained.grid.units, dtype=np.int64)
    for node in nodes:
        if not node.children:
            leaves[node.units] = node.number
    sums = som.all_sums(points, trained.units, trained.grid.units)
    branches = [Branch(node, *sums) for node in nodes if node.children]
    for place, batch in points.batches():
        items, units = np.arange(place.start, place.stop), trained.units[place]
        for branch in branches:
            branch.see(items, units, batch, branch_documents)
        gaps = rounded_lengths(batch - trained.models[units])
        order = np.argsort(leaves[units], kind="stable")
        yield row_list(leaves[units][order], gaps[order], items[order])
    for branch in branches:
        yield branch.rows()


def figures(made: Vectors, trained: SOM, chosen: Sequence[Sequence[str]]) -> dict[str, float]:
    """Quality of a map by name."""
    points, (grid, models, units) = made.points, trained
    return {
        "quantization error": quality.quantization_error(points, models, units),
        "topographic error": quality.topographic_error(points, models, grid),
        "empty nodes": quality.empty_units(units, grid.units),
        "keyword coherence": quality.coherence(made.words, made.counts, chosen),
        "unique first keywords": quality.unique_first(chosen),
    }


def node_rows(nodes: Sequence[Node], chosen: Sequence[Sequence[str]]) -> list[tuple[int, str]]:
    """Topic and keywords of each node as stored."""
    return [(node.topic, keywords.keywords_text(words)) for node, words in zip(nodes, chosen)]
