# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""How the server means to find a node's documents: what EXPLAIN says of the window's statement."""

from collections.abc import Iterator

from mapmaker.doctor.columns import warning
from mapmaker.doctor.finding import Finding
from mapmaker.doctor.patient import Patient
from mapmaker.driver import ServerError

MANY = 1000  # rows that are worth a word
WHOLE = ("ALL", "index")
HANDED_OVER = "Storage engine handles"
BATCHED = "BKA join"
BATCHES = "optimizer_switch='mrr=on,mrr_sort_keys=on', join_cache_level=6, spider_bka_mode=2, spider_semi_split_read=0"


def check(patient: Patient) -> Iterator[Finding]:
    """Ways that take long."""
    if not (patient.assignment.has("node", "dist", "item") and patient.documents.has("id", "date")):
        return
    try:
        steps = {table: (kind, rows, extra) for table, kind, rows, extra in explained(patient)}
    except ServerError:
        return  # the statement fails; columns.check says why
    if any(HANDED_OVER in extra for _, _, extra in steps.values()):
        return
    if patient.documents.is_link:
        yield from one_by_one(patient, steps.get("document", ("", 0, ""))[2])
    for table in (patient.assignment, patient.documents):
        kind, rows, _ = steps.get(table.name, ("", 0, ""))
        first = [columns[0] for columns in patient.first_columns(table).values()]
        if kind in WHOLE and rows >= MANY and ("node" if table is patient.assignment else "id") in first:
            fault = f"the server means to read about {rows} rows though there is an index"
            effect = "each choice of a node takes as long as a walk through the table"
            yield warning("plan.scan", table, fault, effect, "ANALYZE TABLE; look for ignored indices")


def explained(patient: Patient) -> list[tuple[str, str, int, str]]:
    """Table, kind of access, rows and further words of each step for a node that has documents."""
    assignment, documents = patient.assignment.full_name, patient.documents.full_name
    nodes = patient.rows(f"SELECT node FROM {assignment} LIMIT 1")
    statement = (
        f"EXPLAIN SELECT node, dist, document.* FROM {assignment}, {documents}"
        f" WHERE {documents}.id={assignment}.item AND node=%s ORDER BY date"
    )
    return [
        (row[2] or "", row[3] or "", int(row[8] or 0), row[9] or "")
        for row in patient.rows(statement, *(nodes or [(0,)])[0])
    ]


def one_by_one(patient: Patient, extra: str) -> Iterator[Finding]:
    """Links whose rows are fetched by one statement a document."""
    if BATCHED in extra:
        return
    fault = f"EXPLAIN doesn't say {BATCHED!r} of the documents"
    effect = "each document of a node is a statement to another server: choosing a node takes five to nine times as long"
    whole = not patient.documents.partitions and not patient.assignment.partitions
    join = "link both tables to one server, which then gets the whole join, or set " if whole else "set "
    yield warning("plan.one_by_one", patient.documents, fault, effect, join + BATCHES)
