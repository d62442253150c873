# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""A running qtutils-host that gets its statements on standard input."""

import subprocess

from kitprocess import BUILD, LIMIT, TOP


class Host:
    """Ends with its block at the latest."""

    def __init__(self, environment: dict[str, str]) -> None:
        pipe = subprocess.PIPE
        command = ["setpriv", "--pdeathsig", "KILL", str(BUILD / "qtutils-host"), str(BUILD / "qtutils.so")]
        self._process = subprocess.Popen(
            [*command, "--interactive"],
            env=environment,
            cwd=TOP,
            stdin=pipe,
            stdout=pipe,
            stderr=pipe,
            text=True,
        )

    def __enter__(self) -> "Host":
        return self

    def __exit__(self, *_: object) -> None:
        self._process.kill()
        self._process.communicate()

    def ask(self, statements: str) -> list[str]:
        """The lines of standard output that the statements print."""
        assert self._process.stdin and self._process.stdout
        self._process.stdin.write(f"{statements}; .echo answered\n")
        self._process.stdin.flush()
        printed = []
        while (line := self._process.stdout.readline().rstrip("\n")) != "answered":
            assert self._process.poll() is None
            printed.append(line)
        return printed

    def end(self) -> tuple[int, list[str]]:
        """Exit code, and the lines on standard error."""
        _, errors = self._process.communicate(timeout=LIMIT)
        return self._process.returncode, errors.splitlines()
