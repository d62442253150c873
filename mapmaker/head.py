# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""A server without rows of its own: its tables are links to those of a map on other servers."""

from typing import Any

from mapmaker import spider, store
from mapmaker.hostnames import HostNames, NameFault
from mapmaker.store import FILLED, StoreError

LONGEST = 64 - len(FILLED)


def link_tables(link: Any, names: HostNames, way: spider.Link) -> tuple[str, ...]:
    """Makes the tables of a map as links to those of the same names on a server, and gives their names.

    Columns and indices are asked for there. Earlier links are replaced, all at once. Raises StoreError where a table
    has rows of its own.
    """
    check(names)
    spider.check_authority(way.authority)
    with link.cursor() as cursor:
        spider.require_engine(cursor)
        spider.places(cursor, [way.server])
        for table in names.tables():
            require_no_rows(cursor, table)
        for database in sorted({names.som_database, names.source_database}):
            store.create_database(cursor, database)
        for full_name in names.tables():
            definition = spider.link_definition(way, *full_name.split("."))
            cursor.execute(f"DROP TABLE IF EXISTS {full_name}{FILLED}")
            cursor.execute(f"CREATE TABLE {full_name}{FILLED} {definition}")
    store.swap(link, names.tables())
    return names.tables()


def check(names: HostNames) -> None:
    """Raises NameFault for names that need quotes, or can't get a suffix."""
    names.check()
    if len(names.table) > LONGEST:
        raise NameFault(f"bad name {names.table!r}: only up to {LONGEST} characters")


def require_no_rows(cursor: Any, table: str) -> None:
    """Raises StoreError for a table that isn't a link: replacing it would drop its rows."""
    cursor.execute(
        "SELECT engine FROM information_schema.TABLES WHERE table_schema = %s AND table_name = %s",
        table.split("."),
    )
    for (engine,) in cursor.fetchall():
        if engine != "SPIDER":
            raise StoreError(
                f"{table} has rows of its own here ({engine}): drop it, or link on another server"
            )
