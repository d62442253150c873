# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""Questions asked of sides that answer from a list, and what is made of their answers."""

from collections.abc import Mapping

import pytest

from bench.runner.measure import Line, Samples, compare, flatness, growth, sample
from bench.runner.question import LIMIT, MODULE, PEER, Question, Side
from bench.runner.report import table
from bench.runner.worker import Answer, BenchError, parsed

SIDES = (Side(MODULE, "m", label="shown"), Side(LIMIT, "l"), Side(PEER, "p"))


class Listed:
    """Answers with its program's times, and says in which order it was asked."""

    asked: list[str] = []
    times: Mapping[str, list[float]] = {"m": [1.2, 3.0], "l": [1.0, 2.0], "p": [2.0, 5.0]}
    rows = {"m": "7", "l": "7", "p": "7"}

    def __init__(self, command: list[str]) -> None:
        self.name = command[0].removeprefix("dir/bench_")
        self.left = list(self.times[self.name])

    def sample(self, size: int) -> Answer:
        self.asked.append(self.name)
        return Answer({"time": self.left.pop(0) * size}, {"rows": self.rows[self.name]})

    def close(self) -> None:
        self.asked.append("end")


def question(sampler: type[Listed] = Listed) -> Question:
    goals = {"time": {10: 1.3, 100: 1.4, 1000: 1.4}}
    rounds = {1: 2, 10: 2, 100: 2, 1000: 2}
    return Question(
        "q", "", SIDES, rounds, lambda data: None, sampler=sampler, of_limit=goals, grows=("time",)
    )


def lines(size: int = 10) -> list[Line]:
    return list(compare(question(), size, sample(question(), size, "dir")))


def test_sides_are_asked_in_turn_and_ended() -> None:
    Listed.asked.clear()
    sample(question(), 10, "dir")
    assert "".join(Listed.asked) == "mlpplm" + "end" * 3


def test_a_different_result_fails() -> None:
    class Wrong(Listed):
        rows = {"m": "6", "l": "7", "p": "7"}

    with pytest.raises(BenchError, match="10: rows is 6 in m, but 7 in l"):
        sample(question(Wrong), 10, "dir")


def test_ratios_are_medians_of_rounds() -> None:
    (line,) = lines()
    assert (line.module, line.limit, line.peer) == (21.0, 15.0, 35.0)
    assert line.of_limit == pytest.approx(1.35)
    assert line.of_peer == pytest.approx(0.6)


def test_a_ratio_above_its_goal_misses() -> None:
    assert [lines(size)[0].misses() for size in (10, 100)] == [True, False]


def line_with_goal(goal: float, *times: float) -> Line:
    side = SIDES[0]
    asked = Question("q", "", (side,), {10: 3}, lambda data: None, absolute={"time": {10: goal}})
    samples: Samples = {side: [Answer({"time": time}, {}) for time in times]}
    (line,) = compare(asked, 10, samples)
    return line


def test_a_value_can_have_a_goal_that_no_round_may_exceed() -> None:
    line = line_with_goal(3, 1.0, 2.0, 4.0)
    assert (line.module, line.of_limit, line.limit_goal, line.misses()) == (2.0, 4.0, 3, True)
    assert not line_with_goal(4, 1.0, 2.0, 4.0).misses()


def test_a_side_can_have_figures_of_its_own() -> None:
    sides = (Side(MODULE, "m"), Side(MODULE, "m", label="more", figures=("time", "memory")))
    asked = Question("q", "", sides, {10: 1}, lambda data: None)
    samples: Samples = {side: [Answer({"time": 4.0, "memory": 5.0}, {})] for side in sides}
    found = [(line.label, line.figure) for line in compare(asked, 10, samples)]
    assert found == [("", "time"), ("more", "time"), ("more", "memory")]
    samples[sides[1]][0].figures.pop("memory")
    with pytest.raises(BenchError, match="m gives no memory"):
        list(compare(asked, 10, samples))


def test_growth_is_compared_with_the_limits() -> None:
    module = {1: 9.0, 10: 1.0, 100: 20.0, 1000: 200.0}
    given = [Line("q", "", "time", size, value, size / 10) for size, value in module.items()]
    (line,) = growth(question(), given)
    assert line.limit == pytest.approx(1.0)
    assert line.of_limit == pytest.approx(0.150515)
    assert line.misses()


def test_a_larger_size_is_compared_with_a_smaller_one() -> None:
    asked = Question("q", "", SIDES, {10: 1, 100: 1}, lambda data: None, flat={"time": (100, 10, 1.1)})
    given = [Line("q", "", "time", 10, 1.0), Line("q", "", "time", 100, 1.2)]
    (line,) = flatness(asked, given)
    assert line.of_limit == pytest.approx(1.2)
    assert line.misses()


def test_answers_are_figures_and_results() -> None:
    assert parsed("time=1.5e-3 own=7 | rows=3 first=2004-01-01T00:00:00") == Answer(
        {"time": 0.0015, "own": 7.0}, {"rows": "3", "first": "2004-01-01T00:00:00"}
    )


@pytest.mark.parametrize("line", ["time=1.5", "time=fast |", "time |", "a=1 | b=2 | c=3"])
def test_other_lines_are_no_answers(line: str) -> None:
    with pytest.raises(BenchError, match="not an answer"):
        parsed(line)


def test_the_table_shows_times_in_milliseconds_and_misses() -> None:
    row = table(lines()).splitlines()[2].replace(" ", "")
    assert row == "|q|shown|10|time,ms|21,000|15,000|35,000|1.35|1.30|0.60||misses|"


def test_the_table_shows_a_value_and_its_goal_in_the_figures_unit() -> None:
    row = table([line_with_goal(1, 0.001, 0.002, 0.0045)]).splitlines()[2].replace(" ", "")
    assert row == "|q|shown|10|time,ms|2|||4.5|1,000||||"
