# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""The tree over the map's units: root, topics, groups, units; and the host's script that builds it.

Units are joined by Ward's criterion (Ward 1963): the pair whose union adds least to the sum of squared
distances from the means. Only neighbours on the grid may join, so each branch is one region of the map.
"""

from collections.abc import Iterator, Sequence
from dataclasses import dataclass, field

import numpy as np
from numpy.typing import NDArray

from mapmaker.points import Floats, Ints, Points
from mapmaker.som import all_sums

TOPICS = 20
GROUPS = 60
DIGITS = 9  # costs are rounded, so that ties fall alike everywhere
# Units count with this power of their documents: with 1 the leftovers form one huge branch, with 0 small
# subjects lose their own.
SIZE_POWER = 0.75


@dataclass
class Node:
    """A node of the tree. The number is its place in breadth-first order, 0 the root."""

    units: list[int]  # all non-empty units of the branch, ascending
    children: list["Node"] = field(default_factory=list)
    number: int = -1
    topic: int = 0  # 0 the root, 1 to 20 the branches below


@dataclass
class Region:
    """A connected set of units while they are being joined; parts are the two it was made of."""

    units: list[int]
    size: float  # weight, 0 without documents
    mean: Floats  # (d,)
    scatter: float  # within-sum: squared distances of the documents and the units from their means
    parts: tuple["Region", "Region"] | None = None


def rounded(values: Floats) -> Floats:
    """Values with the last digits cut, which could differ between machines."""
    result: Floats = np.round(values, DIGITS)
    return result


def join(first: Region, second: Region) -> Region:
    """The union of two regions."""
    size = first.size + second.size
    share = second.size / size if size else 0.5
    mean = rounded(first.mean + (second.mean - first.mean) * share)
    units = sorted(first.units + second.units)
    return Region(
        units, size, mean, first.scatter + second.scatter + ward_cost(first, second), (first, second)
    )


def ward_cost(first: Region, second: Region) -> float:
    """What joining two regions adds to the within-sum; nothing if one holds no document."""
    size = first.size + second.size
    gap = float(((first.mean - second.mean) ** 2).sum())
    return round(first.size * second.size / size * gap, DIGITS) if size else 0.0


def unit_regions(points: Points, units: Ints, models: Floats) -> list[Region]:
    """One region per unit, at its model; an empty one joins any neighbour free of cost."""
    sums, number = all_sums(points, units, len(models))
    lengths = np.zeros(len(models))
    for place, batch in points.batches():
        lengths += np.bincount(units[place], (batch**2).sum(axis=1), len(models))
    # of the squared distances from the model, written out, as the points are not at hand any more
    scatters = lengths - 2 * (models * sums).sum(axis=1) + number[:, 0] * (models**2).sum(axis=1)
    sizes = number[:, 0] ** SIZE_POWER
    return [
        Region([unit], round(float(sizes[unit]), DIGITS), model, round(float(scatters[unit]), DIGITS))
        for unit, model in enumerate(models)
    ]


def merge_all(regions: Sequence[Region], touching: NDArray[np.bool_]) -> Region:
    """The region of all units, joined step by step from touching ones (u, u) of a connected grid."""
    active = dict(enumerate(regions))
    near = {unit: set(map(int, np.flatnonzero(touching[unit]))) for unit in active}
    costs = {(a, b): ward_cost(active[a], active[b]) for a in active for b in near[a] if a < b}
    while costs:
        a, b = min(costs, key=lambda pair: (costs[pair], pair))
        active[a] = join(active[a], active.pop(b))
        near[a] = (near[a] | near.pop(b)) - {a, b}
        costs = {pair: cost for pair, cost in costs.items() if not {a, b} & set(pair)}
        for other in near[a]:
            near[other] = (near[other] - {b}) | {a}
            costs[min(a, other), max(a, other)] = ward_cost(active[a], active[other])
    return active[0]


def split(regions: list[Region], count: int) -> list[Region]:
    """Up to `count` regions with documents: again and again the one of largest scatter falls in its parts."""
    regions = list(regions)
    while len(regions) < count:
        divisible = [place for place, region in enumerate(regions) if region.parts and region.scatter > 0]
        if not divisible:
            break
        place = max(divisible, key=lambda place: (regions[place].scatter, -place))
        parts = regions[place].parts or ()
        regions[place : place + 1] = [part for part in parts if part.size]
    return regions


def build(whole: Region, filled: set[int], topics: int = TOPICS, groups: int = GROUPS) -> list[Node]:
    """All nodes in breadth-first order; `filled` are the units that hold documents, each becomes a leaf."""
    topic_regions = split([whole], topics)
    group_regions = split(topic_regions, groups)
    root = Node(sorted(filled))
    for topic in topic_regions:
        branch = Node(sorted(filled & set(topic.units)))
        for group in group_regions:
            if set(group.units) <= set(topic.units):
                leaves = [Node([unit]) for unit in sorted(filled & set(group.units))]
                branch.children.append(Node(sorted(filled & set(group.units)), leaves))
        root.children.append(collapse(branch))
    root = collapse(root)
    return numbered(root)


def collapse(node: Node) -> Node:
    """The branch without chains: a node with one child gives way to the child."""
    node.children = [collapse(child) for child in node.children]
    return node.children[0] if len(node.children) == 1 else node


def numbered(root: Node) -> list[Node]:
    """Nodes in breadth-first order with numbers and topics set."""
    root.number = 0
    nodes = [root]
    for node in nodes:  # grows while it is walked
        for place, child in enumerate(node.children):
            child.number = len(nodes)
            child.topic = place + 1 if node is root else node.topic
            nodes.append(child)
    return nodes


def script_lines(nodes: Sequence[Node], about: Sequence[str]) -> Iterator[str]:
    """The host's script: comment lines, then one line per node in ascending order."""
    for line in about:
        yield f"# {line}"
    for node in nodes:
        children = " ".join(str(child.number) for child in node.children)
        yield f"passNodeHierarchy [{children}] {len(node.children)} {node.number} {len(nodes)}"
