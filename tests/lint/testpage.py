# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""Reads the tables of docs/testing.md and the tests that they name. Gives one line for each fault."""

import re
from collections.abc import Iterable, Iterator, Mapping
from typing import NamedTuple

HEADERS = {  # True: a row for each case
    "Case | Tests": True,
    "Ring | Folder | What it sees": False,
    "Program | Times | Takes | Outcome": False,
}
RINGS = ("module", "widget", "unit")  # from the outermost inwards; their programs must be named
NAME = re.compile(r"`(tst_\w+|[\w./]+\.py)::(\w+)`")
NAMES = re.compile(rf"{NAME.pattern}(, {NAME.pattern})*")
SLOTS = re.compile(r"^private (?:Q_SLOTS|slots):\n(.*?)(?=^\w|^\};)", re.MULTILINE | re.DOTALL)
FUNCTION = re.compile(r"^    void (\w+)\(\)", re.MULTILINE)
AROUND = {"initTestCase", "cleanupTestCase", "init", "cleanup"}
PYTHON_TEST = re.compile(r"^def (test_\w+)\(", re.MULTILINE)


class Row(NamedTuple):
    """A row of a table of cases: its line from 1 on, the case, and the cell that names the tests."""

    line: int
    case: str
    tests: str


class Program(NamedTuple):
    """A test program or file: the folder it lies in, and its tests."""

    ring: str
    tests: frozenset[str]


def cells(line: str) -> list[str]:
    """The cells of a table's line; a bar behind a backslash belongs to the text."""
    return [cell.strip() for cell in re.split(r"(?<!\\)\|", line.strip())[1:-1]]


def tables(text: str) -> Iterator[tuple[int, list[list[str]]]]:
    """Each table as the number of its first line and the cells of its lines."""
    table: list[list[str]] = []
    for number, line in enumerate([*text.splitlines(), ""], 1):
        if line.startswith("|"):
            table.append(cells(line))
        elif table:
            yield number - len(table), table
            table = []


def rows(text: str) -> Iterator[Row | str]:
    """The rows of all tables of cases. A text instead tells what is wrong with a row or a table."""
    for first, table in tables(text):
        has_cases = HEADERS.get(" | ".join(table[0]))
        if has_cases is None or len(table) < 3:
            yield f"{first}: no table of cases"
        elif has_cases:
            for number, row in enumerate(table[2:], first + 2):
                yield Row(number, *row) if len(row) == 2 else f"{number}: {len(row)} cells"


def cpp_tests(text: str) -> frozenset[str]:
    """The tests of a C++ program: its private slots without those that stand around tests or give data."""
    slots = {name for section in SLOTS.findall(text) for name in FUNCTION.findall(section)}
    return frozenset(name for name in slots - AROUND if not name.endswith("_data"))


def programs(sources: Mapping[str, str]) -> dict[str, Program]:
    """The tests of all sources, given by file name and text, under the names that the page uses."""
    found = {}
    for name, text in sources.items():
        ring = name.split("/")[-2]
        if name.endswith(".py"):
            found[name] = Program(ring, frozenset(PYTHON_TEST.findall(text)))
        else:
            found[name.rsplit("/", 1)[-1].removesuffix(".cpp")] = Program(ring, cpp_tests(text))
    return found


def missing(row: Row, known: Mapping[str, Program]) -> Iterator[str]:
    """Tests that a row names and nobody has."""
    for program, test in NAME.findall(row.tests):
        if program not in known:
            yield f"{row.line}: no such program: {program}"
        elif test not in known[program].tests:
            yield f"{row.line}: no such test: {program}::{test}"


def order(row: Row, known: Mapping[str, Program]) -> Iterator[str]:
    """The outermost ring stands first, and no test twice."""
    tests = NAME.findall(row.tests)
    if len(set(tests)) < len(tests):
        yield f"{row.line}: a test stands there twice"
    rings = [known[program].ring for program, _ in tests if program in known]
    places = [RINGS.index(ring) if ring in RINGS else len(RINGS) for ring in rings]
    if places != sorted(places):
        yield f"{row.line}: the outermost ring comes first: {', '.join(rings)}"


def form(row: Row) -> Iterator[str]:
    """A row has a case, and names tests with commas between."""
    if not row.case:
        yield f"{row.line}: no case"
    if not row.tests:
        yield f"{row.line}: no test"
    elif not NAMES.fullmatch(row.tests):
        yield f"{row.line}: no list of tests: {row.tests}"


def repetitions(all_rows: Iterable[Row]) -> Iterator[str]:
    """Cases that stand in the page before, whatever their letter case and punctuation."""
    lines: dict[str, int] = {}
    for row in all_rows:
        words = " ".join(re.findall(r"[\w+-]+", row.case.lower()))
        if words in lines:
            yield f"{row.line}: the case of line {lines[words]} again: {row.case}"
        lines.setdefault(words, row.line)


def unnamed(all_rows: Iterable[Row], known: Mapping[str, Program]) -> Iterator[str]:
    """Programs of the three rings that no row names."""
    named = {program for row in all_rows for program, _ in NAME.findall(row.tests)}
    for name, program in known.items():
        if program.ring in RINGS and name not in named:
            yield f"no case names {name}"


def faults(text: str, known: Mapping[str, Program]) -> list[str]:
    """All faults of the page, each with its line's number, where it has one, in front."""
    found = list(rows(text))
    good = [row for row in found if isinstance(row, Row)]
    lines = [row for row in found if isinstance(row, str)]
    for row in good:
        lines += [*form(row), *missing(row, known), *order(row, known)]
    return [*lines, *repetitions(good), *unnamed(good, known)]
