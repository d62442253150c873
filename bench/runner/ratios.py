# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""The arithmetic of comparisons."""

import math
from collections.abc import Sequence
from statistics import fmean, median
from typing import TypeVar

T = TypeVar("T")


def in_turn(sides: Sequence[T], number: int) -> list[T]:
    """The order of the sides in a round: A B C in even rounds, C B A in odd ones."""
    return list(sides) if number % 2 == 0 else list(reversed(sides))


def paired(values: Sequence[float], others: Sequence[float]) -> float:
    """The median of the ratios of the values that belong to the same round. The others must not be zero."""
    return median(value / other for value, other in zip(values, others, strict=True))


def exponent(sizes: Sequence[float], values: Sequence[float]) -> float:
    """How a value grows with the size, from a line through the logarithms: 1 in proportion, 0 not at all."""
    x, y = [math.log(size) for size in sizes], [math.log(value) for value in values]
    mean_x, mean_y = fmean(x), fmean(y)
    slope = sum((a - mean_x) * (b - mean_y) for a, b in zip(x, y, strict=True))
    return slope / sum((a - mean_x) ** 2 for a in x)
