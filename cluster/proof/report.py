# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""The proof's tables as lines of text, which are also those of a page."""

from collections.abc import Sequence

from cluster.proof.scene import Sight
from cluster.proof.statements import DIFFERENT, Finding

STATEMENTS = ("Kind", "Statement", "Result", "Time of one server's")
FAULTS = ("Kind", "Fault", "The window shows", "Calls return", "Longest wait", "Right after", "The user must")


def row(cells: Sequence[str]) -> str:
    return f"| {' | '.join(cells)} |"


def head(titles: Sequence[str]) -> list[str]:
    return [row(titles), "|" + "---|" * len(titles)]


def is_missed(finding: Finding) -> bool:
    """Whether a statement takes longer than it should."""
    return finding.ratio is not None and finding.goal is not None and finding.ratio > finding.goal


def finding_row(kind: str, finding: Finding) -> str:
    time = "" if finding.ratio is None else f"{finding.ratio:.2f}"
    if finding.goal is not None:
        time += f" (at most {finding.goal}{': MISSED' if is_missed(finding) else ''})"
    return row((kind, finding.statement, finding.outcome, time))


def sight_row(kind: str, sight: Sight) -> str:
    times = (f"{sight.longest:.2f} s", f"{sight.right:.2f} s")
    return row((kind, sight.fault, sight.shown, sight.calls, *times, sight.remedy))


def is_wrong(found: Finding | Sight) -> bool:
    """Whether rows were lost, doubled or from another map."""
    return found.half if isinstance(found, Sight) else found.outcome == DIFFERENT
