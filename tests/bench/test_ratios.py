# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""The arithmetic of comparisons."""

import pytest

from bench.runner.ratios import exponent, in_turn, paired


def test_every_other_round_goes_backwards() -> None:
    assert [in_turn("ABC", number) for number in range(3)] == [list("ABC"), list("CBA"), list("ABC")]


def test_rounds_are_paired_before_the_median_is_taken() -> None:
    # a slow machine in the second round, another one in the third: the sides' own medians would give 2.5
    assert paired([2.0, 20.0, 5.0], [1.0, 10.0, 2.0]) == 2.0


def test_sides_need_as_many_rounds() -> None:
    with pytest.raises(ValueError):
        paired([1.0, 2.0], [1.0])


@pytest.mark.parametrize("power", [0.0, 1.0, 1.5])
def test_growth_is_the_power_of_the_size(power: float) -> None:
    sizes = [100, 1_000, 10_000]
    assert exponent(sizes, [7 * size**power for size in sizes]) == pytest.approx(power)


def test_growth_is_fitted_to_all_sizes() -> None:
    assert exponent([1, 10, 100], [1, 100, 100]) == pytest.approx(1.0)
