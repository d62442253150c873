# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""The rows of the keyword table: row k must be that of node k, though nobody asks for an order."""

from collections.abc import Iterator

from mapmaker.doctor.columns import error, warning
from mapmaker.doctor.finding import Finding
from mapmaker.doctor.patient import SPIDER, Patient

SIGNS = 21
WRONG_PLACES = "nodes have the keywords and signs of other nodes"
KEY = "give it InnoDB and PRIMARY KEY (node), and no other index"


def check(patient: Patient) -> Iterator[Finding]:
    """Order and number of the rows, and what the tree can't show of them."""
    table = patient.keywords
    if not table.has("_assigned_topic", "_keywords"):
        return
    if table.has("node"):
        yield from numbers(patient)
        yield from order(patient)
    else:
        fault = "there is no column node"
        yield warning("keywords.no_node", table, fault, "rows may come in any order: " + WRONG_PLACES, KEY)
    yield from contents(patient)


def numbers(patient: Patient) -> Iterator[Finding]:
    """Nodes count from 0 without a gap, and no assignment lies beyond them."""
    table, assignment = patient.keywords, patient.assignment
    rows, nodes, first, last = patient.rows(
        f"SELECT COUNT(*), COUNT(DISTINCT node), MIN(node), MAX(node) FROM {table.full_name}"
    )[0]
    if not rows:
        effect = "the tree has numbers only, and a warning goes to the debug channel"
        yield error("keywords.empty", table, "it has no rows", effect, "write a row for each node")
        return
    if (first, last, nodes) != (0, rows - 1, rows):
        fault = (
            f"{rows} rows have {nodes} different nodes from {first} to {last}, not each from 0 to {rows - 1}"
        )
        yield error("keywords.numbers", table, fault, WRONG_PLACES, "number the nodes from 0, a row for each")
    if assignment.has("node") and assignment.full_name != table.full_name:
        beyond = patient.value(
            f"SELECT COUNT(DISTINCT node) FROM {assignment.full_name} WHERE node < 0 OR node >= %s", rows
        )
        if beyond:
            fault = f"{beyond} nodes with documents have no row"
            yield error("keywords.beyond", table, fault, "these nodes have no keywords", "write their rows")


def order(patient: Patient) -> Iterator[Finding]:
    """Whether the rows come in the nodes' order, and will go on doing so."""
    table = patient.keywords
    statement = f"SELECT _assigned_topic, _keywords FROM {table.full_name} "
    if patient.rows(statement) != patient.rows(statement + "ORDER BY node"):
        yield error("keywords.order", table, "the rows don't come in the nodes' order", WRONG_PLACES, KEY)
    primary = patient.first_columns(table).get("PRIMARY", [""])
    if table.engine not in ("INNODB", SPIDER) or primary[0] != "node" or table.partitions:
        kept = f"engine {table.engine}, primary key ({', '.join(primary)})"
        fault = f"nothing keeps the order: {kept}" + (
            f", partitions by {table.partitions}" if table.partitions else ""
        )
        effect = "after changes the rows may come in another order: " + WRONG_PLACES
        yield warning("keywords.key", table, fault, effect, KEY + " and no partitions")


def contents(patient: Patient) -> Iterator[Finding]:
    """Topics without a sign, and keywords that are cut."""
    table = patient.keywords
    strange = f"_assigned_topic IS NULL OR _assigned_topic < 0 OR _assigned_topic >= {SIGNS}"
    if count := patient.matching(table, strange):
        fault = f"{count} rows have a topic that is not 0 to {SIGNS - 1}"
        yield warning(
            "keywords.topic", table, fault, "these nodes have no sign, or that of topic 0", "set it"
        )
    one_feed = "CHAR_LENGTH(_keywords) - CHAR_LENGTH(REPLACE(_keywords, '\\n', '')) = 1"
    if count := patient.matching(table, one_feed):
        fault = f"{count} rows have two keywords in lines of their own"
        effect = "of exactly two lines the tree shows the first only"
        yield warning("keywords.two", table, fault, effect, "write two keywords in one line: a, b")
