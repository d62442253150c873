# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""The whole way from documents to the rows of a map, step by step."""

from collections.abc import Sequence
from typing import NamedTuple

import numpy as np

from mapmaker import hierarchy, keywords, quality, som
from mapmaker.hierarchy import Node
from mapmaker.som import Grid, Ints
from mapmaker.sources.document import Document, SourceError
from mapmaker.vectors import Floats, Vectors, vectorize


class SOM(NamedTuple):
    """A trained map of n documents: u units of d dimensions."""

    grid: Grid
    models: Floats  # (u, d)
    units: Ints  # (n,), the unit of each document


def vectors(documents: Sequence[Document], rng: np.random.Generator) -> Vectors:
    """Vectors of the documents; the title counts as text, so that names of packages have weight.

    Raises SourceError when hardly a word occurs in several documents.
    """
    try:
        return vectorize((f"{document.title}\n{document.text}" for document in documents), rng)
    except ValueError as error:
        raise SourceError("the texts have too few words in common") from error


def tree(points: Floats, trained: SOM) -> list[Node]:
    """Nodes over the units that hold documents."""
    regions = hierarchy.unit_regions(points, trained.units, trained.models)
    whole = hierarchy.merge_all(regions, som.neighbours(trained.grid))
    return hierarchy.build(whole, set(trained.units.tolist()))


def memberships(
    points: Floats, trained: SOM, nodes: Sequence[Node], branch_documents: int
) -> list[tuple[int, float, int]]:
    """Which documents each node shows: node, distance, document; by node and document.

    A unit shows all its documents with their distance to its model; a branch the `branch_documents`
    nearest to the mean of its documents, with the distance to that mean.
    """
    rows: list[tuple[int, float, int]] = []
    for node in nodes:
        items = hierarchy.members(node, trained.units)
        centre = points[items].mean(axis=0) if node.children else trained.models[node.units[0]]
        gaps = np.round(np.sqrt(((points[items] - centre) ** 2).sum(axis=1)), 9)
        most = branch_documents if node.children else len(items)
        nearest = np.sort(np.argsort(gaps, kind="stable")[:most])
        rows += zip([node.number] * len(nearest), gaps[nearest].tolist(), items[nearest].tolist())
    return rows


def figures(made: Vectors, trained: SOM, chosen: Sequence[Sequence[str]]) -> dict[str, float]:
    """Quality of a map by name."""
    points, (grid, models, _) = made.points, trained
    return {
        "quantization error": quality.quantization_error(points, models),
        "topographic error": quality.topographic_error(points, models, grid),
        "empty nodes": quality.empty_units(points, models),
        "keyword coherence": quality.coherence(made.words, made.counts, chosen),
        "unique first keywords": quality.unique_first(chosen),
    }


def node_rows(nodes: Sequence[Node], chosen: Sequence[Sequence[str]]) -> list[tuple[int, str]]:
    """Topic and keywords of each node as stored."""
    return [(node.topic, keywords.keywords_text(words)) for node, words in zip(nodes, chosen)]
