# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""Helpers of the tests of clusters: cluster/up as a process, and what it leaves behind."""

import os
import shlex
import signal
import subprocess
import sys
import tempfile
import time
from collections.abc import Callable, Iterator
from pathlib import Path

import pytest

TOP = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(TOP))

from cluster.runner.place import find_file  # noqa: E402

LIMIT = 120.0  # seconds, for a hang only
NEEDED = ("haproxy", "ha_spider.so", "wsrep_sst_rsync", "libgalera_smm.so", "rsync")


def wait_until(what: str, look: Callable[[], object]) -> None:
    end = time.monotonic() + LIMIT
    while not look():
        assert time.monotonic() < end, f"waited in vain: {what}"
        time.sleep(0.05)  # wait-reason: the pause between two looks


class Up:
    """A run of cluster/up whose private folder lies below `folder`."""

    def __init__(self, folder: Path, *arguments: str) -> None:
        self.folder, self.variables = folder, folder / "variables"
        self.environment = {**os.environ, "TMPDIR": str(folder)}
        command = [
            str(TOP / "cluster" / "up"),
            "--no-install",
            "--environment",
            str(self.variables),
            *arguments,
        ]
        with open(folder / "output", "wb") as output:
            self.process = subprocess.Popen(
                command, env=self.environment, stdout=output, stderr=output, start_new_session=True
            )

    def wait_ready(self) -> dict[str, str]:
        """The variables for a reader, when the cluster is ready."""
        wait_until("the cluster is ready", lambda: self.variables.exists() or self.process.poll() is not None)
        assert self.variables.exists(), self.output()
        words = shlex.split(self.variables.read_text())
        return dict(word.split("=", 1) for word in words if word != "export")

    def output(self) -> str:
        return (self.folder / "output").read_text()

    def keeper(self) -> int:
        """The number of the process that keeps the servers."""
        return int(next(self.folder.glob("qtutils-*/keeper")).read_text())

    def left(self) -> list[str]:
        """Command lines of processes, and folders, that belong to the cluster."""
        folders = [str(path) for path in self.folder.glob("qtutils-*")]
        lines = subprocess.run(["ps", "-eo", "args"], capture_output=True, text=True, check=True).stdout
        return folders + [line for line in lines.splitlines() if f"{self.folder}/qtutils-" in line]

    def down(self) -> str:
        command = [str(TOP / "cluster" / "down")]
        result = subprocess.run(command, env=self.environment, capture_output=True, text=True, check=True)
        return result.stdout

    def close(self) -> None:
        """Ends the cluster whatever state it is in."""
        if self.process.poll() is None:
            self.process.send_signal(signal.SIGTERM)
        self.process.wait(LIMIT)
        wait_until("nothing is left", lambda: not self.left())


@pytest.fixture
def open_folder() -> Iterator[Path]:
    """A new folder that other users can enter, as servers started by root must."""
    with tempfile.TemporaryDirectory(prefix="cluster-", dir="/tmp") as name:
        folder = Path(name)
        folder.chmod(0o755)
        yield folder


@pytest.fixture
def need_clusters() -> None:
    """Skips the test where a program of clusters is missing."""
    missing = [name for name in NEEDED if find_file(name) is None]
    if missing:
        pytest.skip(f"no clusters without {', '.join(missing)}: run cluster/packages")


@pytest.fixture
def up(open_folder: Path, need_clusters: None) -> Iterator[Callable[..., Up]]:
    """Starts cluster/up with arguments; it is ended with the test."""
    running: list[Up] = []

    def start(*arguments: str) -> Up:
        running.append(Up(open_folder, *arguments))
        return running[-1]

    yield start
    for cluster in running:
        cluster.close()
