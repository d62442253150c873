# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""How a map grows on one server: makes maps, measures them, calculates larger ones, and prints both as tables."""

import json
import resource
import subprocess
import sys
import tempfile
import time
from collections.abc import Callable, Iterator, Sequence
from pathlib import Path
from statistics import median
from typing import NamedTuple

from mapmaker import som, store

TEXT = 2000  # characters of a document's text
LARGER = (10_000_000, 100_000_000)
POOL = 4 * 1024**3  # bytes of the server's memory for rows
CHOSEN = 25  # nodes that are chosen, spread over all sizes
ROUNDS = 3
PER_PAIR = 3 * 8  # bytes of mapmaker's memory for each pair of units: three tables
PER_DOCUMENT = 2 * 8 + 2 * 100  # and for each document: two numbers, and a point in a mapped file
MB = 1e6
SELECTION = (
    "ANALYZE FORMAT=JSON SELECT node, dist, document.* FROM som.sample_train, texts.document"
    " WHERE texts.document.id=som.sample_train.item AND node={} ORDER BY date"
)
KEYWORDS = "ANALYZE FORMAT=JSON SELECT _assigned_topic, _keywords FROM som.sample_som "
PADDED = (
    "CREATE TABLE texts.padded LIKE texts.document",
    "INSERT INTO texts.padded SELECT id, date, title, URL, RPAD(text, {}, text), author, urgency, package"
    " FROM texts.document",
    "RENAME TABLE texts.document TO texts.short, texts.padded TO texts.document",
    "DROP TABLE texts.short",
    "ANALYZE TABLE texts.document",
)


class Growth(NamedTuple):
    """A map of n documents; sizes in bytes, times in seconds."""

    documents: int
    units: int
    nodes: int
    disk: float  # of the documents
    disk_rest: float  # of assignments and keywords
    selection: float  # a middling node's documents, inside the server
    keywords: float  # all keywords, inside the server
    making: float  # processor time of mapmaker
    training: float  # the share of it that goes with documents shown times units
    memory: float  # of mapmaker, at most

    @property
    def each(self) -> float:
        """Documents of a middling node."""
        return self.documents / self.units


class Query:
    """Statements to the server that the environment names."""

    def rows(self, *statements: str) -> list[tuple[str, ...]]:
        """The rows of the last one."""
        with store.connection(autocommit=True) as link, link.cursor() as cursor:
            for statement in statements:
                cursor.execute(statement)
            return list(cursor.fetchall())

    def number(self, statement: str) -> float:
        """The one number that it answers."""
        return float(self.rows(statement)[0][0])

    def seconds(self, statement: str) -> float:
        """Median of some rounds inside the server; the first round, which may fetch rows from disk, doesn't count."""
        times: list[float] = [
            json.loads(self.rows(statement)[0][0])["query_block"]["r_total_time_ms"] / 1000
            for _ in range(ROUNDS + 1)
        ]
        return median(times[1:])


def make(documents: int) -> tuple[float, float, float]:
    """Makes the map: processor seconds, those of training and quality, and most memory."""
    with tempfile.TemporaryDirectory() as folder:
        report = Path(folder, "report")
        before = resource.getrusage(resource.RUSAGE_CHILDREN)
        start = time.monotonic()
        command = [
            sys.executable,
            "-m",
            "mapmaker",
            "sample",
            "--documents",
            str(documents),
            "--report",
            str(report),
        ]
        subprocess.run(command, check=True, stdout=subprocess.DEVNULL)
        wall = time.monotonic() - start
        after = resource.getrusage(resource.RUSAGE_CHILDREN)
        steps: dict[str, float] = json.loads(report.read_text(encoding="utf-8"))["seconds"]
    processor = after.ru_utime - before.ru_utime + after.ru_stime - before.ru_stime
    shown = sum(seconds for name, seconds in steps.items() if name.startswith("map of") or name == "quality")
    return processor, processor * shown / wall, after.ru_maxrss * 1024.0


def size_of(query: Query, like: str) -> float:
    """Bytes on disk of the tables whose names are like this."""
    return query.number(
        f"SELECT SUM(file_size) FROM information_schema.INNODB_SYS_TABLESPACES WHERE name LIKE '{like}'"
    )


def measure(query: Query, documents: int) -> Growth:
    """Makes a map of so many documents, and looks at it."""
    making, training, memory = make(documents)
    query.rows(*(statement.format(TEXT) for statement in PADDED))
    units = som.default_grid(documents).units
    sizes = query.rows(
        "SELECT node, COUNT(*) AS documents FROM som.sample_train JOIN som.sample_som USING (node)"
        " GROUP BY node ORDER BY ABS(COUNT(*) - {}), node".format(documents / units)
    )
    middling = [query.seconds(SELECTION.format(node)) for node, _ in sizes[:CHOSEN]]
    return Growth(
        documents,
        units,
        len(sizes),
        size_of(query, "texts/document"),
        size_of(query, "som/sample%"),
        median(middling),
        query.seconds(KEYWORDS),
        making,
        training,
        memory,
    )


def shown(documents: int) -> int:
    """How often training and quality look at a document, times documents."""
    schedule = som.Schedule()
    return documents * (som.passes_of(documents, schedule) + schedule.full_passes + 2)


def calculated(last: Growth, documents: int) -> Growth:
    """What follows from the largest map measured: see docs/scaling.md for the rules."""
    units = som.default_grid(documents).units
    more, wider = documents / last.documents, units / last.units
    node = (documents / units) / last.each
    return Growth(
        documents,
        units,
        round(last.nodes * wider),
        last.disk * more,
        last.disk_rest * more,
        last.selection * node,
        last.keywords * wider,
        (last.making - last.training) * more
        + (training := last.training * wider * shown(documents) / shown(last.documents)),
        training,
        last.memory + PER_PAIR * (units**2 - last.units**2) + PER_DOCUMENT * (documents - last.documents),
    )


def duration(seconds: float) -> str:
    """In the unit that gives a number of few digits."""
    for unit, size in (("days", 86400), ("h", 3600), ("min", 60)):
        if seconds >= 2 * size:
            return f"{seconds / size:,.0f} {unit}"
    return f"{seconds:,.0f} s"


COLUMNS: dict[str, Callable[[Growth], str]] = {
    "Documents": lambda it: f"{it.documents:,}",
    "Nodes": lambda it: f"{it.nodes:,}",
    "Documents of a middling node": lambda it: f"{it.each:,.0f}",
    "Documents on disk": lambda it: f"{it.disk / MB:,.0f} MB",
    "Assignments, keywords": lambda it: f"{it.disk_rest / MB:,.0f} MB",
    "Such a node chosen": lambda it: f"{it.selection * 1000:,.1f} ms",
    "All keywords": lambda it: f"{it.keywords * 1000:,.1f} ms",
    "Making: processor": lambda it: duration(it.making),
    "Making: memory": lambda it: f"{it.memory / MB:,.0f} MB",
}


def table(maps: Sequence[Growth], measured: int) -> Iterator[str]:
    """The lines of a table, a line for each map; the first ones were measured."""
    yield "| | " + " | ".join(COLUMNS) + " |"
    yield "|---" * (len(COLUMNS) + 1) + "|"
    for number, it in enumerate(maps):
        kind = "measured" if number < measured else "calculated"
        yield f"| {kind} | " + " | ".join(text(it) for text in COLUMNS.values()) + " |"


def main() -> None:
    """Measures the sizes that the arguments name."""
    query = Query()
    query.rows(f"SET GLOBAL innodb_buffer_pool_size={POOL}")
    maps: list[Growth] = []
    for documents in sorted(int(argument) for argument in sys.argv[1:]):
        maps.append(measure(query, documents))
        print(f"{documents:,} documents measured", flush=True)
    larger = [calculated(maps[-1], documents) for documents in LARGER if documents > maps[-1].documents]
    print("\n".join(table([*maps, *larger], len(maps))))


if __name__ == "__main__":
    main()
