# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""A reader of databases that uses the client library of the window's database driver, as that driver does."""

import ctypes
from collections.abc import Iterator
from contextlib import contextmanager
from ctypes import c_char_p, c_uint, c_ulong, c_void_p
from typing import NamedTuple

from cluster.runner.processes import ClusterError

Row = tuple[bytes | None, ...]
CONNECT_TIMEOUT, SET_CHARSET_NAME = 0, 7  # of enum mysql_option
CONNECT_SECONDS = 5
NONE = b""


class Address(NamedTuple):
    """Where a server is: a Unix socket, or else a port of this machine."""

    socket: str = ""
    port: int = 0

    def variables(self) -> dict[str, str]:
        """The variables that lead the window there."""
        if self.socket:
            return {"MYSQL_HOST": "localhost", "MYSQL_UNIX_PORT": self.socket}
        return {"MYSQL_HOST": "127.0.0.1", "MYSQL_TCP_PORT": str(self.port)}


class Account(NamedTuple):
    """A user of a server."""

    user: str
    password: str = ""


class QueryError(ClusterError):
    """The server, or the way to it, refuses. `code` is the client library's number of the error."""

    def __init__(self, code: int, text: str) -> None:
        super().__init__(f"{code}: {text}")
        self.code = code


def load_library() -> ctypes.CDLL:
    library = ctypes.CDLL("libmariadb.so.3")
    for name, result, arguments in (
        ("mysql_init", c_void_p, [c_void_p]),
        ("mysql_options", ctypes.c_int, [c_void_p, ctypes.c_int, c_void_p]),
        ("mysql_close", None, [c_void_p]),
        ("mysql_errno", c_uint, [c_void_p]),
        ("mysql_error", c_char_p, [c_void_p]),
        ("mysql_real_query", ctypes.c_int, [c_void_p, c_char_p, c_ulong]),
        ("mysql_store_result", c_void_p, [c_void_p]),
        ("mysql_fetch_field_direct", ctypes.POINTER(c_char_p), [c_void_p, c_uint]),
        ("mysql_num_fields", c_uint, [c_void_p]),
        ("mysql_fetch_row", ctypes.POINTER(c_void_p), [c_void_p]),
        ("mysql_fetch_lengths", ctypes.POINTER(c_ulong), [c_void_p]),
        ("mysql_free_result", None, [c_void_p]),
    ):
        function = getattr(library, name)
        function.restype, function.argtypes = result, arguments
    library.mysql_real_connect.restype = c_void_p
    text, number = c_char_p, c_uint
    library.mysql_real_connect.argtypes = [c_void_p, text, text, text, text, number, text, c_ulong]
    return library


LIBRARY = load_library()


class Client:
    """One open connection. Raises QueryError."""

    def __init__(self, address: Address, account: Account, database: str = "") -> None:
        self._link = LIBRARY.mysql_init(None)
        LIBRARY.mysql_options(self._link, SET_CHARSET_NAME, c_char_p(b"utf8mb4"))
        seconds = c_uint(CONNECT_SECONDS)
        LIBRARY.mysql_options(self._link, CONNECT_TIMEOUT, ctypes.byref(seconds))
        host = None if address.socket else b"127.0.0.1"
        opened = LIBRARY.mysql_real_connect(
            self._link,
            host,
            account.user.encode(),
            account.password.encode(),
            database.encode() or None,
            address.port,
            address.socket.encode() or None,
            0,
        )
        if not opened:
            error = self._error()
            self.close()
            raise error

    def close(self) -> None:
        LIBRARY.mysql_close(self._link)
        self._link = None

    def rows(self, statement: str) -> list[Row]:
        """All rows of a statement's result, none for one without a result."""
        with self._stored(statement) as result:
            return list(self._fetched(result)) if result else []

    def columns(self, statement: str) -> list[str]:
        """The names of a result's columns."""
        with self._stored(statement) as result:
            fields = range(LIBRARY.mysql_num_fields(result) if result else 0)
            # The name is the first member of a column's description.
            return [LIBRARY.mysql_fetch_field_direct(result, i)[0].decode() for i in fields]

    def store(self, statement: str) -> None:
        """Runs a statement and has the library store its result, as for the window, and drops it."""
        with self._stored(statement):
            pass

    def value(self, statement: str) -> str:
        """The first field of the first row as a text; empty where there is none, or no value."""
        rows = self.rows(statement)
        return ((rows[0][0] if rows else NONE) or NONE).decode()

    @contextmanager
    def _stored(self, statement: str) -> Iterator[int | None]:
        text = statement.encode()
        if LIBRARY.mysql_real_query(self._link, text, len(text)):
            raise self._error()
        result = LIBRARY.mysql_store_result(self._link)
        if not result and LIBRARY.mysql_errno(self._link):
            raise self._error()
        try:
            yield result
        finally:
            if result:
                LIBRARY.mysql_free_result(result)

    def _fetched(self, result: int) -> Iterator[Row]:
        fields = range(LIBRARY.mysql_num_fields(result))
        while row := LIBRARY.mysql_fetch_row(result):
            lengths = LIBRARY.mysql_fetch_lengths(result)
            yield tuple(ctypes.string_at(row[i], lengths[i]) if row[i] else None for i in fields)

    def _error(self) -> QueryError:
        text = LIBRARY.mysql_error(self._link).decode(errors="replace")
        return QueryError(LIBRARY.mysql_errno(self._link), " ".join(text.split()))


@contextmanager
def connected(address: Address, account: Account, database: str = "") -> Iterator[Client]:
    """An open connection for a with block."""
    client = Client(address, account, database)
    try:
        yield client
    finally:
        client.close()
