# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""What a check finds: a fault, what it does to the window, and what helps."""

import json
from collections.abc import Iterator, Sequence
from enum import IntEnum
from typing import NamedTuple


class Severity(IntEnum):
    """How bad a finding is. The numbers only give the order."""

    NOTE = 0  # works, could be better
    WARNING = 1  # the window works, but is slow, or shows some rows wrongly
    ERROR = 2  # the window stays empty, shows the wrong things, or is a danger


EXIT_CODES = {Severity.NOTE: 0, Severity.WARNING: 1, Severity.ERROR: 3}


class Finding(NamedTuple):
    """One fault of a database; all texts are one line without a full stop."""

    severity: Severity
    code: str  # kind of check and fault, such as "columns.missing"; doesn't change
    place: str  # the table, or "server"
    fault: str
    effect: str
    remedy: str


def exit_code(findings: Sequence[Finding]) -> int:
    """By the worst finding: 0 for none or notes, 1 for warnings, 3 for errors."""
    return EXIT_CODES[max((finding.severity for finding in findings), default=Severity.NOTE)]


def text_lines(findings: Sequence[Finding]) -> Iterator[str]:
    """The findings for a reader, the worst first."""
    for finding in sorted(findings, key=lambda finding: -finding.severity):
        yield f"{finding.severity.name.lower()}: {finding.place}: {finding.fault} [{finding.code}]"
        yield f"  effect: {finding.effect}"
        yield f"  remedy: {finding.remedy}"
    counts = [sum(finding.severity is severity for finding in findings) for severity in reversed(Severity)]
    yield "errors: {}, warnings: {}, notes: {}".format(*counts)


def json_text(findings: Sequence[Finding]) -> str:
    """The findings as a JSON list, in the order of the checks."""
    objects = [{**finding._asdict(), "severity": finding.severity.name.lower()} for finding in findings]
    return json.dumps(objects, indent=2, ensure_ascii=False)
