# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""The tree over the units."""

import numpy as np
import pytest

from mapmaker import hierarchy, som
from mapmaker.hierarchy import Node
from mapmaker.points import Points
from mapmaker.som import Grid

GRID = Grid(8, 6)


def made_tree(topics: int = 5, groups: int = 12) -> tuple[list[Node], set[int]]:
    """A tree over a grid with some empty units."""
    rng = np.random.default_rng(4)
    models = rng.random((GRID.units, 3))
    units = rng.choice(np.arange(3, GRID.units, dtype=np.int64), size=400)
    units = units[units % 7 != 0]
    points = models[units] + rng.normal(size=(len(units), 3)) * 0.1
    whole = hierarchy.merge_all(
        hierarchy.unit_regions(Points(points, batch=64), units, models), som.neighbours(GRID)
    )
    filled = set(units.tolist())
    return hierarchy.build(whole, filled, topics, groups), filled


def test_each_filled_unit_is_a_leaf_once() -> None:
    nodes, filled = made_tree()
    leaves = [node.units for node in nodes if not node.children]
    assert sorted(leaves) == [[unit] for unit in sorted(filled)]


def test_numbers_are_breadth_first() -> None:
    nodes, _ = made_tree()
    assert [node.number for node in nodes] == list(range(len(nodes)))
    children = [child.number for node in nodes for child in node.children]
    assert children == list(range(1, len(nodes)))


def test_no_node_has_a_single_child() -> None:
    nodes, _ = made_tree(topics=20, groups=40)
    assert 1 not in {len(node.children) for node in nodes}


def test_a_branch_holds_the_units_of_its_children() -> None:
    for node in made_tree()[0]:
        if node.children:
            assert node.units == sorted(unit for child in node.children for unit in child.units)


def test_topics_belong_to_branches() -> None:
    nodes, _ = made_tree()
    assert nodes[0].topic == 0
    assert [child.topic for child in nodes[0].children] == [1, 2, 3, 4, 5]
    assert all(child.topic == node.topic for node in nodes[1:] for child in node.children)


def test_topics_are_connected_on_the_grid() -> None:
    rng = np.random.default_rng(8)
    models, units = rng.random((GRID.units, 3)), np.arange(GRID.units)
    whole = hierarchy.merge_all(hierarchy.unit_regions(Points(models), units, models), som.neighbours(GRID))
    touching = som.neighbours(GRID)
    for region in hierarchy.split([whole], 6):
        reached = {region.units[0]}
        for _ in region.units:
            reached |= {unit for unit in region.units if touching[unit][sorted(reached)].any()}
        assert reached == set(region.units)


def test_distant_blocks_become_topics() -> None:
    """Left and right half of the grid hold very different points."""
    left = np.arange(GRID.units) % GRID.width < 4
    models = np.where(left[:, None], 0.0, 9.0) + np.random.default_rng(2).random((GRID.units, 2)) * 0.01
    units = np.arange(GRID.units)
    whole = hierarchy.merge_all(hierarchy.unit_regions(Points(models), units, models), som.neighbours(GRID))
    halves = sorted(region.units for region in hierarchy.split([whole], 2))
    assert halves == [np.flatnonzero(left).tolist(), np.flatnonzero(~left).tolist()]


def test_a_single_filled_unit_is_the_root() -> None:
    models = np.zeros((GRID.units, 2))
    units = np.full(5, 9, dtype=np.int64)
    whole = hierarchy.merge_all(
        hierarchy.unit_regions(Points(np.zeros((5, 2))), units, models), som.neighbours(GRID)
    )
    assert [(node.number, node.units, node.topic) for node in hierarchy.build(whole, {9})] == [(0, [9], 0)]


@pytest.mark.parametrize("start", ["passNodeHierarchy [1 2] 2 0 3", "passNodeHierarchy [] 0 2 3"])
def test_the_script_has_one_line_per_node(start: str) -> None:
    nodes = hierarchy.numbered(Node([1, 2], [Node([1]), Node([2])]))
    lines = list(hierarchy.script_lines(nodes, ["about"]))
    assert lines[0] == "# about"
    assert start in lines
    assert len(lines) == 4
