# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""A node of a Galera cluster: does it answer, is it up to date, and do the others have the same rows?"""

from collections.abc import Iterator
from typing import Any

from mapmaker.doctor.columns import error, warning
from mapmaker.doctor.finding import Finding, Severity
from mapmaker.doctor.patient import Patient, Table

SAFE = 3  # nodes: the majority is left when one is gone
STATUS = "SHOW STATUS LIKE 'wsrep%'"


def refusal(link: Any) -> Iterator[Finding]:
    """A node that answers no statement on tables; nothing else can be found there."""
    with link.cursor() as cursor:
        cursor.execute(STATUS)
        state = dict(cursor.fetchall())
        cursor.execute("SHOW VARIABLES WHERE variable_name IN ('wsrep_on', 'wsrep_dirty_reads')")
        variables = dict(cursor.fetchall())
    if variables == {"wsrep_on": "ON", "wsrep_dirty_reads": "OFF"} and state["wsrep_ready"] == "OFF":
        yield finding(
            Severity.ERROR,
            "refuses",
            f"the node takes no statements: its cluster is {state['wsrep_cluster_status']}, it is"
            f" {state.get('wsrep_local_state_comment')}",
            "a window can't open its connection, or stays empty (error 1047)",
            "start the other nodes; with wsrep_dirty_reads=ON windows could go on reading",
        )


def check(patient: Patient) -> Iterator[Finding]:
    """State of the node and its cluster, and tables that it doesn't share."""
    if patient.setting("wsrep_on") != "ON":
        return
    state: dict[str, str] = {name: value for name, value in patient.rows(STATUS)}
    yield from node(state)
    yield from company(int(state.get("wsrep_cluster_size", 0)))
    if patient.setting("wsrep_dirty_reads") != "ON":
        yield finding(
            Severity.NOTE,
            "dirty_reads",
            "wsrep_dirty_reads is off",
            "when the majority of the nodes is gone, windows stay empty though the rows are here",
            "set wsrep_dirty_reads=ON, if old rows are better than none",
        )
    for table in patient.tables:
        yield from shared(patient, table)
    yield from counted(patient)


def node(state: dict[str, str]) -> Iterator[Finding]:
    """Whether the node follows the others."""
    if state.get("wsrep_cluster_status") != "Primary":
        yield finding(
            Severity.WARNING,
            "no_quorum",
            f"the node is without the majority: {state.get('wsrep_cluster_status')}",
            "windows see the rows as they were when the others were lost",
            "start the other nodes",
        )
    elif (name := state.get("wsrep_local_state_comment")) != "Synced":
        effect = "windows may see an older map, and wait while the node sends its rows to another one"
        yield finding(
            Severity.WARNING,
            "state",
            f"the node is {name}, not Synced",
            effect,
            "lead windows to another node",
        )


def company(nodes: int) -> Iterator[Finding]:
    """Whether the cluster outlives one node."""
    if nodes < SAFE:
        severity = Severity.NOTE if nodes == SAFE - 1 else Severity.WARNING
        effect = (
            "when one is gone, the other stops answering" if nodes > 1 else "when it is gone, so is the map"
        )
        fault = f"the cluster has {nodes} node{'s' if nodes > 1 else ''}"
        yield finding(severity, "size", fault, effect, "let three or more take part")


def shared(patient: Patient, table: Table) -> Iterator[Finding]:
    """Whether the other nodes have the rows, in the same order."""
    if table.engine and table.engine != "INNODB" and not table.is_link:
        fault = f"engine {table.engine} stays on this node"
        yield error(
            "cluster.engine", table, fault, "windows at other nodes see none of these rows", "use InnoDB"
        )
    elif table.engine == "INNODB" and "PRIMARY" not in patient.first_columns(table):
        effect = "other nodes may have the rows in another order, and refuse to delete some"
        yield warning("cluster.no_key", table, "there is no primary key", effect, "add one")


def counted(patient: Patient) -> Iterator[Finding]:
    """Numbers that the server gives leave gaps."""
    table = patient.keywords
    if patient.rows(
        "SELECT 1 FROM information_schema.COLUMNS WHERE table_schema = %s AND table_name = %s"
        " AND column_name = 'node' AND extra LIKE '%%auto_increment%%'",
        table.database,
        table.name,
    ):
        effect = "nodes have the keywords and signs of other nodes as soon as a cluster counts in steps"
        fault = "the server counts the nodes (AUTO_INCREMENT)"
        yield warning("cluster.auto_increment", table, fault, effect, "write the numbers")


def finding(severity: Severity, code: str, fault: str, effect: str, remedy: str) -> Finding:
    """A finding on the cluster."""
    return Finding(severity, f"cluster.{code}", "server", fault, effect, remedy)
