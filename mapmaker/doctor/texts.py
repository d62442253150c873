# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""Sizes of the texts: a choice of a node carries all columns of all its documents to the window."""

from collections.abc import Iterator

from mapmaker.doctor.columns import warning
from mapmaker.doctor.finding import Finding
from mapmaker.doctor.patient import Patient

MEGABYTE = 1024 * 1024
LARGEST_TEXT = 16 * MEGABYTE
LARGEST_NODE = 256 * MEGABYTE


def check(patient: Patient) -> Iterator[Finding]:
    """Texts that are very long, or were cut when they were stored."""
    table = patient.documents
    if not table.has("id", "text"):
        return
    if count := patient.matching(table, "LENGTH(text) > %s", LARGEST_TEXT):
        example = patient.example("LENGTH(text) > %s", LARGEST_TEXT)
        fault = f"{count} texts are longer than {LARGEST_TEXT // MEGABYTE} MB, {example}"
        effect = "the window stands still while it lays out such a text"
        yield warning("texts.long", table, fault, effect, "store a part, and the whole behind the address")
    width = table.columns["text"].length
    if width and (count := patient.matching(table, "LENGTH(text) > %s", width - 4)):
        fault = f"{count} texts fill the column to its last byte, {patient.example('LENGTH(text) > %s', width - 4)}"
        yield warning(
            "texts.cut", table, fault, "their ends are probably lost", "make text a MEDIUMTEXT, store anew"
        )
    if patient.assignment.has("node", "item"):
        yield from largest_node(patient)


def largest_node(patient: Patient) -> Iterator[Finding]:
    """The node with most documents; to add up the texts of all nodes would take minutes."""
    largest = (
        f"SELECT node FROM {patient.assignment.full_name} GROUP BY node ORDER BY COUNT(*) DESC, node LIMIT 1"
    )
    for (node,) in patient.rows(largest):
        size = patient.value(
            f"SELECT SUM(LENGTH(d.text)) FROM {patient.assignment.full_name} AS a"
            f" JOIN {patient.documents.full_name} AS d ON d.id = a.item WHERE a.node = %s",
            node,
        )
        if (size or 0) > LARGEST_NODE:
            fault = f"the texts of node {node}, the largest, have {int(size) // MEGABYTE} MB together"
            effect = "they are all carried over and kept in memory when the node is chosen"
            yield warning("texts.node", patient.assignment, fault, effect, "keep fewer documents in a node")
