# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""Documents on several servers, the shards, behind one head that has the engine SPIDER.

On the shards the documents of each map lie in a table of their own, document__1, document__2 and so on. The head's
table names the one that counts. So a new map needs no change on the shards when it takes its place: renaming on
the head is all, and that is one statement. The map before stays on the shards until the next one is made.
"""

import re
from collections.abc import Iterator, Mapping, Sequence
from contextlib import ExitStack, contextmanager
from typing import Any

from mapmaker import inserts, spider, store
from mapmaker.driver import ServerError
from mapmaker.store import DOCUMENT, INNODB, Names, StoreError

GENERATION = re.compile(r'table "document__(\d+)"')
TABLE = re.compile(r"document__(\d+)")


class Shards:
    """The servers of the documents by the names that the head knows, with a connection to each."""

    def __init__(self, links: Mapping[str, Any], straight: bool, authority: str = "") -> None:
        """Rows go straight to the shards, or through the head's table. With a file of an authority the head reads
        them encrypted."""
        self.links = links
        self.straight = straight
        self.authority = authority
        self.table = ""  # full name on the shards, as soon as they are prepared

    def prepare(self, link: Any, names: Names) -> str:
        """Makes the next tables on the shards, and drops those that the head doesn't name."""
        database = names.source_database
        used = generation_in_use(link, database)
        table = f"document__{used + 1}"
        self.table = f"{database}.{table}"
        for name, shard in self.links.items():
            with told(name), shard.cursor() as cursor:
                store.create_database(cursor, database)
                for number in generations(shard, database):
                    if number != used:
                        cursor.execute(f"DROP TABLE {database}.document__{number}")
                cursor.execute(f"CREATE TABLE {self.table} {DOCUMENT} {INNODB}")
        links = [spider.Link(name, self.authority) for name in self.links]
        return spider.shard_definition(DOCUMENT, links, database, table)

    def write(self, link: Any, table: str, rows: Sequence[tuple[Any, ...]]) -> None:
        """Adds documents: each to the shard where the head looks for it."""
        if not self.straight:
            inserts.insert(link, table, rows)
            return
        for number, (name, shard) in enumerate(self.links.items()):
            with told(name):
                inserts.insert(shard, self.table, [row for row in rows if row[0] % len(self.links) == number])


@contextmanager
def told(name: str) -> Iterator[None]:
    """Failures of a shard become one line with its name."""
    try:
        yield
    except ServerError as error:
        raise StoreError(f"the shard {name} refuses: {store.one_line(error)}") from error


def generation_in_use(link: Any, database: str) -> int:
    """The number of the tables on the shards that the head's documents are in, or 0."""
    with link.cursor() as cursor:
        cursor.execute(
            "SELECT partition_comment FROM information_schema.PARTITIONS"
            " WHERE table_schema = %s AND table_name = 'document'",
            (database,),
        )
        found = (GENERATION.search(comment or "") for (comment,) in cursor.fetchall())
        return max((int(match[1]) for match in found if match), default=0)


def generations(shard: Any, database: str) -> list[int]:
    """The numbers of the tables of documents on a shard."""
    with shard.cursor() as cursor:
        cursor.execute(
            "SELECT table_name FROM information_schema.TABLES WHERE table_schema = %s", (database,)
        )
        return [int(match[1]) for (name,) in cursor.fetchall() if (match := TABLE.fullmatch(name))]


@contextmanager
def shards(
    link: Any, names: Sequence[str], straight: bool, environment: Mapping[str, str], authority: str = ""
) -> Iterator[Shards]:
    """Connections to the servers that a head knows by these names, as the user that the environment names."""
    spider.check_authority(authority)
    with link.cursor() as cursor:
        spider.require_engine(cursor)
        cursor.execute("SELECT @@log_bin")
        if not straight and cursor.fetchone()[0]:
            raise StoreError(
                "the head keeps a binary log, whose readers would write each document again: use --load straight"
            )
        places = spider.places(cursor, names)
    with ExitStack() as stack:
        links = {
            name: stack.enter_context(store.other_server(f"the shard {name}", place.settings(), environment))
            for name, place in places.items()
        }
        yield Shards(links, straight, authority)
