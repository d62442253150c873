# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""The self-organizing map: a hexagonal grid of units, trained in small batches.

Each unit holds a model vector; documents belong to the unit with the nearest model, and training draws the
neighbours of that unit along, so that near units hold similar documents (Kohonen, Self-Organizing Maps,
3rd ed. 2001). The models are weighted means of the documents seen lately, as in the batch map, but
renewed after each small batch with running sums that slowly forget.

All sums are of multiples of powers of two and stay below 2**53 of their units. They are exact in double
precision, so the order of additions, the number of threads and the processor don't matter.
"""

from typing import NamedTuple

import numpy as np
from numpy.typing import NDArray
from scipy.sparse import csr_matrix

from mapmaker.points import Floats, Ints, Points, to_grain
from mapmaker.progress import Track, silent

PULL_GRAIN = 2.0**-20
MODEL_GRAIN = 2.0**-17
UNITS_PER_ROOT = 1.7  # units per square root of the number of documents: about 16 x 12 for 13,000
MOST_SHOWN = 6_000_000  # documents shown to the map, each as often as there are passes
UNITS_PER_STEP = 0.4  # least documents of a step for each unit: its work grows with the square of the units


class Grid(NamedTuple):
    """A hexagonal grid; unit number = row * width + column."""

    width: int
    height: int

    @property
    def units(self) -> int:
        """Number of units u."""
        return self.width * self.height


class Schedule(NamedTuple):
    """How training goes on; widths are standard deviations of the neighbourhood in grid steps."""

    step: int = 256  # fewest documents between two renewals of the models
    passes: int = 60  # at most
    memory: float = 0.1  # share of the collection that the running sums remember
    first_width: float = 0.35  # of the grid's diagonal
    last_width: float = 0.45  # grid steps; smaller: nearer models but more folds in the map
    full_passes: int = 5


def default_grid(documents: int) -> Grid:
    """A grid of four to three with the usual number of units for a collection."""
    units = max(4.0, UNITS_PER_ROOT * np.sqrt(documents))
    width = max(2, round(np.sqrt(units * 4 / 3)))
    return Grid(width, max(2, round(units / width)))


def positions(grid: Grid) -> Floats:
    """Places of the units in the plane (u, 2); neighbours lie at distance 1, odd rows half a step right."""
    row, column = np.divmod(np.arange(grid.units), grid.width)
    return np.stack([column + 0.5 * (row % 2), row * np.sqrt(3) / 2], axis=1)


def squared_steps(grid: Grid) -> Ints:
    """Squared distances between units (u, u); whole numbers on a hexagonal grid."""
    places = positions(grid)
    squares: Ints = np.rint(((places[:, None] - places[None]) ** 2).sum(axis=2)).astype(np.int64)
    return squares


def neighbours(grid: Grid) -> NDArray[np.bool_]:
    """Which units touch (u, u), up to six each; no unit touches itself."""
    touching: NDArray[np.bool_] = squared_steps(grid) == 1
    return touching


def scores(points: Floats, models: Floats) -> Floats:
    """Squared distances (n, u) without the points' own squared length, which no comparison needs."""
    result: Floats = (models**2).sum(axis=1) - 2 * (points @ np.ascontiguousarray(models.T))
    return result


def winners(points: Floats, models: Floats) -> Ints:
    """Nearest unit of each point (n); the lower number wins a tie."""
    nearest: Ints = scores(points, models).argmin(axis=1)
    return nearest


def assign(points: Points, models: Floats) -> Ints:
    """Nearest unit of each document (n)."""
    nearest = np.empty(len(points), dtype=np.int64)
    for place, batch in points.batches():
        nearest[place] = winners(batch, models)
    return nearest


def distances(points: Floats, models: Floats, units: Ints) -> Floats:
    """Euclidean distance of each point to the model of its unit (n)."""
    lengths: Floats = np.sqrt(((points - models[units]) ** 2).sum(axis=1))
    return lengths


def unit_sums(points: Floats, units: Ints, count: int) -> tuple[Floats, Floats]:
    """Sum of the points of each unit (u, d) and their number (u, 1)."""
    member = csr_matrix((np.ones(len(units)), (units, np.arange(len(units)))), shape=(count, len(units)))
    return member @ points, np.bincount(units, minlength=count).astype(np.float64)[:, None]


def all_sums(points: Points, units: Ints, count: int) -> tuple[Floats, Floats]:
    """The same over all documents: sums (u, d) and numbers (u, 1)."""
    sums, number = np.zeros((count, points.dimensions)), np.zeros((count, 1))
    for place, batch in points.batches():
        seen, number_seen = unit_sums(batch, units[place], count)
        sums += seen
        number += number_seen
    return sums, number


def pull(squares: Ints, width: float) -> Floats:
    """Gaussian neighbourhood (u, u) of a width in grid steps."""
    strengths = to_grain(np.exp(np.arange(squares.max() + 1) / (-2 * width * width)), PULL_GRAIN)
    return strengths[squares]


def moments(points: Points) -> tuple[Floats, Floats]:
    """Mean (d) and covariance (d, d) of all points."""
    dimensions = points.dimensions
    sums, products = np.zeros(dimensions), np.zeros((dimensions, dimensions))
    for _, batch in points.batches():
        sums += batch.sum(axis=0)
        products += batch.T @ batch
    mean = sums / len(points)
    return mean, products / len(points) - np.outer(mean, mean)


def first_models(points: Points, grid: Grid) -> Floats:
    """The grid laid over the plane of the two principal axes through the mean of the points (u, d)."""
    mean, covariance = moments(points)
    spread, axes = np.linalg.eigh(covariance)
    plane = axes[:, ::-1][:, :2]
    plane = plane * np.where(plane[np.abs(plane).argmax(axis=0), (0, 1)] < 0, -1, 1)
    places = positions(grid)
    places = (places - places.mean(axis=0)) / places.std(axis=0)
    scale = np.sqrt(np.maximum(spread[::-1][:2], 0))
    return to_grain(mean + (places * scale) @ plane.T, MODEL_GRAIN)


def weighted_means(sums: Floats, weights: Floats, models: Floats) -> Floats:
    """New models; units without weight keep theirs."""
    means = np.divide(sums, weights, out=models.copy(), where=weights > PULL_GRAIN)
    return to_grain(means, MODEL_GRAIN)


def passes_of(documents: int, schedule: Schedule) -> int:
    """How often training goes through a collection; a large one is seen less often."""
    return max(schedule.full_passes, min(schedule.passes, -(-MOST_SHOWN // documents)))


def train(
    points: Points,
    grid: Grid,
    rng: np.random.Generator,
    schedule: Schedule = Schedule(),
    track: Track = silent,
) -> Floats:
    """Models (u, d) of a map of the points (n, d), which are multiples of the points' grain.

    The neighbourhood's width shrinks exponentially over the passes; the full passes at the end keep it.
    """
    squares = squared_steps(grid)
    models = first_models(points, grid)
    sums, weights = np.zeros_like(models), np.zeros((grid.units, 1))
    size = min(max(schedule.step, int(UNITS_PER_STEP * grid.units)), len(points))
    keep = max(0.0, 1 - size / (schedule.memory * len(points)))
    first_width = schedule.first_width * np.hypot(grid.width, grid.height)
    starts = range(0, len(points), size)
    passes = passes_of(len(points), schedule)
    for number in track(range(passes)):
        order = rng.permutation(len(points))
        for step, start in enumerate(starts):
            done = (number + step / len(starts)) / passes
            near = pull(squares, first_width * (schedule.last_width / first_width) ** done)
            chosen = points[order[start : start + size]]
            seen, number_seen = unit_sums(chosen, winners(chosen, models), grid.units)
            sums = keep * sums + near @ seen
            weights = keep * weights + near @ number_seen
            models = weighted_means(sums, weights, models)
    return settle(points, models, pull(squares, schedule.last_width), schedule.full_passes)


def settle(points: Points, models: Floats, near: Floats, passes: int) -> Floats:
    """Models after some passes of the plain batch map with a fixed neighbourhood (u, u)."""
    for _ in range(passes):
        seen, number_seen = all_sums(points, assign(points, models), len(models))
        models = weighted_means(near @ seen, near @ number_seen, models)
    return models
