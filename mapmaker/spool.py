# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""Batches on disk: what a step makes of a collection waits there for the next step, not in memory."""

import os
import pickle
from collections.abc import Iterable, Iterator
from itertools import islice
from tempfile import TemporaryFile
from typing import Generic, TypeVar

T = TypeVar("T")

BATCH = 4096  # documents in memory at once unless the user wants another number


class Spool(Generic[T]):
    """Objects in the order they came, of which only the one being read is in memory.

    They lie in a file without a name in the folder for temporary files (TMPDIR), which is gone with the spool.
    Several loops may read at the same time. A full disk raises OSError.
    """

    def __init__(self, items: Iterable[T] = ()) -> None:
        self.file = TemporaryFile(prefix="mapmaker-")
        self.places: list[int] = []
        for item in items:
            self.append(item)

    def append(self, item: T) -> None:
        """Adds one object behind the others."""
        self.places.append(self.file.seek(0, os.SEEK_END))
        pickle.dump(item, self.file, protocol=pickle.HIGHEST_PROTOCOL)
        self.file.flush()

    def __len__(self) -> int:
        return len(self.places)

    def __iter__(self) -> Iterator[T]:
        for place in self.places:
            self.file.seek(place)
            item: T = pickle.load(self.file)
            yield item


def batched(items: Iterable[T], size: int) -> Iterator[list[T]]:
    """The items in lists of `size`, the last one may be shorter."""
    remaining = iter(items)
    while batch := list(islice(remaining, size)):
        yield batch


def spooled(items: Iterable[T], size: int) -> tuple[Spool[list[T]], int]:
    """The items in batches on disk, and their number."""
    spool: Spool[list[T]] = Spool()
    number = 0
    for batch in batched(items, size):
        spool.append(batch)
        number += len(batch)
    return spool, number
