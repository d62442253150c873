# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""A replica: does it follow, and does nobody write there?"""

from collections.abc import Iterator
from typing import Any

from mapmaker.doctor.finding import Finding, Severity
from mapmaker.doctor.patient import Patient
from mapmaker.driver import ServerError

LATE = 60  # seconds
OLD = "windows here see an older map than at other servers"


def check(patient: Patient) -> Iterator[Finding]:
    """All that a user may see of it."""
    running = patient.rows("SHOW STATUS LIKE 'Slave_running'") == [("Slave_running", "ON")]
    read_only = patient.setting("read_only") != "OFF"
    try:
        sources = followed(patient)
    except ServerError:
        yield from unseen(running, read_only)
    else:
        for source in sources:
            yield from followed_well(source)
        running = bool(sources)
    if running and not read_only:
        effect = "what somebody writes here by mistake stays different from the other servers for ever"
        yield finding(
            Severity.WARNING, "writable", "the replica takes changes of its own", effect, "set read_only=1"
        )


def followed(patient: Patient) -> list[dict[str, Any]]:
    """The state of each source by its columns. Raises the server's error where the user may not see it."""
    with patient.link.cursor() as cursor:
        cursor.execute("SHOW ALL SLAVES STATUS")
        names = [column[0] for column in cursor.description]
        return [dict(zip(names, row)) for row in cursor.fetchall()]


def unseen(running: bool, read_only: bool) -> Iterator[Finding]:
    """What can be told without the right to look."""
    if running:
        remedy = "GRANT SLAVE MONITOR ON *.* to the user who looks, not to windows"
        yield finding(Severity.NOTE, "unseen", "the user may not see how far behind it is", OLD, remedy)
    elif read_only:
        fault = "the server is read-only, but follows nobody"
        yield finding(Severity.WARNING, "stopped", fault, OLD, "START REPLICA, or look why it stopped")


def followed_well(source: dict[str, Any]) -> Iterator[Finding]:
    """Whether one source is followed, and closely."""
    states = {name: source[name] for name in ("Slave_IO_Running", "Slave_SQL_Running")}
    if set(states.values()) != {"Yes"}:
        reason = " ".join(str(source["Last_SQL_Error"] or source["Last_IO_Error"]).split())
        stopped = ", ".join(name for name, value in states.items() if value != "Yes")
        fault = f"the replica doesn't follow: {stopped}" + (f": {reason}" if reason else "")
        yield finding(Severity.WARNING, "stopped", fault, OLD, "mend the cause, then START REPLICA")
    elif (source["Seconds_Behind_Master"] or 0) > LATE:
        fault = f"the replica is {source['Seconds_Behind_Master']} s behind"
        yield finding(Severity.WARNING, "behind", fault, OLD, "wait, or give it what it lacks to keep up")


def finding(severity: Severity, code: str, fault: str, effect: str, remedy: str) -> Finding:
    """A finding on the replica."""
    return Finding(severity, f"replica.{code}", "server", fault, effect, remedy)
