# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""Rounds of a fault with a host that is a shell script, on a server and a display that aren't there."""

from collections.abc import Iterator
from types import SimpleNamespace
from typing import Any

import pytest

from bench.runner import faults
from bench.runner.faultbed import Node, Reply
from bench.runner.faults import ANSWERS, FAULTS, NEW_WINDOW, Trial, check
from bench.runner.questions import QUESTIONS
from bench.runner.worker import Answer, BenchError, Worker

FIRST = Node(0, "2005-03-01 13:00:00", Reply("1", "7"))
CHOSEN = Node(2, "2006-05-10 12:00:00", Reply("2", "9"))
HOST = """echo '= |'; rows=1 date=7
while read -r word node _; do
    case $word in
        select) [ "$node" = 0 ] || rows=2 date=9; chosen=$chosen.; echo '= |' ;;
        ask) [ "$chosen" = "$LOST" ] && rows=-1 date=-1; echo "= | rows=$rows date=$date" ;;
        *) echo '= |' ;;
    esac
done"""


class Clock:
    """Goes on by what is given, at each look."""

    def __init__(self, *steps: float) -> None:
        self.time, self._steps = 0.0, iter(steps)

    def monotonic(self) -> float:
        self.time += next(self._steps)
        return self.time


def bed() -> Any:
    display = SimpleNamespace(wait_active=lambda title: None, kill=lambda: None)
    return SimpleNamespace(first=FIRST, chosen=CHOSEN, display=display)


@pytest.fixture
def trial() -> Iterator[Trial]:
    host = Worker(["sh", "-c", HOST])
    yield Trial(bed(), host)
    host.close()


def test_each_wait_is_measured_and_the_longest_counts(trial: Trial, monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.setattr(faults, "time", Clock(5, 1, 5, 3, 5, 2, 5, 4))
    trial.open()
    for _ in range(3):
        trial.ask(CHOSEN.reply)
    assert trial.figures == {ANSWERS: 3.0}
    trial.reopen()
    assert trial.figures == {ANSWERS: 3.0, NEW_WINDOW: 4.0}


def test_a_wrong_answer_fails(trial: Trial) -> None:
    trial.open()
    with pytest.raises(BenchError, match="rows is 2, not 0"):
        trial.ask(trial.nothing)


def test_questions_are_asked_until_the_displays_loss_is_known() -> None:
    host = Worker(["sh", "-c", HOST], {"LOST": "..."})
    trial = Trial(bed(), host)
    trial.open()
    trial.lose_display(CHOSEN.reply)
    assert trial.ask(CHOSEN.reply) == CHOSEN.reply  # what this host says to the next one
    host.close()


def test_each_value_may_be_one_of_several() -> None:
    replies = (Reply("-1", "-1"), Reply("2", "9"))
    for rows, date in (("2", "9"), ("2", "-1"), ("-1", "-1")):
        check(Answer({}, {"rows": rows, "date": date}), *replies)
    with pytest.raises(BenchError, match="date is 0, not -1 or 9"):
        check(Answer({}, {"rows": "2", "date": "0"}), *replies)


def test_every_fault_is_a_side_with_goals() -> None:
    (question,) = [question for question in QUESTIONS if question.name == "faults"]
    assert {side.label: side.figures for side in question.sides} == {
        name: fault.figures for name, fault in FAULTS.items()
    }
    assert set(question.absolute) == {ANSWERS, NEW_WINDOW}
    assert all(set(fault.figures) <= set(question.absolute) for fault in FAULTS.values())
