# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""The user's rights: enough to read, and no more."""

import re
from collections.abc import Iterator

from mapmaker.doctor.columns import MISSING
from mapmaker.doctor.finding import Finding, Severity
from mapmaker.doctor.patient import Patient
from mapmaker.driver import ServerError

NO_RIGHT_IN_DATABASE = 1044
READING = {"SELECT", "SHOW VIEW", "USAGE", "SHOW DATABASES", "BINLOG MONITOR", "SLAVE MONITOR", "PROCESS"}


def check(patient: Patient) -> Iterator[Finding]:
    """Rights that are missing, or that no window needs."""
    for table in patient.tables:
        if table.failure and table.failure.code not in MISSING and not table.is_link:
            yield Finding(
                Severity.ERROR,
                "rights.read",
                table.full_name,
                f"it can't be read: {table.failure.message}",
                "the window shows nothing of it, and says nothing",
                f"GRANT SELECT ON {table.full_name}; if the table is missing, make it",
            )
    yield from database(patient)
    yield from more_than_needed(patient)


def database(patient: Patient) -> Iterator[Finding]:
    """A window connects to the map's database itself, which takes a right of any kind in it."""
    name = patient.assignment.database
    try:
        patient.link.select_db(name)
    except ServerError as error:
        if error.args[0] == NO_RIGHT_IN_DATABASE:
            yield Finding(
                Severity.ERROR,
                "rights.database",
                name,
                "the user has no right in this database",
                'the window says "Could not open SOM Database!" and stays empty',
                f"GRANT SELECT ON {patient.assignment.full_name}",
            )


def more_than_needed(patient: Patient) -> Iterator[Finding]:
    """Rights to change something."""
    grants = " ".join(row[0] for row in patient.rows("SHOW GRANTS"))
    lists = re.findall(r"GRANT (.+?) ON ", grants)
    given = {right.split("(")[0].strip() for rights in lists for right in re.split(r",(?![^(]*\))", rights)}
    if more := sorted(right for right in given - READING if right.isupper()):
        yield Finding(
            Severity.NOTE,
            "rights.more",
            "server",
            f"the user may do more than read: {', '.join(more)}",
            "names reach the statements without quotes, so a wrong name could do harm",
            "let a user with SELECT alone open windows",
        )
