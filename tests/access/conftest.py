# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""A private bus for accessibility, and a host whose window is on it."""

import os
import subprocess
from collections.abc import Iterator
from pathlib import Path

import pytest
from host import Host

from tests.kit.conftest import display, home, installed, map_server, server, started, surroundings

__all__ = ["display", "home", "installed", "map_server", "server", "surroundings"]  # fixtures

SESSION = ["dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address=1"]
# It ends a bus of its own when it is ended itself.
LAUNCHER = [
    "setpriv",
    "--pdeathsig",
    "TERM",
    "/usr/libexec/at-spi-bus-launcher",
    "--launch-immediately",
    "--a11y=1",
]
WAIT = ["gdbus", "wait", "--session", "--timeout", "60", "org.a11y.Bus"]


@pytest.fixture(scope="session", autouse=True)
def bus(display: dict[str, str]) -> Iterator[None]:
    """A session with a bus for accessibility; this process and its programs find it there."""
    with started(SESSION, {**os.environ, **display}) as session:
        assert session.stdout
        os.environ["DBUS_SESSION_BUS_ADDRESS"] = session.stdout.readline().strip()
        with subprocess.Popen(LAUNCHER, env={**os.environ, **display}) as launcher:
            subprocess.run(WAIT, check=True)
            yield
            launcher.terminate()


@pytest.fixture
def host(surroundings: dict[str, str]) -> Iterator[Host]:
    """A host with a map of four nodes, its window shown, and node 1 chosen."""
    with Host(surroundings) as window:
        window.ask("CNodeBrowser som news; setSOMTable news_train")
        for node, children in enumerate(("1 2", "3", "", "")):
            window.ask(f"passNodeHierarchy [{children}] {len(children.split())} {node} 4")
        window.ask("show; select 1; getNumRows int[1]")
        yield window


@pytest.fixture(autouse=True)
def folder(monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.chdir(Path(__file__).resolve().parents[2])
