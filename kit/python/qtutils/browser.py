# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""The window as a context manager."""

from __future__ import annotations

import ctypes
import os
from collections.abc import Sequence
from datetime import datetime
from types import TracebackType
from typing import Any

from .errors import Error, ErrorCode, check
from .library import ColorFunction, library
from .rows import ColorCallback, Colors, flat, minutes_at

DATE_FORM = "%Y-%m-%d %H:%M:%S"
LONGEST_DATE = 64  # bytes


class NodeBrowser:
    """The browser window, hidden at first; see kit/include/qtutils/nodebrowser.h for threads and waiting.

    There is one window in a process; a further object is the same one. Every method may be called from any thread and
    raises Error; waiting lets other Python threads run. Dates are local times: naive datetime objects of whole minutes.
    """

    def __init__(
        self, som_database: str, source_database: str, module: str | os.PathLike[str] | None = None
    ) -> None:
        """Loads the module: a file, or by default the one that the variable QTUTILS_MODULE names, or the installed
        one, or "qtutils.so" as the dynamic linker finds it."""
        self._open: ctypes.c_void_p | None = None
        browser = ctypes.c_void_p()
        path = None if module is None else os.fsencode(module)
        names = (_name(som_database), _name(source_database))
        code = library().qtutils_open(path, *names, ctypes.byref(browser))
        if code != ErrorCode.OK:
            detail: bytes = library().qtutils_error_detail()
            raise Error(ErrorCode(code), detail.decode(errors="replace"))
        self._open = browser

    def __enter__(self) -> NodeBrowser:
        return self

    def __exit__(
        self, kind: type[BaseException] | None, error: BaseException | None, trace: TracebackType | None
    ) -> None:
        self.close()

    def __del__(self) -> None:
        if getattr(self, "_open", None) is not None:
            self.close()

    def close(self) -> None:
        """Gives the window back; it goes away with the last object. A further call does nothing."""
        if self._open is not None:
            self._call("close")
            self._open = None

    def set_som_table(self, name: str) -> None:
        """The table that assigns documents to nodes, from the next selection on."""
        self._call("set_som_table", _name(name))

    def pass_hierarchy(self, children: Sequence[Sequence[int]]) -> None:
        """Hands over the children of each node, and builds the tree."""
        for node, nodes in enumerate(children):
            self.pass_node_hierarchy(nodes, node, len(children))

    def pass_node_hierarchy(self, children: Sequence[int], node: int, num_nodes: int) -> None:
        """Hands over the children of one node; with the last node, builds the tree."""
        array = (ctypes.c_int * len(children))(*map(_int, children))
        self._call("pass_node_hierarchy", array, len(children), _int(node), _int(num_nodes))

    def show(self) -> None:
        """Shows the window, and raises it."""
        self._call("show")

    def hide_table(self) -> None:
        """Hides table, text and date filter for good."""
        self._call("hide_table")

    def select(self, node: int) -> None:
        """Shows the documents of a node."""
        self._call("select", _int(node))

    @property
    def num_rows(self) -> int:
        """The number of rows shown. Waits."""
        return self._ask("get_num_rows")

    def color_rows(self, callback: ColorCallback) -> None:
        """Colours the rows by their dates; a cell shows it when it is painted next. Waits.

        The window is blocked while the callback runs; it must not use the kit. What it raises comes through, and all
        rows are white then. It is called again when the user has chosen another node meanwhile.
        """
        self._call_with_colors("color_rows", callback)

    def select_colored(self, node: int, callback: ColorCallback) -> None:
        """Shows the documents of a node, coloured as by color_rows from the first sight on. Waits."""
        self._call_with_colors("select_colored", callback, _int(node))

    def set_row_colors(self, colors: Colors) -> None:
        """Colours the rows, one colour for each row shown, in the form that a ColorCallback returns. Waits."""
        self._call("set_row_colors", flat(colors, len(colors)), len(colors))

    def mark_row(self, date: datetime, time_frame: int = 0) -> None:
        """Selects the first row later than a date minus the time frame, in units of 3660 seconds; 0: ten days."""
        self._call("mark_row", _text(date), _int(time_frame))

    @property
    def first_date_in_frame(self) -> datetime:
        """The date of the row that was marked; the epoch before any mark. Waits."""
        return datetime.fromtimestamp(60 * self._ask("get_first_date_in_frame"))

    @property
    def first_date_in_selection(self) -> str:
        """The first row's date as the table has it, "YYYY-MM-DDTHH:MM:SS"; empty for a NULL. Waits."""
        buffer = ctypes.create_string_buffer(LONGEST_DATE)
        self._call("get_first_date_in_selection", buffer, LONGEST_DATE)
        return buffer.value.decode("latin-1")

    def date_to_int(self, date: datetime) -> int:
        """Whole minutes since the epoch, halves upward. A callback may call this."""
        return self._ask("date_to_int", _text(date))

    def _call(self, name: str, *arguments: object) -> None:
        check(getattr(library(), f"qtutils_{name}")(self._open, *arguments))

    def _call_with_colors(self, name: str, callback: ColorCallback, *arguments: object) -> None:
        raised: list[BaseException] = []

        def fill(minutes: Any, rows: int, colors: Any, _: object) -> int:
            raised.clear()
            try:
                values = flat(callback(minutes_at(minutes, rows)), rows)
                ctypes.memmove(colors, values, ctypes.sizeof(values))
            except BaseException as error:  # raised again below
                raised.append(error)
            return len(raised)

        code = getattr(library(), f"qtutils_{name}")(self._open, *arguments, ColorFunction(fill), None)
        if raised:
            raise raised[0]
        check(code)

    def _ask(self, name: str, *arguments: object) -> int:
        answer = ctypes.c_int()
        self._call(name, *arguments, ctypes.byref(answer))
        return answer.value


def _text(date: datetime) -> bytes:
    """A date as the module reads it, in local time."""
    local = date.astimezone().replace(tzinfo=None) if date.tzinfo else date
    return local.strftime(DATE_FORM).encode()


def _name(text: str) -> bytes:
    """A name for the module. Raises ValueError where C would see the end of it too early."""
    if "\0" in text:
        raise ValueError("a name has a null character")
    return text.encode()


def _int(value: int) -> int:
    """Raises OverflowError for what C would take for another number."""
    if not -(2**31) <= value < 2**31:
        raise OverflowError(f"{value} is no 32-bit number")
    return value
