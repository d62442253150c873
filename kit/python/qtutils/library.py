# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""The C library and the types of its functions."""

import os
from ctypes import CDLL, CFUNCTYPE, POINTER, c_char_p, c_float, c_int, c_size_t, c_void_p
from functools import cache
from pathlib import Path

FILE = "libqtutils-nodebrowser.so.0"

ColorFunction = CFUNCTYPE(c_int, POINTER(c_int), c_int, POINTER(c_float), c_void_p)

# Arguments after the browser; all of these return a code.
METHODS = {
    "close": (),
    "set_som_table": (c_char_p,),
    "pass_node_hierarchy": (POINTER(c_int), c_int, c_int, c_int),
    "show": (),
    "hide_table": (),
    "select": (c_int,),
    "get_num_rows": (POINTER(c_int),),
    "mark_row": (c_char_p, c_int),
    "get_first_date_in_frame": (POINTER(c_int),),
    "get_first_date_in_selection": (c_char_p, c_size_t),
    "date_to_int": (c_char_p, POINTER(c_int)),
    "color_rows": (ColorFunction, c_void_p),
    "select_colored": (c_int, ColorFunction, c_void_p),
    "set_row_colors": (POINTER(c_float), c_int),
}


def file() -> str:
    """The library's file: the environment's, or else the one that is installed with this package, or else any."""
    beside = Path(__file__).with_name(FILE)
    return os.environ.get("QTUTILS_NODEBROWSER") or (str(beside) if beside.exists() else FILE)


RECIPES = ("date", "distance", "hit", "group")


@cache
def library() -> CDLL:
    """The library, loaded with the first call. Raises OSError when it can't be found."""
    loaded = CDLL(file())
    for name, arguments in METHODS.items():
        function = getattr(loaded, f"qtutils_{name}")
        function.argtypes, function.restype = (c_void_p, *arguments), c_int
    for name in RECIPES:
        function = getattr(loaded, f"qtutils_color_by_{name}")
        function.argtypes, function.restype = (POINTER(c_int), c_int, POINTER(c_float), c_void_p), c_int
    loaded.qtutils_open.argtypes = (c_char_p, c_char_p, c_char_p, POINTER(c_void_p))
    loaded.qtutils_open.restype = c_int
    loaded.qtutils_error_text.argtypes, loaded.qtutils_error_text.restype = (c_int,), c_char_p
    loaded.qtutils_error_detail.argtypes, loaded.qtutils_error_detail.restype = (), c_char_p
    return loaded
