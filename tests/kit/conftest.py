# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""What programs with the real module need: a private server with a map, and a private display."""

import os
import subprocess
import tempfile
from collections.abc import Iterator
from contextlib import contextmanager
from pathlib import Path

import pytest
from kitprocess import BUILD, TOP, environment

from mapmaker.tests.conftest import home, installed, server

__all__ = ["home", "installed", "server"]  # fixtures

# The same map with nodes 0 and 1 exchanged.
SWAPPED = b"CREATE TABLE som.news_swapped AS SELECT 1 - node AS node, dist, item FROM som.news_train WHERE node < 2;"
XVFB = ["Xvfb", "-displayfd", "1", "-screen", "0", "1280x1024x24", "-noreset", "-nolisten", "tcp"]
GUARD = ["setpriv", "--pdeathsig", "KILL"]


@pytest.fixture(scope="session")
def map_server(server: dict[str, str]) -> dict[str, str]:
    """Environment variables that lead to a server with the map of tests/data/news.sql."""
    statements = (TOP / "tests" / "data" / "news.sql").read_bytes() + SWAPPED
    command = [
        "mariadb",
        "--no-defaults",
        f"--user={server['MYSQL_USER']}",
        "--default-character-set=utf8mb4",
    ]
    subprocess.run(command, input=statements, env={**os.environ, **server}, check=True)
    return server


@contextmanager
def started(command: list[str], environment: dict[str, str]) -> "Iterator[subprocess.Popen[str]]":
    """A program that ends with the block, and with this process."""
    with subprocess.Popen([*GUARD, *command], stdout=subprocess.PIPE, env=environment, text=True) as process:
        try:
            yield process
        finally:
            process.kill()


@pytest.fixture(scope="session")
def display() -> Iterator[dict[str, str]]:
    """Environment variables of a private display with a window manager."""
    with tempfile.TemporaryDirectory() as folder, started(XVFB, dict(os.environ)) as screen:
        assert screen.stdout
        variables = {
            "HOME": folder,
            "XDG_RUNTIME_DIR": folder,
            "DISPLAY": f":{screen.stdout.readline().strip()}",
        }
        with started(["openbox", "--startup", "echo started"], {**os.environ, **variables}) as manager:
            assert manager.stdout and "started\n" in manager.stdout
            yield variables


@pytest.fixture
def surroundings(
    map_server: dict[str, str], display: dict[str, str], monkeypatch: pytest.MonkeyPatch
) -> dict[str, str]:
    """The environment of a program with the real module; this process gets the display, too."""
    monkeypatch.setenv("DISPLAY", display["DISPLAY"])
    monkeypatch.delenv("XAUTHORITY", raising=False)
    return environment(
        **map_server,
        **display,
        LANG="C.UTF-8",
        LC_CTYPE="C.UTF-8",
        TZ="CET-1CEST,M3.5.0,M10.5.0/3",
        QTUTILS_MODULE=str(BUILD / "qtutils.so"),
    )


@pytest.fixture
def hierarchy(tmp_path: Path) -> Path:
    """The map's nodes for the examples."""
    file = tmp_path / "hierarchy.txt"
    file.write_text("1 2 3\n\n\n\n")
    return file
