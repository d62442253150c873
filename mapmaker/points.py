# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""The documents as points. They stay in a file, and steps take as many of them into memory as they need."""

import os
from collections.abc import Iterable, Iterator
from tempfile import TemporaryFile
from typing import Any

import numpy as np
from numpy.typing import NDArray

from mapmaker.spool import BATCH

Floats = NDArray[np.float64]
Ints = NDArray[np.int64]

GRAIN = 2.0**-14  # points are multiples of it, so that dot products of the map are exact


def to_grain(values: Floats, grain: float) -> Floats:
    """Values rounded to multiples of a power of two; sums of their products don't depend on the order."""
    rounded: Floats = np.rint(values / grain) * grain
    return rounded


class Points:
    """Points (n, d) that are read as multiples of a unit from any array, in or out of memory."""

    def __init__(self, stored: NDArray[Any], unit: float = 1.0, batch: int = BATCH) -> None:
        self.stored = stored
        self.unit = unit
        self.batch = batch

    def __len__(self) -> int:
        return len(self.stored)

    @property
    def dimensions(self) -> int:
        """Number of dimensions d."""
        return int(self.stored.shape[1])

    def __getitem__(self, rows: Ints | slice) -> Floats:
        """The chosen points (k, d), a copy."""
        chosen: Floats = self.stored[rows].astype(np.float64) * self.unit
        return chosen

    def batches(self) -> Iterator[tuple[slice, Floats]]:
        """All points in their order, a batch at a time, each with its place."""
        for start in range(0, len(self), self.batch):
            place = slice(start, min(start + self.batch, len(self)))
            yield place, self[place]


def stored(rows: Iterable[Floats], shape: tuple[int, int], batch: int) -> Points:
    """Points (n, d) of length 0 to 1, written batch by batch to a file without a name: two bytes a number.

    A full disk raises OSError.
    """
    with TemporaryFile(prefix="mapmaker-") as file:
        os.posix_fallocate(file.fileno(), 0, 2 * shape[0] * shape[1])
        numbers = np.memmap(file, dtype=np.int16, mode="r+", shape=shape)
    done = 0
    for points in rows:
        numbers[done : done + len(points)] = np.rint(points / GRAIN)
        done += len(points)
    return Points(numbers, GRAIN, batch)
