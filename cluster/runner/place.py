# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""What the parts of one private cluster share: folder, ports, passwords, programs."""

import os
import pwd
import secrets
import shutil
import stat
from collections.abc import Mapping, Sequence
from pathlib import Path
from string import Template

from cluster.runner.client import Account
from cluster.runner.ports import Ports
from cluster.runner.processes import Child, ClusterError, server_user

TOP = Path(__file__).resolve().parents[2]
FILES = TOP / "cluster"
CACHE = Path(os.environ.get("XDG_CACHE_HOME") or Path.home() / ".cache") / "qtutils-cluster"
SEARCHED = ("/usr/local/sbin", "/usr/sbin", "/usr/bin", "/usr/lib/mysql/plugin", "/usr/lib/galera")


def find_file(name: str) -> Path | None:
    """A program or library of Debian's packages: installed, or unpacked by cluster/packages."""
    folders = [Path(folder) for folder in SEARCHED]
    unpacked = [CACHE / "files" / folder.relative_to("/") for folder in folders]
    return next((folder / name for folder in [*folders, *unpacked] if (folder / name).exists()), None)


class Place:
    """The private folder and what is handed out in it. The folder isn't owned.

    Servers may run as another user than this process and must reach their files: the folder becomes that user's, and
    programs that were unpacked somewhere else are copied into it.
    """

    def __init__(self, folder: Path) -> None:
        self.folder, self.ports = folder, Ports()
        self._children: list[Child] = []
        self.admin = Account(pwd.getpwuid(os.geteuid()).pw_name)
        self.words = {"SOM": "som", "TEXTS": "texts", "CLIENTS": "127.0.0.1"}
        for account in ("MAKER", "READER", "REPLICA"):
            self.words[f"{account}_PASSWORD"] = secrets.token_hex(16)
        self._check_way()
        (folder / "programs").mkdir()
        self.give(folder)
        self.give(folder / "programs")

    @property
    def maker(self) -> Account:
        return Account("maker", self.words["MAKER_PASSWORD"])

    @property
    def reader(self) -> Account:
        return Account("reader", self.words["READER_PASSWORD"])

    def _check_way(self) -> None:
        closed = [path for path in self.folder.parents if not path.stat().st_mode & stat.S_IXOTH]
        if server_user() and closed:
            raise ClusterError(
                f"the servers run as {server_user()} and can't enter {closed[0]}: set another TMPDIR"
            )

    def give(self, path: Path) -> None:
        """Makes a file or folder the servers' own."""
        if user := server_user():
            shutil.chown(path, user, pwd.getpwnam(user).pw_gid)

    def start(self, command: Sequence[str], log: Path, environment: Mapping[str, str] = os.environ) -> Child:
        """Starts a program that ends with this place."""
        self._children.append(Child(command, log, environment))
        return self._children[-1]

    def end(self) -> None:
        """Ends all that was started, at once, and gives the ports back. The folder is yet to be removed."""
        for child in reversed(self._children):
            child.kill()
        self.ports.close()

    def program(self, name: str) -> Path:
        """Path of a program or library that the servers can run. Raises ClusterError when it is missing."""
        copy = self.folder / "programs" / name
        found = copy if copy.exists() else find_file(name)
        if found is None:
            raise ClusterError(f"{name} is missing; run cluster/packages")
        if found.is_relative_to(CACHE):
            shutil.copy(found, copy)
            return copy
        return found

    def text(self, name: str, **words: str) -> str:
        """A file below cluster/ with its words filled in."""
        return Template((FILES / name).read_text(encoding="utf-8")).substitute(self.words, **words)

    def new_data(self, target: Path) -> None:
        """Makes the folder of a server's data as a new installation has it."""
        template = self.folder / "template"
        if not template.exists():
            self._install(template)
        if target.exists():
            shutil.rmtree(target)
        shutil.copytree(template, target)
        for path in [target, *target.rglob("*")]:
            self.give(path)

    def _install(self, template: Path) -> None:
        # The only accounts are those of this process's and the servers' system users, through the Unix socket.
        command = ["mariadb-install-db", "--no-defaults", f"--datadir={template}", "--skip-test-db"]
        command += [
            "--innodb-log-file-size=16M",
            "--auth-root-authentication-method=socket",
            f"--auth-root-socket-user={self.admin.user}",
        ]
        log = self.folder / "install.log"
        # The folder for temporary files of this process's user may be closed to the servers'.
        if self.start(command, log, {**os.environ, "TMPDIR": str(self.folder)}).wait():
            raise ClusterError(f"can't make a server's data: {last_line(log)}")


def last_line(log: Path) -> str:
    """The last line of a log that tells an error, or else the last that says something."""
    lines = [line for line in log.read_text(errors="replace").splitlines() if line.strip()]
    lines = [line for line in lines if "ERROR" in line] or lines
    return lines[-1].strip() if lines else "its log is empty"
