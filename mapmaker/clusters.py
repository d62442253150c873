# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""A map on several servers: is this server the right one to write to, and have the others got the map?"""

import argparse
import re
from collections.abc import Iterator, Mapping, Sequence
from contextlib import contextmanager
from typing import Any

from mapmaker import shards, spider, store
from mapmaker.driver import ServerError
from mapmaker.options import GALERA, REPLICAS, SHARDS, THROUGH_HEAD, UsageError
from mapmaker.store import StoreError

PLACE = re.compile(r"(?:\[([0-9A-Fa-f:.]+)\]|([^\s:\[\]]+))(?::([0-9]{1,5}))?")
LARGEST_PORT = 65535
STATES = {"wsrep_cluster_status": "Primary", "wsrep_ready": "ON", "wsrep_local_state_comment": "Synced"}


@contextmanager
def home(
    link: Any, options: argparse.Namespace, names: store.Names, environment: Mapping[str, str]
) -> Iterator[store.Home]:
    """Where the documents go. Raises StoreError when the server isn't one of the kind that the options name."""
    if options.cluster == SHARDS:
        names = options.servers.split(",")
        straight = options.load != THROUGH_HEAD
        with shards.shards(link, names, straight, environment, options.link_ca or "") as made:
            yield made
        return
    with link.cursor() as cursor:
        require_no_links(cursor, names)
        if options.cluster == REPLICAS:
            require_primary(cursor)
        elif options.cluster == GALERA:
            require_member(cursor)
    yield store.SameServer()


def require_no_links(cursor: Any, names: store.Names) -> None:
    """The map's tables, if there are some, have their rows here; else a map would take the place of links by mistake."""
    for table in names.tables():
        link = "TABLES WHERE table_schema = %s AND table_name = %s AND engine = 'SPIDER'"
        if store.found(cursor, link, tuple(table.split("."))):
            raise StoreError(
                f"{table} is a link here: make the map on the server with its rows, or use --cluster {SHARDS}"
            )


def require_primary(cursor: Any) -> None:
    """The server takes changes, and writes them down for its replicas."""
    cursor.execute("SELECT @@read_only, @@log_bin")
    read_only, log_bin = cursor.fetchone()
    if read_only:
        raise StoreError("this server is read-only, so it is a replica: name the primary in MYSQL_HOST")
    if not log_bin:
        raise StoreError("this server keeps no binary log, so it has no replicas: start it with log_bin")


def require_member(cursor: Any) -> None:
    """The server is a working node of a cluster, and statements on tables reach the others, in one order."""
    cursor.execute("SHOW STATUS LIKE 'wsrep%'")
    found = {name: value for name, value in cursor.fetchall()}
    for name, state in STATES.items():
        if found.get(name) != state:
            raise StoreError(f"this server is no working node: {name} is {found.get(name)!r}, not {state!r}")
    cursor.execute("SET SESSION wsrep_osu_method = 'TOI'")


def places(text: str | None) -> list[tuple[str, int]]:
    """Hosts and ports, 0 for the usual one, of a list such as "db1,db2:3307,[::1]:3308". Raises UsageError."""
    found = []
    for part in text.split(",") if text is not None else []:
        match = PLACE.fullmatch(part)
        if not match or int(match[3] or 0) > LARGEST_PORT:
            raise UsageError(f"--wait-for: {part!r} is no host and port")
        found.append((match[1] or match[2], int(match[3] or 0)))
    return found


def late(
    link: Any, kind: str, others: Sequence[tuple[str, int]], table: str, environment: Mapping[str, str]
) -> list[str]:
    """Waits until the other servers have what this connection wrote last, and tells why some haven't."""
    if kind == GALERA:
        statements = ["SET SESSION wsrep_sync_wait = 1", f"SELECT COUNT(*) = 0 FROM {table}"]
    else:
        with link.cursor() as cursor:
            cursor.execute("SELECT @@last_gtid")
            statements = [f"SELECT MASTER_GTID_WAIT('{cursor.fetchone()[0]}', {store.SECONDS_TO_WAIT})"]
    return [reason for place in others if (reason := unfinished(place, statements, environment))]


def unfinished(place: tuple[str, int], statements: Sequence[str], environment: Mapping[str, str]) -> str:
    """Why a server hasn't got the map; nothing if the last statement answers 0."""
    title = f"{place[0]}:{place[1] or spider.USUAL_PORT}"
    try:
        with store.other_server(title, {"host": place[0], "port": place[1]}, environment) as other:
            with other.cursor() as cursor:
                for statement in statements:
                    cursor.execute(statement)
                answer = cursor.fetchone()[0]
    except (StoreError, ServerError) as error:
        return store.one_line(error)
    return "" if answer == 0 else f"{title} hasn't got the map after {store.SECONDS_TO_WAIT} s"
