# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""Ports of this machine that nobody else gets while they are ours."""

import socket


class Ports:
    """Hands out free ports, and keeps each bound but not listened on: so a server that shares addresses
    (SO_REUSEADDR, as all of ours do) can take it, also after a restart, and no other program gets it."""

    def __init__(self) -> None:
        self._kept: list[socket.socket] = []

    def take(self) -> int:
        """A new port of 127.0.0.1."""
        kept = socket.socket(socket.AF_INET, socket.SOCK_STREAM)
        kept.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
        kept.bind(("127.0.0.1", 0))
        self._kept.append(kept)
        return int(kept.getsockname()[1])

    def close(self) -> None:
        for kept in self._kept:
            kept.close()
        self._kept.clear()
