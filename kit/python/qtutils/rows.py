# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""Dates and colours of rows: arrays where NumPy is there, lists where it is not."""

from __future__ import annotations

import ctypes
from collections.abc import Callable, Sequence
from typing import TYPE_CHECKING, Any, Union

try:
    import numpy
except ImportError:
    HAS_NUMPY = False
else:
    HAS_NUMPY = True

if TYPE_CHECKING:
    from numpy.typing import NDArray

    Minutes = Union["NDArray[numpy.int32]", list[int]]
    Colors = Union["NDArray[Any]", Sequence[Sequence[float]]]
else:
    Minutes = Colors = Any

ColorCallback = Callable[[Minutes], Colors]
"""Turns the rows' dates into colours.

Gets the minutes of each row after the first row's date, or NO_DATE: an int32 array of shape (rows,), or a list. They
are the callback's own. Returns hue (0 to 359), saturation and value (0 to 255) of each row: an array of shape (rows, 3),
or a sequence of sequences.
"""

NO_DATE = -(2**31)
COMPONENTS = 3  # of a colour


def minutes_at(address: Any, rows: int) -> Minutes:
    """A copy of the C library's dates."""
    if HAS_NUMPY:
        return numpy.array(address[:rows], dtype=numpy.int32)
    return list(address[:rows])


def flat(colors: Colors, rows: int) -> ctypes.Array[ctypes.c_float]:
    """The colours as the C library takes them. Raises ValueError for another shape than (rows, 3)."""
    shape = (rows, COMPONENTS)
    memory = (ctypes.c_float * (rows * COMPONENTS))()
    if HAS_NUMPY:
        array = numpy.ascontiguousarray(colors, dtype=numpy.float32)
        if array.shape != shape and rows + array.size > 0:
            raise ValueError(f"the shape of the colours must be {shape}, not {array.shape}")
        ctypes.memmove(memory, array.ctypes.data, array.nbytes)
    else:
        if len(colors) != rows or any(len(color) != COMPONENTS for color in colors):
            raise ValueError(f"the shape of the colours must be {shape}")
        memory[:] = [value for color in colors for value in color]
    return memory
