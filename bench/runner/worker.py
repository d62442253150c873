# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""A side of a comparison: a process that answers a line with its figures and results."""

import os
import signal
import subprocess
from collections.abc import Mapping, Sequence
from threading import Timer
from typing import NamedTuple

LIMIT = 60.0  # seconds that a round may take
MARK = "= "


class BenchError(Exception):
    """A run can't go on, or an answer is wrong; the message is one line."""


class Answer(NamedTuple):
    """Figures are compared; results must be the same on all sides."""

    figures: dict[str, float]
    results: dict[str, str]


def parsed(line: str) -> Answer:
    """Reads "figure=1.5 ... | result=abc ...". Raises BenchError when it is something else."""
    try:
        figures, results = ([word.split("=", 1) for word in part.split()] for part in line.split("|"))
        return Answer({name: float(value) for name, value in figures}, {n: v for n, v in results})
    except ValueError:
        raise BenchError(f"not an answer: {line}") from None


class Worker:
    """A running side. It has answered that it is ready when the object is there. Variables are further ones."""

    def __init__(self, command: Sequence[str], variables: Mapping[str, str] | None = None) -> None:
        self._command = command
        self._process = subprocess.Popen(
            ["setpriv", "--pdeathsig", "KILL", *command],
            env={**os.environ, **(variables or {})},
            stdin=subprocess.PIPE,
            stdout=subprocess.PIPE,
            stderr=subprocess.PIPE,
            text=True,
        )
        self.ready = self.answer()

    def go(self, *words: str) -> Answer:
        """Runs a round."""
        self.give(*words)
        return self.answer()

    def give(self, *words: str) -> None:
        """Asks for a round; answer() is yet to be called."""
        assert self._process.stdin
        try:
            self._process.stdin.write(" ".join(words) + "\n")
            self._process.stdin.flush()
        except BrokenPipeError:
            pass  # what the side said before it ended is yet to be read

    def answer(self) -> Answer:
        """Waits for the answer to what was asked."""
        line = self._line()
        if not line.startswith(MARK):
            raise self._failure_after(line)
        return parsed(line.removeprefix(MARK))

    def expect(self, expected: str) -> None:
        """Waits for a line that the module prints before the answer. Raises BenchError when it is another one."""
        line = self._line()
        if line != expected + "\n":
            raise self._failure_after(line)

    def close(self) -> None:
        """Ends the input, which ends the process. Raises BenchError when it ends with an error."""
        output, errors = self._process.communicate(timeout=LIMIT)
        if self._process.returncode != 0 or output:
            raise self._failure(output + errors)

    def _line(self) -> str:
        assert self._process.stdout
        timer = Timer(LIMIT, self._process.kill)
        timer.start()
        line = self._process.stdout.readline()
        timer.cancel()
        if not line and self._process.wait() == -signal.SIGKILL:
            raise BenchError(f"{' '.join(self._command)} gave no answer within {LIMIT:.0f} s")
        return line

    def _failure_after(self, line: str) -> BenchError:
        self._process.kill()
        return self._failure(line + self._process.communicate()[1])

    def _failure(self, said: str) -> BenchError:
        last = said.strip().rpartition("\n")[2] or "nothing"
        return BenchError(
            f"{' '.join(self._command)} ended with {self._process.wait()}; it said last: {last}"
        )
