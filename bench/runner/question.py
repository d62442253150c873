# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""What a question is: its sides, its sizes, how a side is sampled, and what is wanted."""

from collections.abc import Callable, Mapping
from dataclasses import dataclass, field
from typing import NamedTuple, Protocol

from bench.runner.data import Data
from bench.runner.worker import Answer, Worker

MODULE, LIMIT, PEER = "module", "limit", "peer"


class Side(NamedTuple):
    """A program with its arguments. A question may have several sides of the module, told apart by labels; one that
    doesn't give all of the question's figures names its own."""

    role: str
    program: str
    arguments: tuple[str, ...] = ()
    label: str = ""
    figures: tuple[str, ...] = ()

    def command(self, programs: str) -> list[str]:
        return [f"{programs}/bench_{self.program}", *self.arguments]


class Sampler(Protocol):
    """Takes one sample of a side after the other."""

    def sample(self, size: int) -> Answer:
        ...

    def close(self) -> None:
        ...


class Steady:
    """One process for all rounds; the first one is for warming up."""

    def __init__(self, command: list[str]) -> None:
        self._command = command
        self._worker: Worker | None = None

    def sample(self, size: int) -> Answer:
        if self._worker is None:
            self._worker = Worker(self._command)
            self._worker.go(str(size))
        return self._worker.go(str(size))

    def close(self) -> None:
        if self._worker is not None:
            self._worker.close()


class Fresh:
    """A new process for each sample, which is handed to a function."""

    def __init__(self, take: Callable[[Worker, int], Answer]) -> None:
        self._take = take

    def __call__(self, command: list[str]) -> Sampler:
        return _FreshSampler(command, self._take)


class _FreshSampler:
    def __init__(self, command: list[str], take: Callable[[Worker, int], Answer]) -> None:
        self._command, self._take = command, take

    def sample(self, size: int) -> Answer:
        worker = Worker(self._command)
        answer = self._take(worker, size)
        worker.close()
        return answer

    def close(self) -> None:
        pass


Goals = Mapping[str, Mapping[int, float]]  # figure, size: the largest ratio wanted


@dataclass(frozen=True)
class Question:
    """Sizes have a number of rounds each. Goals are ratios, except those of "absolute", which are values that no
    round may exceed."""

    name: str
    title: str
    sides: tuple[Side, ...]
    rounds: Mapping[int, int]
    prepare: Callable[[Data], None]
    figures: tuple[str, ...] = ("time",)
    sampler: Callable[[list[str]], Sampler] = Steady
    of_limit: Goals = field(default_factory=dict)
    of_peer: Goals = field(default_factory=dict)
    absolute: Goals = field(default_factory=dict)
    grows: tuple[str, ...] = ()  # figures whose growth is compared
    flat: Mapping[str, tuple[int, int, float]] = field(default_factory=dict)  # larger size, smaller, ratio

    def of_role(self, role: str) -> list[Side]:
        return [side for side in self.sides if side.role == role]
