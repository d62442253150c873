# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""Recipes for row colours: callbacks for NodeBrowser.select_colored and color_rows.

    browser.select_colored(1, recipes.by_date)
    browser.select_colored(1, recipes.by_group([0, 0, 1, 2]))

Dark text can be read on each of their colours, and readers with other colour vision tell them apart. A row without a
value stays white. Values stand in the order of the rows; a callback that is called for another number of rows raises
ValueError.
"""

from __future__ import annotations

import ctypes
from collections.abc import Sequence

from .library import library
from .rows import COMPONENTS, ColorCallback, Colors, Minutes

GROUP_COLORS = 8  # the same ones for any number of groups
WHITE = (0.0, 0.0, 255.0)


class _Rows(ctypes.Structure):
    _fields_ = [("values", ctypes.c_void_p), ("rows", ctypes.c_int)]


def by_date(minutes: Minutes) -> Colors:
    """From pale yellow for the oldest row to blue for the newest one."""
    return _colors("date", minutes, None)


def by_distance(distances: Sequence[float]) -> ColorCallback:
    """The same scale, from the largest value (far, pale) to the least one (near, blue); NaN is no value."""
    values = (ctypes.c_float * len(distances))(*distances)
    return lambda minutes: _colors("distance", minutes, values)


def by_hit(hits: Sequence[bool]) -> ColorCallback:
    """Orange for rows that have a word, for instance."""
    values = (ctypes.c_int * len(hits))(*(bool(hit) for hit in hits))
    return lambda minutes: _colors("hit", minutes, values)


def by_group(groups: Sequence[int]) -> ColorCallback:
    """One of eight colours for the number of the row's group, counted from 0; a negative number is no group."""
    values = (ctypes.c_int * len(groups))(*(group % GROUP_COLORS if group >= 0 else -1 for group in groups))
    return lambda minutes: _colors("group", minutes, values)


def _colors(
    name: str, minutes: Minutes, values: ctypes.Array[ctypes.c_float] | ctypes.Array[ctypes.c_int] | None
) -> Colors:
    rows = len(minutes)
    if values is not None and len(values) != rows:
        raise ValueError(f"values for {len(values)} rows, and there are {rows}")
    dates = (ctypes.c_int * rows)(*(int(minute) for minute in minutes))
    memory = (ctypes.c_float * (COMPONENTS * rows))(*(WHITE * rows))
    user = None if values is None else ctypes.byref(_Rows(ctypes.addressof(values), rows))
    getattr(library(), f"qtutils_color_by_{name}")(dates, rows, memory, user)
    return [(memory[i], memory[i + 1], memory[i + 2]) for i in range(0, COMPONENTS * rows, COMPONENTS)]
