# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""The tables and their columns: are they there, of the right name and type?"""

from collections.abc import Iterator

from mapmaker.doctor.finding import Finding, Severity
from mapmaker.doctor.patient import Patient, Table
from mapmaker.hostnames import PLAIN_NAME

NEEDED = {
    "assignment": (("node", "dist", "item"), "no node has documents"),
    "keywords": (("_assigned_topic", "_keywords"), "the tree has numbers only, no keywords and no signs"),
    "documents": (("id", "date"), "no node has documents: they are joined by id and sorted by date"),
}
SHOWN = {  # found by their exact names in a result
    "date": "the number of the node stands in for the date when times are compared",
    "title": "the table shows no titles at first",
    "URL": "a double click opens no address",
    "text": 'the text panel says "no text available"',
}
WHOLE = ("tinyint", "smallint", "mediumint", "int", "bigint")
MISSING = {1049: "the database does not exist", 1146: "the table does not exist"}


def check(patient: Patient) -> Iterator[Finding]:
    """All faults of tables and columns."""
    for role, (columns, effect) in NEEDED.items():
        table: Table = getattr(patient, role)
        if table.failure and table.failure.code in MISSING:
            yield error(
                "columns.no_table", table, MISSING[table.failure.code], effect, "make it, or name another"
            )
        elif table.columns:
            yield from missing(table, columns, effect)
    if patient.documents.columns:
        yield from shown(patient.documents)
        yield from ambiguous(patient.documents)
        yield from names(patient.documents)
    yield from types(patient)


def error(code: str, table: Table, fault: str, effect: str, remedy: str) -> Finding:
    """A finding that empties the window."""
    return Finding(Severity.ERROR, code, table.full_name, fault, effect, remedy)


def warning(code: str, table: Table, fault: str, effect: str, remedy: str) -> Finding:
    """A finding that costs a part of the window."""
    return Finding(Severity.WARNING, code, table.full_name, fault, effect, remedy)


def missing(table: Table, columns: tuple[str, ...], effect: str) -> Iterator[Finding]:
    """Columns that the statements name and that are not there."""
    for column in columns:
        if column not in table.columns:
            yield error("columns.missing", table, f"there is no column {column}", effect, f"add {column}")


def shown(documents: Table) -> Iterator[Finding]:
    """Columns that the window looks for by name."""
    for column, effect in SHOWN.items():
        found = documents.columns.get(column.lower())
        if found is None and column != "date":  # without a date there is an error already
            yield warning(
                "columns.absent", documents, f"there is no column {column}", effect, f"add {column}"
            )
        elif found is not None and found.name != column:
            fault = f"the column {column} is written {found.name}"
            yield warning("columns.case", documents, fault, effect, f"rename it to {column}")


def ambiguous(documents: Table) -> Iterator[Finding]:
    """Columns that the assignment table has, too."""
    for column in ("node", "dist"):
        if column in documents.columns:
            fault = f"there is a column {column}, as in the assignment table"
            effect = "every statement of the table fails, as the name means two columns"
            yield error("columns.ambiguous", documents, fault, effect, f"rename {column}")


def names(documents: Table) -> Iterator[Finding]:
    """Columns that can't be sorted by: their names go into a statement as they stand."""
    for column in documents.columns.values():
        if not PLAIN_NAME.fullmatch(column.name):
            effect = "sorting by it empties the table, and a name that is SQL is carried out"
            yield warning(
                "columns.name", documents, f"{column.name!r} needs quotes", effect, "rename the column"
            )


def types(patient: Patient) -> Iterator[Finding]:
    """Columns whose type makes comparisons slow or wrong."""
    whole = ((patient.assignment, "node"), (patient.assignment, "item"), (patient.documents, "id"))
    for table, column in whole:
        if column in table.columns and table.columns[column].type not in WHOLE:
            fault = f"{column} is {table.columns[column].type}, not a whole number"
            effect = (
                "values are converted row by row: indices are of no use, and texts that are no number are 0"
            )
            yield warning("columns.type", table, fault, effect, f"make {column} an INT")
    date = patient.documents.columns.get("date")
    if date and date.type not in ("datetime", "timestamp"):
        fault = f"date is {date.type}, not datetime"
        effect = (
            "dates are read by their text, sorted as such, and the date filter finds none or the wrong rows"
        )
        yield warning("columns.type", patient.documents, fault, effect, "make date a DATETIME")
