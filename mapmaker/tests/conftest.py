# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""Helpers of several tests: a private MariaDB server, and small collections."""

import shutil
import tempfile
from collections.abc import Callable, Iterator
from datetime import datetime
from pathlib import Path
from typing import Any

import pytest

from mapmaker.sources.document import Document
from mapmaker.tests.doctorbase import good_database
from mapmaker.tests.privateserver import PrivateServer, connect, install


def document(title: str, text: str = "text", day: int = 1) -> Document:
    """A document of January 2020."""
    return Document(datetime(2020, 1, day, 12, 30), title, "file:///doc", text, "author", "low", "package")


@pytest.fixture(scope="session")
def home() -> Iterator[Path]:
    """A folder for the files of all servers."""
    folder = Path(tempfile.mkdtemp(prefix="mapmaker-"))
    yield folder
    shutil.rmtree(folder)


@pytest.fixture(scope="session")
def installed(home: Path) -> Path:
    """The data of a server that has never run."""
    install(home / "installed")
    return home / "installed"


@pytest.fixture(scope="session")
def server(home: Path, installed: Path) -> Iterator[dict[str, str]]:
    """Environment variables that lead to a private server; it lives as long as the tests."""
    private = PrivateServer(home / "server", installed)
    yield private.environment
    private.stop()


@pytest.fixture(scope="module")
def servers(
    home: Path, installed: Path, request: pytest.FixtureRequest
) -> Iterator[Callable[..., PrivateServer]]:
    """Starts a server with options under a name; it lives as long as the tests of the file."""
    started: list[PrivateServer] = []
    folder = home / request.node.name.replace("/", "-")

    def start(name: str, *options: str, port: int = 0) -> PrivateServer:
        started.append(PrivateServer(folder / name, installed, *options, port=port))
        return started[-1]

    yield start
    for private in reversed(started):
        private.stop()


@pytest.fixture
def admin(server: dict[str, str]) -> Iterator[Any]:
    """A connection that may do everything, to a server with a good database and a user who may read it."""
    link = connect(server)
    with good_database(link):
        yield link
    link.close()
