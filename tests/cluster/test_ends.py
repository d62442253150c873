# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""However a private cluster ends, nothing of it is left: no process, no folder."""

import os
import signal
import subprocess
from collections.abc import Callable
from pathlib import Path

import pytest
from conftest import TOP, Up, wait_until

SMALL = ("--map", "sample --documents 200")


def interrupt(up: Up) -> None:
    up.process.send_signal(signal.SIGINT)


def hang_up(up: Up) -> None:
    up.process.send_signal(signal.SIGHUP)


def kill_script(up: Up) -> None:
    up.process.kill()


def kill_keeper(up: Up) -> None:
    os.kill(up.keeper(), signal.SIGKILL)


def kill_guard(up: Up) -> None:
    status = open(f"/proc/{up.keeper()}/status", encoding="ascii").read()
    os.kill(int(status.split("PPid:")[1].split()[0]), signal.SIGKILL)


@pytest.mark.parametrize(
    "end, code", [(interrupt, 130), (hang_up, 129), (kill_script, -9), (kill_keeper, 137), (kill_guard, 137)]
)
def test_nothing_is_left(up: Callable[..., Up], end: Callable[[Up], None], code: int) -> None:
    cluster = up(*SMALL, "replicas")
    cluster.wait_ready()
    assert len(cluster.left()) > 4  # the folder, three servers, HAProxy
    end(cluster)
    assert cluster.process.wait(60) == code
    wait_until("nothing is left", lambda: not cluster.left())


def test_down_ends_the_cluster(up: Callable[..., Up]) -> None:
    cluster = up(*SMALL, "replicas")
    cluster.wait_ready()
    assert cluster.down().startswith(f"ended: {cluster.folder}/qtutils-")
    assert cluster.process.wait(60) == 0
    wait_until("nothing is left", lambda: not cluster.left())


def test_down_removes_what_nobody_could(up: Callable[..., Up]) -> None:
    cluster = up(*SMALL, "replicas")
    cluster.wait_ready()
    os.kill(cluster.process.pid, signal.SIGSTOP)  # it can't remove the folder
    os.kill(cluster.keeper(), signal.SIGKILL)
    cluster.process.kill()
    wait_until("the servers are gone", lambda: len(cluster.left()) == 1)
    assert cluster.down().startswith(f"ended: {cluster.folder}/qtutils-")
    assert cluster.left() == []


def test_a_failed_start_leaves_nothing(up: Callable[..., Up]) -> None:
    cluster = up("--map", "sample --documents none", "replicas")
    assert cluster.process.wait(60) == 1
    assert "cluster: mapmaker: " in cluster.output()
    assert cluster.left() == []


@pytest.mark.parametrize(
    "arguments, message",
    [
        (["up"], "up: a kind is missing; see ./cluster/up --help"),
        (["up", "ring"], "up: unknown kind ring; see ./cluster/up --help"),
        (["up", "--bad"], "up: unknown option --bad; see ./cluster/up --help"),
        (["up", "--name"], "up: --name needs a value; see ./cluster/up --help"),
        (["up", "head", "head"], "up: there is more than one kind; see ./cluster/up --help"),
        (["../demo", "--cluster"], "demo: --cluster needs a kind; see ./demo --help"),
        (["../demo", "--cluster", "ring"], "demo: unknown kind ring; see ./demo --help"),
        (["packages", "--all"], "packages: unknown option --all; see ./cluster/packages --help"),
        (["down", "all"], "down: unknown option all; see ./cluster/down --help"),
    ],
)
def test_wrong_arguments_get_one_line(arguments: list[str], message: str) -> None:
    program, *rest = arguments
    result = subprocess.run([TOP / "cluster" / program, *rest], capture_output=True, text=True, check=False)
    assert (result.returncode, result.stdout, result.stderr) == (2, "", message + "\n")


def test_a_folder_that_the_servers_can_t_enter_is_refused(tmp_path: Path) -> None:
    if os.geteuid() != 0:
        pytest.skip("only root's servers run as somebody else")
    closed = tmp_path / "closed"
    closed.mkdir(mode=0o700)
    cluster = Up(closed, "replicas")
    assert cluster.process.wait(60) == 1
    assert f"and can't enter {closed}: set another TMPDIR" in cluster.output()
    assert cluster.left() == []
