# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""All checks in their order."""

from typing import Any

from mapmaker.doctor import (
    accounts,
    addresses,
    columns,
    dates,
    galera,
    indices,
    keywordrows,
    links,
    plan,
    replication,
    rights,
    server,
    texts,
)
from mapmaker.doctor.finding import Finding
from mapmaker.doctor.patient import Patient
from mapmaker.hostnames import HostNames
from mapmaker.progress import Track, silent

CHECKS = (
    server.check,
    galera.check,
    replication.check,
    accounts.check,
    columns.check,
    rights.check,
    links.check,
    keywordrows.check,
    indices.check,
    plan.check,
    dates.check,
    addresses.check,
    texts.check,
)


def examine(link: Any, host: str, names: HostNames, track: Track = silent) -> list[Finding]:
    """What is wrong with the database of a window; `host` is where the connection leads.

    Raises NameFault for bad names, and the server's own error when the connection is lost.
    """
    names.check()
    if refused := list(galera.refusal(link)):
        return refused
    patient = Patient(link, host, names)
    return [finding for check in track(CHECKS) for finding in check(patient)]
