# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""Helpers of several tests: a private MariaDB server, and small collections."""

import os
import secrets
import shutil
import subprocess
import tempfile
import time
from collections.abc import Iterator
from contextlib import suppress
from datetime import datetime
from pathlib import Path
from typing import Any

import pymysql  # type: ignore[import]
import pytest

from mapmaker.sources.document import Document
from mapmaker.tests.doctorbase import good_database

USER = "mapmaker"
SECONDS_TO_START = 30.0
POLL_SECONDS = 0.05


def document(title: str, text: str = "text", day: int = 1) -> Document:
    """A document of January 2020."""
    return Document(datetime(2020, 1, day, 12, 30), title, "file:///doc", text, "author", "low", "package")


def tool(name: str) -> str:
    """Path of a server program, also where the PATH lacks the folder for administrators."""
    path = shutil.which(name, path=os.environ.get("PATH", "") + ":/usr/sbin:/sbin")
    if path is None:
        pytest.skip(f"{name} is not installed")
    return path


def server_command(folder: Path) -> list[str]:
    """Command line of the server that keeps all its files in the folder."""
    command = [tool("mariadbd"), "--no-defaults", "--skip-networking", f"--socket={folder}/socket"]
    command += [f"--datadir={folder}/data", f"--tmpdir={folder}/tmp", f"--pid-file={folder}/pid"]
    command.append(f"--init-file={folder}/users.sql")
    return command + (["--user=root"] if os.geteuid() == 0 else [])


def install(folder: Path, password: str) -> None:
    """Makes the server's own tables, and the statements for a user that it runs when it starts."""
    (folder / "tmp").mkdir()
    (folder / "users.sql").write_text(
        f"CREATE USER {USER}@localhost IDENTIFIED BY '{password}';\n"
        f"GRANT ALL ON *.* TO {USER}@localhost WITH GRANT OPTION;\n"
    )
    command = [tool("mariadb-install-db"), "--no-defaults", f"--datadir={folder}/data", "--skip-test-db"]
    command += ["--auth-root-authentication-method=socket"]
    command += ["--user=root"] if os.geteuid() == 0 else []
    subprocess.run(command, check=True, capture_output=True)


def wait_until_ready(server: subprocess.Popen[bytes], environment: dict[str, str]) -> None:
    """Returns when the server answers; fails if it ends or takes too long."""
    deadline = time.monotonic() + SECONDS_TO_START
    while time.monotonic() < deadline:
        try:
            connect(environment).close()
            return
        except pymysql.MySQLError:
            with suppress(subprocess.TimeoutExpired):
                server.wait(timeout=POLL_SECONDS)
                pytest.fail("the server ended")
    pytest.fail("the server does not answer")


def connect(environment: dict[str, str]) -> pymysql.Connection:
    """A connection of a reader."""
    return pymysql.connect(
        unix_socket=environment["MYSQL_UNIX_PORT"],
        user=environment["MYSQL_USER"],
        password=environment["MYSQL_PWD"],
        charset="utf8mb4",
    )


@pytest.fixture(scope="session")
def server() -> Iterator[dict[str, str]]:
    """Environment variables that lead to a private server; it lives as long as the tests."""
    folder = Path(tempfile.mkdtemp(prefix="mapmaker-"))
    password = secrets.token_hex(8)
    environment = {"MYSQL_HOST": "localhost", "MYSQL_USER": USER, "MYSQL_PWD": password}
    environment["MYSQL_UNIX_PORT"] = f"{folder}/socket"
    try:
        install(folder, password)
        with open(folder / "log", "wb") as log:
            process = subprocess.Popen(server_command(folder), stdout=log, stderr=log)
        try:
            wait_until_ready(process, environment)
            yield environment
        finally:
            process.terminate()
            process.wait()
    finally:
        shutil.rmtree(folder)


@pytest.fixture
def admin(server: dict[str, str]) -> Iterator[Any]:
    """A connection that may do everything, to a server with a good database and a user who may read it."""
    link = connect(server)
    with good_database(link):
        yield link
    link.close()
