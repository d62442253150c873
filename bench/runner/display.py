# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""A private display that can be taken away, and somebody in front of it."""

import os
import subprocess
from collections.abc import Mapping
from pathlib import Path

from cluster.runner.processes import wait_for


def started(command: list[str], variables: Mapping[str, str]) -> "subprocess.Popen[str]":
    """Starts a program that ends with this process."""
    return subprocess.Popen(
        ["setpriv", "--pdeathsig", "KILL", *command],
        env={**os.environ, **variables},
        stdin=subprocess.DEVNULL,
        stdout=subprocess.PIPE,
        stderr=subprocess.DEVNULL,
        text=True,
    )


class Display:
    """An X server with a window manager, for the holders of the run's cookie. Windows go by their titles."""

    def __init__(self, folder: Path) -> None:
        """Returns when windows would get the focus. The folder is for the manager's files."""
        options = ["-displayfd", "1", "-auth", os.environ["XAUTHORITY"], "-noreset", "-nolisten", "tcp"]
        self._server = started(["Xvfb", *options, "-screen", "0", "1280x1024x24"], {})
        self.variables = {"DISPLAY": f":{self._line(self._server)}"}
        own = {"HOME": str(folder), "XDG_CONFIG_HOME": str(folder), **self.variables}
        self._manager = started(["openbox", "--sm-disable", "--startup", "echo started"], own)
        self._line(self._manager)

    def is_gone(self) -> bool:
        return self._server.poll() is not None

    def kill(self) -> None:
        """Ends the display at once, as a crash would."""
        for program in (self._server, self._manager):
            program.kill()
            program.wait()

    def wait_active(self, title: str) -> None:
        """Returns when the window has the focus. Raises ClusterError when it gets none."""
        wait_for(f'"{title}" has the focus', lambda: self._is_active(title))

    def press(self, title: str, key: str) -> None:
        """Presses a key in a window that gets the focus, until the window is gone. Raises ClusterError."""
        self.wait_active(title)
        wait_for(f'"{title}" is gone', lambda: not self._is_pressed(title, key))

    def _is_active(self, title: str) -> bool:
        # The manager may sleep on what it has read already; any message wakes it.
        return self._xdotool("set_desktop", "0", "getactivewindow", "getwindowname") == title

    def _is_pressed(self, title: str, key: str) -> bool:
        """Presses the key if the window has the focus; whether the window is still there."""
        if self._is_active(title):
            self._xdotool("key", key)
        return bool(self._xdotool("search", "--onlyvisible", "--name", f"^{title}$"))

    def _xdotool(self, *words: str) -> str:
        """What xdotool prints; nothing where it finds no window."""
        environment = {**os.environ, **self.variables}
        command = ["xdotool", *words]
        return subprocess.run(
            command, env=environment, capture_output=True, text=True, check=False
        ).stdout.strip()

    @staticmethod
    def _line(program: "subprocess.Popen[str]") -> str:
        assert program.stdout
        return program.stdout.readline().strip()
