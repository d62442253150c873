# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""The table of a run, for people and for programs."""

import dataclasses
import json
import os
import platform
from collections.abc import Iterable, Sequence
from pathlib import Path

from bench.runner.measure import Line

SECONDS = ("ms", 1e3)
MEMORY = ("MB", 1 / 1024)  # of kilobytes
MICROSECONDS = ("us", 1e6)
UNITS = {
    "median": MICROSECONDS,
    "p99": MICROSECONDS,
    "first": MEMORY,
    "repeated": MEMORY,
    "peak": MEMORY,
    "memory": MEMORY,
    "wakeups": ("", 1.0),
}
HEAD = ("question", "", "size", "figure", "module", "limit", "peer", "/limit", "goal", "/peer", "goal", "")
RIGHT = {2, *range(4, 11)}


def number(value: float | None, digits: int = 3) -> str:
    return "" if value is None else f"{value:,.{digits}g}" if abs(value) < 1000 else f"{value:,.0f}"


def ratio(value: float | None) -> str:
    return "" if value is None else f"{value:.2f}"


def cells(line: Line) -> tuple[str, ...]:
    is_growth = line.figure.startswith("growth")
    unit, scale = ("", 1.0) if is_growth else UNITS.get(line.figure.split(" against ")[0], SECONDS)

    def scaled(value: float | None) -> str:
        return number(None if value is None else value * scale)

    values = [scaled(value) for value in (line.module, line.limit, line.peer)]
    of_limit = [line.of_limit, line.limit_goal]
    ratios = [scaled(value) if line.is_absolute else ratio(value) for value in of_limit]
    ratios += [ratio(value) for value in (line.of_peer, line.peer_goal)]
    name = f"{line.figure}, {unit}" if unit else line.figure
    return (
        line.question,
        line.label,
        f"{line.size:,}",
        name,
        *values,
        *ratios,
        "misses" if line.misses() else "",
    )


def table(lines: Iterable[Line]) -> str:
    """In Markdown, its columns aligned."""
    rows = [HEAD, *(cells(line) for line in lines)]
    widths = [max(len(row[column]) for row in rows) for column in range(len(HEAD))]
    texts = []
    for row in rows:
        texts.append("| " + " | ".join(fit(row[i], widths[i], i in RIGHT) for i in range(len(HEAD))) + " |")
    rule = "|" + "|".join("-" * (w + 1) + (":" if i in RIGHT else "-") for i, w in enumerate(widths)) + "|"
    return "\n".join([texts[0], rule, *texts[1:]])


def fit(text: str, width: int, is_right: bool) -> str:
    return text.rjust(width) if is_right else text.ljust(width)


def machine() -> dict[str, str | int]:
    return {"system": platform.platform(), "cores": os.cpu_count() or 0}


def write_json(path: Path, lines: Sequence[Line]) -> None:
    data = {"machine": machine(), "lines": [dataclasses.asdict(line) for line in lines]}
    path.write_text(json.dumps(data, indent=1) + "\n", encoding="utf-8")
