# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""Runs a question and makes lines of its figures."""

from collections.abc import Iterator, Mapping, Sequence
from dataclasses import dataclass
from statistics import median

from bench.runner.question import LIMIT, MODULE, PEER, Question, Side
from bench.runner.ratios import exponent, in_turn, paired
from bench.runner.worker import Answer, BenchError

Samples = Mapping[Side, Sequence[Answer]]
GROWTH_SIZES = 3  # the upper ones
GROWTH_GOAL = 0.05  # that the module's exponent may be larger than the limit's


@dataclass(frozen=True)
class Line:
    """A line of the table. Values are medians; ratios are medians of paired rounds; None where there is none.

    Where the goal is a value, the largest of the rounds and that goal stand in place of the ratio to the limit.
    """

    question: str
    label: str
    figure: str
    size: int
    module: float
    limit: float | None = None
    peer: float | None = None
    of_limit: float | None = None
    limit_goal: float | None = None
    of_peer: float | None = None
    peer_goal: float | None = None
    is_absolute: bool = False

    def misses(self) -> bool:
        pairs = ((self.of_limit, self.limit_goal), (self.of_peer, self.peer_goal))
        return any(ratio is not None and goal is not None and ratio > goal for ratio, goal in pairs)


def sample(question: Question, size: int, programs: str) -> Samples:
    """The answers of all sides, taken in turn. Raises BenchError when results differ."""
    samplers = {side: question.sampler(side.command(programs)) for side in question.sides}
    answers: dict[Side, list[Answer]] = {side: [] for side in question.sides}
    for number in range(question.rounds[size]):
        for side in in_turn(question.sides, number):
            answers[side].append(samplers[side].sample(size))
        check(question, size, {side: answers[side][-1] for side in question.sides})
    for sampler in samplers.values():
        sampler.close()
    return answers


def check(question: Question, size: int, answers: Mapping[Side, Answer]) -> None:
    """Results of the same name must be the same on all sides that give them, and all the limit gives be there."""
    expected: dict[str, tuple[str, str]] = {}
    for side, answer in answers.items():
        for name, value in answer.results.items():
            first, first_side = expected.setdefault(name, (value, side.program))
            if value != first:
                raise BenchError(f"{size}: {name} is {first} in {first_side}, but {value} in {side.program}")


def figures_of(samples: Samples, side: Side | None, figure: str) -> list[float] | None:
    if side is None or figure not in samples[side][0].figures:
        return None
    return [answer.figures[figure] for answer in samples[side]]


def first(sides: Sequence[Side]) -> Side | None:
    return sides[0] if sides else None


def ratio(values: Sequence[float], others: Sequence[float] | None) -> float | None:
    return paired(values, others) if others and all(others) else None


def compare(question: Question, size: int, samples: Samples) -> Iterator[Line]:
    """A line for each of the module's sides and figures."""
    for side in question.of_role(MODULE):
        for figure in side.figures or question.figures:
            values = figures_of(samples, side, figure)
            if values is None:
                raise BenchError(f"{side.program} gives no {figure}")
            limits = figures_of(samples, first(question.of_role(LIMIT)), figure)
            peers = figures_of(samples, first(question.of_role(PEER)), figure)
            absolute = question.absolute.get(figure, {}).get(size)
            yield Line(
                question.name,
                side.label,
                figure,
                size,
                median(values),
                median(limits) if limits else None,
                median(peers) if peers else None,
                max(values) if absolute is not None else ratio(values, limits),
                absolute if absolute is not None else question.of_limit.get(figure, {}).get(size),
                ratio(values, peers),
                question.of_peer.get(figure, {}).get(size),
                absolute is not None,
            )


def growth(question: Question, lines: Sequence[Line]) -> Iterator[Line]:
    """Exponents over the upper sizes; the "ratio" is the difference of the module's and the limit's."""
    sizes = sorted(question.rounds)[-GROWTH_SIZES:]
    for label in {line.label: None for line in lines}:
        for figure in question.grows:
            of_size = {line.size: line for line in lines if (line.label, line.figure) == (label, figure)}
            module = exponent(sizes, [of_size[size].module for size in sizes])
            limit = exponent(sizes, [of_size[size].limit or 0 for size in sizes])
            yield Line(
                question.name,
                label,
                f"growth of {figure}",
                sizes[-1],
                module,
                limit,
                of_limit=module - limit,
                limit_goal=GROWTH_GOAL,
            )


def flatness(question: Question, lines: Sequence[Line]) -> Iterator[Line]:
    """The module at a larger size against itself at a smaller one."""
    for figure, (larger, smaller, goal) in question.flat.items():
        for label in {line.label: None for line in lines}:
            of_size = {
                line.size: line.module for line in lines if (line.label, line.figure) == (label, figure)
            }
            value, other = of_size[larger], of_size[smaller]
            name = f"{figure} against {smaller:,}"
            yield Line(question.name, label, name, larger, value, other, None, value / other, goal)
