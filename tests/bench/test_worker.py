# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""Sides that are shell scripts."""

import os

import pytest

from bench.runner import worker
from bench.runner.worker import Answer, BenchError, Worker

READY = "echo '= own=5 |'; "
ECHO = 'while read -r size; do echo "= time=$size | rows=$size"; done'


def side(script: str) -> Worker:
    return Worker(["sh", "-c", script])


def test_a_side_says_that_it_is_ready_and_answers_each_round() -> None:
    echo = side(READY + ECHO)
    assert echo.ready == Answer({"own": 5.0}, {})
    assert [echo.go(size) for size in ("7", "8")] == [
        Answer({"time": 7.0}, {"rows": "7"}),
        Answer({"time": 8.0}, {"rows": "8"}),
    ]
    echo.close()


@pytest.mark.parametrize(
    "script, said",
    [
        ("echo first >&2; echo why >&2; exit 2", "ended with 2; it said last: why"),
        ("echo something else; exit 0", "it said last: something else"),
        ("exit 3", "ended with 3; it said last: nothing"),
    ],
)
def test_a_side_that_fails_is_quoted(script: str, said: str) -> None:
    with pytest.raises(BenchError, match=said):
        side(script)


def test_a_side_that_has_ended_is_quoted_when_it_is_asked() -> None:
    ended = side(READY + "echo why >&2; exit 5")
    os.waitid(os.P_PID, ended._process.pid, os.WEXITED | os.WNOWAIT)
    with pytest.raises(BenchError, match="ended with 5; it said last: why"):
        ended.go("7")


@pytest.mark.parametrize("end", ["exit 4", "echo further"])
def test_a_side_must_end_well_and_silently(end: str) -> None:
    with pytest.raises(BenchError, match="ended with"):
        side(READY + "read -r line; " + end).close()


def test_a_side_that_hangs_is_ended(monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.setattr(worker, "LIMIT", 0.2)
    with pytest.raises(BenchError, match="gave no answer within"):
        side(READY + "read -r line; exec tail -f /dev/null").go("1")


def test_a_question_can_be_given_before_its_answer_is_waited_for() -> None:
    echo = side(READY + ECHO)
    echo.give("7")
    assert echo.answer() == Answer({"time": 7.0}, {"rows": "7"})
    echo.close()


def test_a_line_that_is_expected_comes_before_the_answer() -> None:
    echo = side(READY + "echo show error; " + ECHO)
    echo.expect("show error")
    assert echo.go("7").results == {"rows": "7"}
    echo.close()


def test_another_line_than_expected_fails() -> None:
    with pytest.raises(BenchError, match="it said last: another"):
        side(READY + "echo another; read -r line").expect("show error")


def test_a_side_has_further_variables() -> None:
    assert Worker(["sh", "-c", 'echo "= | name=$NAME"'], {"NAME": "value"}).ready.results == {"name": "value"}
