# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""Indices: without them each choice of a node reads whole tables."""

from collections.abc import Iterator

from mapmaker.doctor.columns import error, warning
from mapmaker.doctor.finding import Finding, Severity
from mapmaker.doctor.patient import Patient


def check(patient: Patient) -> Iterator[Finding]:
    """Indices that are missing, and rows that a unique one would forbid."""
    if patient.assignment.has("node", "item"):
        yield from assignment(patient)
    if patient.documents.has("id"):
        yield from documents(patient)
    if patient.assignment.has("item") and patient.documents.has("id"):
        yield from orphans(patient)


def assignment(patient: Patient) -> Iterator[Finding]:
    """The look-up of a node's documents."""
    table = patient.assignment
    indices = patient.first_columns(table)
    key = "PRIMARY KEY (node, item)"
    if not any(columns[0] == "node" for columns in indices.values()):
        rows = patient.matching(table, "TRUE")
        fault = "no index begins with node"
        yield warning(
            "indices.node", table, fault, f"each choice of a node reads all {rows} rows", f"add {key}"
        )
    elif indices.get("PRIMARY", [])[:2] != ["node", "item"]:
        fault = f"the primary key isn't (node, item)"
        effect = "a node's rows lie scattered, and each is looked up for itself"
        yield Finding(Severity.NOTE, "indices.primary", table.full_name, fault, effect, f"make it {key}")
    query = f"SELECT COUNT(*) - COUNT(DISTINCT node, item) FROM {table.full_name}"
    if twice := patient.value(query):
        fault = f"{twice} rows name a node and item once more"
        yield warning("indices.twice", table, fault, "documents stand twice in their node", f"add {key}")


def documents(patient: Patient) -> Iterator[Finding]:
    """The look-up of a document."""
    table = patient.documents
    if not any(columns[0] == "id" for columns in patient.first_columns(table).values()):
        rows = patient.matching(table, "TRUE")
        effect = f"each choice of a node reads all {rows} documents"
        yield warning("indices.id", table, "no index begins with id", effect, "add PRIMARY KEY (id)")
    if twice := patient.value(f"SELECT COUNT(id) - COUNT(DISTINCT id) FROM {table.full_name}"):
        fault = f"{twice} documents have the id of another one"
        yield error("indices.id_twice", table, fault, "both stand where one is meant", "add PRIMARY KEY (id)")


def orphans(patient: Patient) -> Iterator[Finding]:
    """Items of no document."""
    table, documents = patient.assignment, patient.documents.full_name
    if patient.documents.is_link:
        # A join is handed over as one statement; a look for each row would be a statement, and fail where rows of links
        # are passed on as they come (spider_quick_mode=2).
        joined = patient.value(f"SELECT COUNT(*) FROM {table.full_name}, {documents} WHERE id = item")
        missing = max(0, patient.matching(table, "TRUE") - joined)
    else:
        missing = patient.matching(table, f"NOT EXISTS (SELECT 1 FROM {documents} AS d WHERE d.id = item)")
    if missing:
        fault = f"{missing} items are the id of no document"
        yield warning(
            "indices.orphans", table, fault, "they are not shown", "delete them, or add the documents"
        )
