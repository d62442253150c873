# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""Servers as child processes, which end with the process that started them, whatever ends it."""

import ctypes
import os
import pwd
import signal
import subprocess
import time
from collections.abc import Callable, Mapping, Sequence
from pathlib import Path

LIMIT = 60.0  # seconds that a condition may take to come true
PAUSE = 0.01  # seconds between two looks
SET_PARENT_DEATH_SIGNAL = 1  # PR_SET_PDEATHSIG of linux/prctl.h
LIBC = ctypes.CDLL(None)


class ClusterError(Exception):
    """Something of the cluster is not as it should be; the message is one line."""


def wait_for(what: str, look: Callable[[], object], limit: float = LIMIT) -> None:
    """Returns when look() gives something true. Raises ClusterError after the limit, in seconds."""
    end = time.monotonic() + limit
    while not look():
        if time.monotonic() > end:
            raise ClusterError(f"waited {limit:.0f} s in vain: {what}")
        time.sleep(PAUSE)


def end_with_parent(number: int, parent: int) -> None:
    """Has the kernel send this process a signal when its parent dies; it ends at once if that is already so."""
    LIBC.prctl(SET_PARENT_DEATH_SIGNAL, number)
    if os.getppid() != parent:
        os._exit(1)


def server_user() -> str | None:
    """Who the servers run as: root has them run as another user, since Galera's transfer of data refuses root."""
    if os.geteuid() != 0:
        return None
    known = {user.pw_name for user in pwd.getpwall()}
    return "mysql" if "mysql" in known else "nobody"


class Child:
    """A running program, leader of a session of its own; what it prints goes to a file.

    To be made in the main thread: the kernel takes the end of the thread for that of the parent.
    """

    def __init__(
        self, command: Sequence[str], log: Path, environment: Mapping[str, str] = os.environ
    ) -> None:
        user, parent = server_user(), os.getpid()
        with open(log, "ab") as output:
            self._process = subprocess.Popen(
                command,
                cwd="/",  # HAProxy must be able to come back there, also as another user
                stdin=subprocess.DEVNULL,
                stdout=output,
                stderr=output,
                env=dict(environment),
                user=user,
                group=pwd.getpwnam(user).pw_gid if user else None,
                extra_groups=[] if user else None,
                start_new_session=True,
                preexec_fn=lambda: end_with_parent(signal.SIGKILL, parent),
            )

    @property
    def number(self) -> int:
        return self._process.pid

    def has_ended(self) -> bool:
        return self._process.poll() is not None

    def is_stopped(self) -> bool:
        """Whether SIGSTOP has taken effect in all threads."""
        states = [status.read_text() for status in Path(f"/proc/{self.number}/task").glob("*/stat")]
        return all(state.rpartition(")")[2].split()[0] == "T" for state in states)

    def wait(self) -> int:
        """Waits for the program's end; its exit code."""
        return self._process.wait()

    def send(self, number: int) -> None:
        """Sends a signal to the program alone."""
        self._process.send_signal(number)

    def end(self) -> None:
        """Ends the program in order, and what it has started."""
        self.send(signal.SIGTERM)
        try:
            self._process.wait(LIMIT)
        except subprocess.TimeoutExpired:
            pass
        self.kill()

    def kill(self) -> None:
        """Ends the program and what it has started at once; nothing happens if it has ended."""
        if not self.has_ended():
            os.killpg(self._process.pid, signal.SIGKILL)
            self._process.wait()
