# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""How long steps report that they get on: the caller hands in a wrapper of their loop."""

from collections.abc import Iterable
from typing import Protocol, TypeVar

T = TypeVar("T")


class Track(Protocol):
    """Passes the items on, one by one, and may show how many are done."""

    def __call__(self, items: Iterable[T]) -> Iterable[T]:
        """The same items in the same order."""


def silent(items: Iterable[T]) -> Iterable[T]:
    """Shows nothing."""
    return items
