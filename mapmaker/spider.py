# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""Tables of the engine SPIDER: they hold no rows, but know on which server the rows are."""

import re
from collections.abc import Mapping, Sequence
from typing import Any, NamedTuple

from mapmaker.store import StoreError, found

NAME = re.compile(r"[A-Za-z0-9_]{1,64}")
PATH = re.compile(r"/[A-Za-z0-9/._-]{1,255}")
USUAL_PORT = 3306
WRAPPER = 'wrapper "mysql"'


class Place(NamedTuple):
    """The address of a server as CREATE SERVER has it."""

    host: str
    port: int
    socket: str  # a path, or nothing

    def settings(self) -> dict[str, Any]:
        """Parameters of a connection to it."""
        return {"host": self.host, "port": self.port} | ({"unix_socket": self.socket} if self.socket else {})


class Link(NamedTuple):
    """The way to a table on another server."""

    server: str
    authority: str = (
        ""  # file, on the machine of the links, with who signs the server's certificate; or no encryption
    )

    def comment(self, database: str, table: str) -> str:
        """Where the rows of a table or partition are. Without both words for TLS a server in plain would do as well."""
        tls = f', ssl_ca "{self.authority}", ssl_verify_server_cert "1"' if self.authority else ""
        return f'srv "{self.server}", database "{database}", table "{table}"{tls}'


def link_definition(link: Link, database: str, table: str) -> str:
    """A table whose columns and indices the engine asks the other server for."""
    return f"ENGINE=SPIDER DEFAULT CHARSET=utf8mb4 COMMENT='{WRAPPER}, {link.comment(database, table)}'"


def shard_definition(columns: str, links: Sequence[Link], database: str, table: str) -> str:
    """A table whose row of an id lies on the server whose number is the rest of the division by their number."""
    parts = (
        f"PARTITION p{number} COMMENT='{link.comment(database, table)}'" for number, link in enumerate(links)
    )
    kind = f"ENGINE=SPIDER DEFAULT CHARSET=utf8mb4 COMMENT='{WRAPPER}'"
    return f"{columns} {kind}\nPARTITION BY HASH (id) ({', '.join(parts)})"


def check_authority(path: str) -> None:
    """Raises StoreError for a path that can't stand in a link."""
    if path and not PATH.fullmatch(path):
        raise StoreError(f"bad file {path!r}: a link takes only a whole path of A-Z, a-z, 0-9, /, _, . and -")


def require_engine(cursor: Any) -> None:
    """Raises StoreError unless the server has the engine."""
    if not found(cursor, "ENGINES WHERE engine = %s AND support IN ('YES', 'DEFAULT')", ("SPIDER",)):
        raise StoreError("the server has no engine SPIDER: start it with plugin-load-add=ha_spider")


def places(cursor: Any, names: Sequence[str]) -> Mapping[str, Place]:
    """The addresses of servers in the order of their names.

    Raises StoreError for a bad, repeated or unknown name, and for two names of one address.
    """
    for number, name in enumerate(names):
        if not NAME.fullmatch(name):
            raise StoreError(f"bad server name {name!r}: only A-Z, a-z, 0-9 and _")
        if name in names[:number]:
            raise StoreError(f"the server {name} is named twice")
    cursor.execute("SELECT server_name, host, port, socket FROM mysql.servers")
    known = {name: Place(host, port or USUAL_PORT, socket) for name, host, port, socket in cursor.fetchall()}
    if unknown := [name for name in names if name not in known]:
        raise StoreError(f"no CREATE SERVER has been made for {', '.join(unknown)}")
    chosen = {name: known[name] for name in names}
    if len(set(chosen.values())) < len(chosen):
        raise StoreError("two of the servers have one address: each document would be found twice")
    return chosen
