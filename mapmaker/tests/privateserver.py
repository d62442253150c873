# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""MariaDB servers of a test's own, each in a folder of its own."""

import os
import secrets
import shutil
import socket
import subprocess
import time
from contextlib import suppress
from pathlib import Path
from typing import Any

import pytest

from mapmaker import driver

USER = "mapmaker"
PASSWORD = secrets.token_hex(8)
SECONDS_TO_START = 30.0
POLL_SECONDS = 0.05
SMALL = "--innodb-log-file-size=8M"
AS_ROOT = ["--user=root"] if os.geteuid() == 0 else []
CACHE = Path(os.environ.get("XDG_CACHE_HOME", Path.home() / ".cache"))
PLUGIN_FOLDERS = ("/usr/lib/mysql/plugin", f"{CACHE}/qtutils-cluster/files/usr/lib/mysql/plugin")
GALERA = "/usr/lib/galera/libgalera_smm.so"


def tool(name: str) -> str:
    """Path of a server program, also where the PATH lacks the folder for administrators."""
    path = shutil.which(name, path=os.environ.get("PATH", "") + ":/usr/sbin:/sbin")
    if path is None:
        pytest.skip(f"{name} is not installed")
    return path


def install(data: Path) -> None:
    """Makes the server's own tables in a new folder."""
    command = [tool("mariadb-install-db"), "--no-defaults", f"--datadir={data}", "--skip-test-db"]
    command += ["--auth-root-authentication-method=socket", SMALL, *AS_ROOT]
    subprocess.run(command, check=True, capture_output=True)


def free_port() -> int:
    """A port that nobody listens on now."""
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return int(probe.getsockname()[1])


def spider_options() -> list[str]:
    """Options that load the engine SPIDER; skips the test where it is missing."""
    for folder in PLUGIN_FOLDERS:
        if Path(folder, "ha_spider.so").exists():
            return [f"--plugin-dir={folder}", "--plugin-load-add=ha_spider"]
    pytest.skip("mariadb-plugin-spider is not there: cluster/packages unpacks it")


def galera_options() -> list[str]:
    """Options of a cluster of one node; skips the test where its library is missing."""
    if not Path(GALERA).exists():
        pytest.skip("galera-4 is not installed")
    port = free_port()
    provider = (
        f"base_port={port};gmcast.listen_addr=tcp://127.0.0.1:{port};ist.recv_addr=127.0.0.1:{free_port()}"
    )
    provider += ";pc.wait_prim_timeout=PT1S"
    return [
        "--wsrep-on=ON",
        f"--wsrep-provider={GALERA}",
        "--wsrep-cluster-address=gcomm://",
        "--wsrep-new-cluster",
        f"--wsrep-node-address=127.0.0.1:{port}",
        f"--wsrep-provider-options={provider}",
        "--binlog-format=ROW",
        "--innodb-autoinc-lock-mode=2",
    ]


class PrivateServer:
    """A running server with a user who may do all, by its socket, and by TCP if it has a port."""

    def __init__(self, folder: Path, installed: Path, *options: str, port: int = 0) -> None:
        """Copies the installed data into the new folder, and returns when the server answers."""
        self.folder, self.port = folder, port
        (folder / "tmp").mkdir(parents=True)
        shutil.copytree(installed, folder / "data")
        places = [f"{USER}@localhost"] + ([f"{USER}@'127.0.0.1'"] if port else [])
        (folder / "users.sql").write_text(
            "".join(
                f"CREATE OR REPLACE USER {place} IDENTIFIED BY '{PASSWORD}';\n"
                f"GRANT ALL ON *.* TO {place} WITH GRANT OPTION;\n"
                for place in places
            )
        )
        self.environment = {"MYSQL_HOST": "localhost", "MYSQL_USER": USER, "MYSQL_PWD": PASSWORD}
        self.environment["MYSQL_UNIX_PORT"] = f"{folder}/socket"
        with open(folder / "log", "ab") as log:
            self.process = subprocess.Popen(self.command(options), stdout=log, stderr=log)
        try:
            self.wait_until_ready()
        except BaseException:
            self.stop()
            raise

    def command(self, options: tuple[str, ...]) -> list[str]:
        """Command line of a server that keeps all its files in the folder."""
        folder = self.folder
        command = [tool("mariadbd"), "--no-defaults", f"--socket={folder}/socket", SMALL, *AS_ROOT]
        command += [f"--datadir={folder}/data", f"--tmpdir={folder}/tmp", f"--pid-file={folder}/pid"]
        command += [f"--init-file={folder}/users.sql", "--innodb-flush-log-at-trx-commit=0"]
        network = [f"--port={self.port}", "--bind-address=127.0.0.1"] if self.port else ["--skip-networking"]
        return command + network + list(options)

    def wait_until_ready(self) -> None:
        """Returns when the server answers; fails if it ends or takes too long."""
        deadline = time.monotonic() + SECONDS_TO_START
        while time.monotonic() < deadline:
            try:
                connect(self.environment).close()
                return
            except driver.ServerError:
                with suppress(subprocess.TimeoutExpired):
                    self.process.wait(timeout=POLL_SECONDS)
                    pytest.fail((self.folder / "log").read_text(errors="replace")[-2000:])
        pytest.fail("the server does not answer")

    def stop(self) -> None:
        """Ends the server."""
        self.process.terminate()
        self.process.wait()

    def ask(self, statements: str) -> list[tuple[Any, ...]]:
        """Carries out statements that end with a semicolon at the end of a line; the rows of the last one."""
        rows: list[tuple[Any, ...]] = []
        link = connect(self.environment)
        with link.cursor() as cursor:
            for statement in filter(None, (part.strip() for part in statements.split(";\n"))):
                cursor.execute(statement)
                rows = list(cursor.fetchall())
        link.commit()
        link.close()
        return rows


def connect(environment: dict[str, str]) -> Any:
    """A connection of a reader."""
    return driver.connect(
        unix_socket=environment["MYSQL_UNIX_PORT"],
        user=environment["MYSQL_USER"],
        password=environment["MYSQL_PWD"],
        charset="utf8mb4",
    )
