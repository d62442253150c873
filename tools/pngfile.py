# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""Writing of PNG pictures."""

import struct
import zlib
from collections.abc import Sequence


def png(rows: Sequence[bytes]) -> bytes:
    """A PNG file of rows of equal length, three bytes (red, green, blue) a pixel."""
    header = struct.pack(">IIBBBBB", len(rows[0]) // 3, len(rows), 8, 2, 0, 0, 0)
    data = zlib.compress(b"".join(b"\0" + row for row in rows), 9)
    chunks = ((b"IHDR", header), (b"IDAT", data), (b"IEND", b""))
    return b"\x89PNG\r\n\x1a\n" + b"".join(_chunk(kind, content) for kind, content in chunks)


def _chunk(kind: bytes, content: bytes) -> bytes:
    return struct.pack(">I", len(content)) + kind + content + struct.pack(">I", zlib.crc32(kind + content))
