# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""Many rows in few statements, none longer than the server takes."""

from collections.abc import Iterable, Iterator, Sequence
from typing import Any

LONGEST = 1024 * 1024  # bytes of a statement; longer ones save no more time
COMMAND = 1  # byte that a packet has before the statement


class RowError(Exception):
    """A row is too long for the server; the message is one line."""


def insert(link: Any, table: str, rows: Sequence[tuple[Any, ...]]) -> None:
    """Writes rows that give all columns, and commits. Raises RowError for one that the server never takes."""
    with link.cursor() as cursor:
        cursor.execute("SELECT @@max_allowed_packet")
        longest = int(cursor.fetchone()[0]) - COMMAND
        marks = "(" + ", ".join(["%s"] * len(rows[0])) + ")" if rows else ""
        values = (cursor.mogrify(marks, row).encode("utf-8", "surrogateescape") for row in rows)
        for statement in statements(f"INSERT INTO {table} VALUES ".encode(), values, longest):
            cursor.execute(statement)
    link.commit()


def statements(start: bytes, values: Iterable[bytes], longest: int) -> Iterator[bytes]:
    """The start with as many values, parted by commas, as a statement may have; the values come once."""
    block: list[bytes] = []
    size = bound = min(longest, LONGEST)
    for value in values:
        if len(start) + len(value) > longest:
            raise RowError(
                f"a row of {len(value)} bytes doesn't fit into the server's max_allowed_packet"
                f" ({longest + COMMAND}): set it higher"
            )
        if block and size + 1 + len(value) > bound:
            yield start + b",".join(block)
            block = []
        size = size + 1 + len(value) if block else len(start) + len(value)
        block.append(value)
    if block:
        yield start + b",".join(block)
