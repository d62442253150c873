# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""The proof's tables as lines of text, which are also those of a page."""

from collections.abc import Sequence

from cluster.proof.scene import Sight
from cluster.proof.statements import DIFFERENT, Finding

STATEMENTS = ("Kind", "Statement", "Result", "One server", "Cluster", "Ratio")
FAULTS = ("Kind", "Fault", "The window shows", "Calls return", "Longest wait", "Right after", "The user must")


def row(cells: Sequence[str]) -> str:
    return f"| {' | '.join(cells)} |"


def head(titles: Sequence[str]) -> list[str]:
    return [row(titles), "|" + "---|" * len(titles)]


def finding_row(kind: str, finding: Finding) -> str:
    times, ratio = finding.times, f"{finding.times.ratio:.2f}"
    if finding.goal is not None:
        ratio += f" (at most {finding.goal}{': MISSED' if times.ratio > finding.goal else ''})"
    milliseconds = [f"{1000 * time:.1f} ms" for time in times]
    return row((kind, finding.statement, finding.outcome, *milliseconds, ratio))


def sight_row(kind: str, sight: Sight) -> str:
    times = (f"{sight.longest:.2f} s", f"{sight.right:.2f} s")
    return row((kind, sight.fault, sight.shown, sight.calls, *times, sight.remedy))


def is_wrong(found: Finding | Sight) -> bool:
    """Whether rows were lost, doubled or from another map."""
    return found.half if isinstance(found, Sight) else found.outcome == DIFFERENT
