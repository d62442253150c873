# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""The proof of clusters: its judgement of rows, and a short run of it with the module's window on each kind."""

import os
import signal
import subprocess
from collections.abc import Callable, Iterator
from pathlib import Path
from typing import cast

import pytest
from conftest import TOP, wait_until

from cluster.proof import report, scene, statements
from cluster.proof.scene import NEW_WINDOW, NOTHING, SAME_WINDOW, Scene
from cluster.proof.window import Look, Window
from cluster.runner.client import Row

BUILD = Path(os.environ.get("QTUTILS_BUILD", TOP / "build-dev"))
RIGHT, NONE, HALF = Look("2", "a\nb"), Look("0", ""), Look("1", "a")


def rows(*days: int) -> list[Row]:
    """Rows as a selection has them, with a number of their own and these days."""
    return [
        (b"1", b"0.5", str(number).encode(), f"2001-01-{day:02}".encode()) for number, day in enumerate(days)
    ]


GOOD = rows(1, 2, 2, 3)


@pytest.mark.parametrize(
    "other, outcome",
    [
        (GOOD, statements.SAME),
        ([GOOD[0], GOOD[2], GOOD[1], GOOD[3]], statements.TIES),
        (GOOD[:3], statements.DIFFERENT),
        ([*GOOD, GOOD[3]], statements.DIFFERENT),
        ([*GOOD[:3], GOOD[2]], statements.DIFFERENT),
        ([GOOD[1], GOOD[0], *GOOD[2:]], statements.DIFFERENT),
        ([], statements.DIFFERENT),
    ],
)
def test_rows_that_are_lost_doubled_or_misplaced_are_found(other: list[Row], outcome: str) -> None:
    assert statements.compare_by_date(GOOD, other) == outcome


def test_keywords_must_stand_in_the_same_order() -> None:
    assert statements.compare_ordered(GOOD, GOOD) == statements.SAME
    assert statements.compare_ordered(GOOD, [GOOD[0], GOOD[2], GOOD[1], GOOD[3]]) == statements.DIFFERENT


def test_a_time_above_its_goal_is_missed() -> None:
    finding = statements.Finding("2: 10,000 documents", statements.SAME, statements.Times(0.1, 0.16), 1.5)
    shown = report.finding_row("head", finding)
    assert shown == "| head | 2: 10,000 documents | same | 100.0 ms | 160.0 ms | 1.60 (at most 1.5: MISSED) |"
    good = finding._replace(times=statements.Times(0.1, 0.15))
    assert report.finding_row("head", good).endswith("| 1.50 (at most 1.5) |")


class FakeWindow:
    """Shows one thing after the other, then the last for ever; a new window shows what is right."""

    def __init__(self, *looks: Look) -> None:
        self._looks = list(looks)

    def look(self, node: int) -> Look:
        return self._looks.pop(0) if len(self._looks) > 1 else self._looks[0]

    def first_date(self) -> str:
        return "untouched"

    def close(self) -> None:
        self._looks = [RIGHT]

    def open(self) -> list[str]:
        return []


@pytest.fixture
def hurry(monkeypatch: pytest.MonkeyPatch) -> None:
    """Patience of a moment."""
    monkeypatch.setattr(scene, "PATIENCE", 0.01)
    monkeypatch.setattr(scene, "STEADY", 0.01)
    monkeypatch.setattr(scene, "PAUSE", 0.001)


@pytest.mark.parametrize(
    "looks, remedy, half",
    [
        ([RIGHT], NOTHING, False),
        ([NONE, RIGHT], SAME_WINDOW, False),
        ([RIGHT, NONE, RIGHT], SAME_WINDOW, False),
        ([NONE], NEW_WINDOW, False),
        ([HALF, RIGHT], SAME_WINDOW, True),
        ([RIGHT, HALF], NEW_WINDOW, True),
    ],
)
def test_what_the_window_shows_is_judged(hurry: None, looks: list[Look], remedy: str, half: bool) -> None:
    sight = Scene(cast(Window, FakeWindow(*looks)), RIGHT).see("a fault", lambda: None)
    assert (sight.remedy, sight.half, "OTHER ROWS" in sight.shown) == (remedy, half, half)


@pytest.fixture
def proof(open_folder: Path, need_clusters: None) -> Iterator[Callable[..., "subprocess.Popen[str]"]]:
    """Starts cluster/prove with the module under test; it is ended with the test."""
    running: list["subprocess.Popen[str]"] = []

    def start(*arguments: str) -> "subprocess.Popen[str]":
        command = [
            str(TOP / "cluster" / "prove"),
            "--no-install",
            "--short",
            "--build",
            str(BUILD),
            *arguments,
        ]
        environment = {**os.environ, "TMPDIR": str(open_folder)}
        running.append(subprocess.Popen(command, env=environment, stdout=subprocess.PIPE, text=True))
        return running[-1]

    yield start
    for process in running:
        process.terminate()
        process.wait()
    wait_until("nothing is left", lambda: not left(open_folder))


def left(folder: Path) -> list[str]:
    """Command lines of processes, and folders, that belong to a proof."""
    lines = subprocess.run(["ps", "-eo", "args"], capture_output=True, text=True, check=True).stdout
    mine = [line for line in lines.splitlines() if f"{folder}/qtutils-" in line]
    return [*map(str, folder.glob("qtutils-*")), *mine]


def cells(lines: list[str]) -> list[list[str]]:
    return [[cell.strip() for cell in line.strip("|").split("|")] for line in lines]


def test_each_kind_stands_a_short_proof(proof: Callable[..., "subprocess.Popen[str]"]) -> None:
    process = proof()
    text, _ = process.communicate()
    assert process.returncode == 0, text
    found, seen = (part.splitlines() for part in text.split("\n\n"))
    assert [row[0] for row in cells(found)[2::5]] == ["replicas", "galera", "head", "shards"]
    good = {statements.SAME, statements.TIES, statements.ANOTHER_ROW}
    assert {row[2] for row in cells(found)[2:]} <= good
    remedies = {(row[0], row[1]): row[6] for row in cells(seen)[2:]}
    assert remedies[("replicas", "a node is killed")] == NEW_WINDOW
    assert remedies[("galera", "a node is killed")] == NEW_WINDOW
    assert remedies[("head", "a node is killed")] in (NOTHING, SAME_WINDOW)
    assert remedies[("shards", "a shard is killed")].startswith("wait until it is back, then choose")


def test_a_killed_proof_leaves_nothing(
    proof: Callable[..., "subprocess.Popen[str]"], open_folder: Path
) -> None:
    process = proof("replicas")
    wait_until("servers run", lambda: list(open_folder.glob("qtutils-*/replicas/db1/socket")))
    process.send_signal(signal.SIGKILL)
    wait_until("nothing is left", lambda: not left(open_folder))
