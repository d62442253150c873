# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""A running qtutils-host that gets its statements on standard input."""

import os
import select
import subprocess
import time
from pathlib import Path

from screen import LIMIT, TourError


class HostProcess:
    """Starts the host; ends it, also with this process (setpriv), at the end of a with block."""

    def __init__(self, program: Path, module: Path) -> None:
        command = ["setpriv", "--pdeathsig", "TERM", str(program), str(module)]
        self._process = subprocess.Popen(
            command, bufsize=0, stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.STDOUT
        )
        self._unread = b""
        self._asked = 0

    def __enter__(self) -> "HostProcess":
        return self

    def __exit__(self, *_: object) -> None:
        if self._process.poll() is None:
            self._process.kill()
            self._process.wait()

    def ask(self, statement: str) -> list[str]:
        """Runs a statement; returns the lines that host and module print. Raises TourError when the host ends."""
        self._asked += 1
        mark = f"end-of-answer-{self._asked}"
        assert self._process.stdin
        try:
            self._process.stdin.write(f"{statement}\n.echo {mark}\n".encode())
        except BrokenPipeError:
            pass  # what the host said before it ended is yet to be read
        lines: list[str] = []
        while (line := self._line(lines)) != mark:
            lines.append(line)
        return lines

    def number(self, statement: str) -> int:
        """The last number among the results that a statement prints as "name = number"."""
        answers = [line.rpartition(" = ")[2] for line in self.ask(statement) if " = " in line]
        if not answers or not answers[-1].isdecimal():
            raise TourError(f"no number in the answer to: {statement}")
        return int(answers[-1])

    def close(self) -> int:
        """Ends the input; returns the exit code of the host."""
        assert self._process.stdin
        self._process.stdin.close()
        try:
            return self._process.wait(LIMIT)
        except subprocess.TimeoutExpired:
            raise TourError("the host doesn't end") from None

    def _line(self, before: list[str]) -> str:
        end = time.monotonic() + LIMIT
        while b"\n" not in self._unread:
            self._read(max(end - time.monotonic(), 0), before)
        line, _, self._unread = self._unread.partition(b"\n")
        return line.decode(errors="replace")

    def _read(self, seconds: float, before: list[str]) -> None:
        assert self._process.stdout
        output = self._process.stdout.fileno()
        if not select.select([output], [], [], seconds)[0]:
            raise TourError(f"the host gave no answer within {LIMIT:.0f} s")
        data = os.read(output, 65536)
        if not data:
            said = before[-1] if before else "nothing"
            raise TourError(f"the host has ended; it said last: {said}")
        self._unread += data
