# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""The database that is looked at: its tables as the window would use them. Nothing here writes."""

from typing import Any, NamedTuple

from mapmaker.driver import ServerError
from mapmaker.hostnames import HostNames


SPIDER = "SPIDER"


class Column(NamedTuple):
    """A column as the server's catalogue has it."""

    name: str
    type: str  # such as "int" or "mediumtext", in lower case
    length: int | None  # bytes that fit, for texts


class Failure(NamedTuple):
    """Why a table can't be read."""

    code: int
    message: str


class Table:
    """One of the three tables."""

    def __init__(self, database: str, name: str) -> None:
        self.database = database
        self.name = name
        self.columns: dict[str, Column] = {}  # by name in lower case, as the server finds them
        self.failure: Failure | None = None
        self.engine = ""  # in upper case
        self.partitions = ""  # such as "HASH (`id`)", nothing for a whole table
        self.places: list[str] = []  # comments of the table and its partitions: where rows of a link are

    @property
    def is_link(self) -> bool:
        """Whether its rows are on another server, or on several."""
        return self.engine == SPIDER

    @property
    def full_name(self) -> str:
        """Database, point, table."""
        return f"{self.database}.{self.name}"

    def has(self, *columns: str) -> bool:
        """Whether it can be read and has the columns, in whatever case they are written."""
        return self.failure is None and all(column.lower() in self.columns for column in columns)


class Patient:
    """The database of a window, by the names that a host gives it. The connection stays the caller's."""

    def __init__(self, link: Any, host: str, names: HostNames) -> None:
        """Reads which columns there are. Raises NameFault for names that need quotes."""
        names.check()
        self.link = link
        self.host = host
        self.assignment = Table(names.som_database, names.table)
        self.keywords = Table(names.som_database, names.keyword_table)
        self.documents = Table(names.source_database, "document")
        self.rows("SET SESSION TRANSACTION READ ONLY")
        self.look(self.assignment, ("node", "dist", "item"))
        self.look(self.keywords, ("_assigned_topic", "_keywords"))
        self.look(self.documents, ())

    @property
    def tables(self) -> tuple[Table, Table, Table]:
        """Assignment, keywords, documents."""
        return (self.assignment, self.keywords, self.documents)

    def rows(self, query: str, *values: object) -> list[tuple[Any, ...]]:
        """All rows of a query."""
        with self.link.cursor() as cursor:
            cursor.execute(query, values or None)
            return list(cursor.fetchall())

    def setting(self, name: str) -> str:
        """A variable of the server, or nothing if it has no such variable."""
        found = self.rows("SHOW VARIABLES LIKE %s", name)
        return str(found[0][1]) if found else ""

    def value(self, query: str, *values: object) -> Any:
        """The one value of a query."""
        return self.rows(query, *values)[0][0]

    def look(self, table: Table, wanted: tuple[str, ...]) -> None:
        """Finds the columns, and whether the wanted ones can be read; all of them when none are named."""
        try:
            self.look_at_engine(table)
            self.look_at_columns(table)
            columns = [column for column in wanted if column in table.columns]
            self.rows(f"SELECT {', '.join(columns) or '*'} FROM {table.full_name} LIMIT 0")
            if table.is_link:  # it answers LIMIT 0 by itself
                self.rows(f"SELECT MAX(`{next(iter(table.columns))}`) FROM {table.full_name}")
        except ServerError as error:
            table.failure = Failure(error.args[0], " ".join(str(error.args[-1]).split()))

    def look_at_columns(self, table: Table) -> None:
        """Finds the columns."""
        table.columns = {
            name.lower(): Column(name, kind.lower(), length)
            for name, kind, length in self.rows(
                "SELECT column_name, data_type, character_octet_length FROM information_schema.COLUMNS"
                " WHERE table_schema = %s AND table_name = %s ORDER BY ordinal_position",
                table.database,
                table.name,
            )
        }

    def look_at_engine(self, table: Table) -> None:
        """Finds how the rows are kept, and where."""
        where = "WHERE table_schema = %s AND table_name = %s"
        for engine, comment in self.rows(
            f"SELECT engine, table_comment FROM information_schema.TABLES {where}", table.database, table.name
        ):
            table.engine, table.places = str(engine).upper(), [comment]
        for method, expression, comment in self.rows(
            "SELECT partition_method, partition_expression, partition_comment"
            f" FROM information_schema.PARTITIONS {where} AND partition_name IS NOT NULL"
            " ORDER BY partition_ordinal_position",
            table.database,
            table.name,
        ):
            table.partitions = f"{method} ({expression})"
            table.places.append(comment)

    def first_columns(self, table: Table) -> dict[str, list[str]]:
        """The columns of each index in their order, in lower case."""
        found: dict[str, list[str]] = {}
        for index, column in self.rows(
            "SELECT index_name, column_name FROM information_schema.STATISTICS"
            " WHERE table_schema = %s AND table_name = %s ORDER BY index_name, seq_in_index",
            table.database,
            table.name,
        ):
            found.setdefault(index, []).append(column.lower())
        return found

    def matching(self, table: Table, condition: str, *values: object) -> int:
        """Number of rows that meet a condition."""
        return int(self.value(f"SELECT COUNT(*) FROM {table.full_name} WHERE {condition}", *values))

    def example(self, condition: str, *values: object) -> str:
        """One document that meets a condition, for a message."""
        query = f"SELECT MIN(id) FROM {self.documents.full_name} WHERE {condition}"
        return f"for example id {self.value(query, *values)}"
