# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""The map of small point sets."""

import numpy as np
import pytest

from mapmaker import quality, som
from mapmaker.points import GRAIN, Points, to_grain
from mapmaker.som import Grid, Schedule

QUICK = Schedule(step=64, passes=15, last_width=0.5)


def square(count: int = 1000, batch: int = 300) -> Points:
    """Points (n, 2) spread evenly in a square."""
    return Points(to_grain(np.random.default_rng(5).random((count, 2)), GRAIN), batch=batch)


def test_inner_units_have_six_neighbours() -> None:
    touching = som.neighbours(Grid(4, 3))
    assert np.flatnonzero(touching[5]).tolist() == [1, 2, 4, 6, 9, 10]
    assert np.flatnonzero(touching[0]).tolist() == [1, 4]
    assert (touching == touching.T).all()


@pytest.mark.parametrize("documents, width, height", [(13000, 16, 12), (2000, 10, 8), (4, 2, 2)])
def test_the_grid_grows_with_the_collection(documents: int, width: int, height: int) -> None:
    assert som.default_grid(documents) == (width, height)


def test_a_square_keeps_its_topology() -> None:
    points, grid = square(), Grid(8, 6)
    models = som.train(points, grid, np.random.default_rng(1), QUICK)
    assert quality.topographic_error(points, models, grid) < 0.1
    units = som.assign(points, models)
    assert quality.quantization_error(points, models, units) < 0.09
    assert quality.empty_units(units, grid.units) == 0


def test_untrained_models_are_worse() -> None:
    points, grid = square(), Grid(8, 6)
    first = som.first_models(points, grid)
    trained = som.train(points, grid, np.random.default_rng(1), QUICK)
    errors = [quality.quantization_error(points, made, som.assign(points, made)) for made in (trained, first)]
    assert errors[0] < errors[1]


def test_a_row_s_two_nearest_are_the_first_of_equals() -> None:
    far = np.random.default_rng(2).integers(0, 4, (200, 9)).astype(float)
    expected = np.argsort(far, axis=1, kind="stable")[:, :2]
    assert np.stack(quality.nearest_two(far.copy()), axis=1).tolist() == expected.tolist()


def test_the_seed_decides_the_map() -> None:
    points, grid = square(300), Grid(4, 3)
    runs = [som.train(points, grid, np.random.default_rng(seed), QUICK).tobytes() for seed in (1, 1, 2)]
    assert runs[0] == runs[1]
    assert runs[0] != runs[2]


def test_a_random_map_has_a_high_topographic_error() -> None:
    points, grid = square(), Grid(8, 6)
    models = np.random.default_rng(3).random((grid.units, 2))
    assert quality.topographic_error(points, models, grid) > 0.5


def test_equal_points_and_points_at_zero_do_no_harm() -> None:
    models = som.train(Points(np.zeros((30, 3))), Grid(3, 2), np.random.default_rng(1), QUICK)
    assert np.isfinite(models).all()


def test_the_nearest_model_wins_and_the_first_of_equals() -> None:
    models = np.array([[0.0, 0.0], [1.0, 0.0], [1.0, 0.0]])
    points = np.array([[0.75, 0.0], [0.25, 0.0]])
    assert som.winners(points, models).tolist() == [1, 0]
    assert som.distances(points, models, np.array([1, 0])).tolist() == [0.25, 0.25]


def test_the_size_of_the_batches_does_not_show() -> None:
    grid = Grid(5, 4)
    maps = [som.train(square(500, batch), grid, np.random.default_rng(1), QUICK) for batch in (1, 97, 500)]
    assert maps[0].tobytes() == maps[1].tobytes() == maps[2].tobytes()


@pytest.mark.parametrize(
    "documents, passes", [(20, 60), (100_000, 60), (100_001, 60), (500_000, 12), (10**8, 5)]
)
def test_a_large_collection_is_seen_less_often(documents: int, passes: int) -> None:
    assert som.passes_of(documents, Schedule()) == passes
