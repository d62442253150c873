# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""From documents to rows."""

import numpy as np
import pytest

from mapmaker import keywords, mapping, som
from mapmaker.hierarchy import Node, numbered
from mapmaker.points import Points
from mapmaker.sources import sample
from mapmaker.sources.document import SourceError
from mapmaker.spool import batched
from mapmaker.tests.conftest import document


def test_units_show_all_documents_and_branches_the_nearest() -> None:
    points = np.array([[0.0], [1.0], [2.0], [3.0], [9.0]])
    trained = mapping.SOM(som.Grid(2, 1), np.array([[0.5], [5.0]]), np.array([0, 0, 1, 1, 1]))
    nodes = numbered(Node([0, 1], [Node([0]), Node([1])]))
    batches = mapping.memberships(Points(points, batch=2), trained, nodes, 2)
    assert sorted(row for batch in batches for row in batch) == [
        (0, 0.0, 3),
        (0, 1.0, 2),
        (1, 0.5, 0),
        (1, 0.5, 1),
        (2, 2.0, 3),
        (2, 3.0, 2),
        (2, 4.0, 4),
    ]


def test_the_first_keyword_of_another_node_is_passed_over() -> None:
    words, values, bonds = ["gcc", "ada", "elf"], np.array([9.0, 3.0, 1.0]), np.eye(3)
    assert keywords.choose(words, values, bonds, set())[0] == "gcc"
    assert keywords.choose(words, values, bonds, {"gcc", "ada"})[0] == "elf"
    assert keywords.choose(words, values, bonds, set(words))[0] == "gcc"


@pytest.mark.parametrize("size", [20, 40, 100])
def test_small_collections_have_a_map(size: int) -> None:
    rng = np.random.default_rng(1)
    made = mapping.vectors(batched(sample.make(size, rng, "/doc"), 15), rng)
    grid = som.default_grid(size)
    models = som.train(made.points, grid, rng)
    trained = mapping.SOM(grid, models, som.assign(made.points, models))
    nodes = mapping.tree(made.points, trained)
    batches = mapping.memberships(made.points, trained, nodes, 5)
    shown = {item for batch in batches for _, _, item in batch}
    assert shown == set(range(size))


def test_texts_without_common_words_are_an_error_of_one_line() -> None:
    texts = [document(f"name{letter}", f"strange{letter}") for letter in "abcdefghijklmnopqrstuvw"]
    with pytest.raises(SourceError, match="^the texts have too few words in common$"):
        mapping.vectors([texts], np.random.default_rng(1))
