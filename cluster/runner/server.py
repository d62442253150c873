# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""One MariaDB server of a private cluster."""

import os
import signal
import subprocess
from collections.abc import Mapping, Sequence
from contextlib import AbstractContextManager

from cluster.runner.client import Address, Client, QueryError, connected
from cluster.runner.place import FILES, Place, last_line
from cluster.runner.processes import Child, ClusterError, wait_for


class Server:
    """A server with a folder of its own: its configuration is that of files below cluster/ and what only holds here.

    It listens on a port of 127.0.0.1, and on a Unix socket where the administrator comes in.
    """

    def __init__(self, place: Place, name: str, files: Sequence[str], options: Mapping[str, str]) -> None:
        self.place, self.name = place, name
        self.folder = place.folder / name
        self.port = place.ports.take()
        self.data, self.log = self.folder / "data", self.folder / "log"
        self._files, self._options = files, options
        self._child: Child | None = None
        (self.folder / "tmp").mkdir(parents=True)
        for path in (self.folder, self.folder / "tmp"):
            place.give(path)

    @property
    def socket(self) -> str:
        return str(self.folder / "socket")

    @property
    def address(self) -> Address:
        return Address(port=self.port)

    def start(self, *options: str) -> None:
        """Starts the server, with new data if it has none; wait_ready() tells when it answers."""
        if not self.data.exists():
            self.place.new_data(self.data)
        configuration = self.folder / "my.cnf"
        configuration.write_text(self._configuration(), encoding="utf-8")
        self.place.give(configuration)
        programs = f"{self.place.folder}/programs:{os.environ['PATH']}:/usr/sbin:/sbin"
        environment = {"PATH": programs, "LANG": "C.UTF-8", "HOME": str(self.folder)}
        command = [f"{self.place.program('mariadbd')}", f"--defaults-file={configuration}", *options]
        self._child = self.place.start(command, self.log, environment)

    def wait_ready(self) -> None:
        """Returns when the server answers. Raises ClusterError when it ends or takes too long."""
        wait_for(f"{self.name} answers", lambda: self.child.has_ended() or self.answers())
        if self.child.has_ended():
            raise ClusterError(f"{self.name} has ended: {last_line(self.log)}")

    @property
    def child(self) -> Child:
        if self._child is None:
            raise ClusterError(f"{self.name} has not been started")
        return self._child

    def answers(self) -> bool:
        try:
            with self.client():
                return True
        except QueryError:
            return False

    def client(self) -> AbstractContextManager[Client]:
        """A connection of the administrator."""
        return connected(Address(socket=self.socket), self.place.admin)

    def value(self, statement: str) -> str:
        with self.client() as client:
            return client.value(statement)

    def script(self, text: str) -> None:
        """Runs a script of statements as the administrator. Raises ClusterError."""
        command = ["mariadb", "--no-defaults", "--protocol=socket", f"--socket={self.socket}"]
        command += [f"--user={self.place.admin.user}", "--default-character-set=utf8mb4"]
        result = subprocess.run(command, input=text, capture_output=True, text=True, check=False)
        if result.returncode:
            raise ClusterError(f"{self.name}: {' '.join(result.stderr.split())}")

    def kill(self) -> None:
        """Ends the server as a loss of power would."""
        self.child.kill()

    def stop(self) -> None:
        """Stops the server in the midst of what it does; connections stay open and nothing answers."""
        self.child.send(signal.SIGSTOP)
        wait_for(f"{self.name} stands still", self.child.is_stopped)

    def go_on(self) -> None:
        self.child.send(signal.SIGCONT)

    def end(self) -> None:
        """Ends the server in order."""
        self.child.end()

    def _configuration(self) -> str:
        here = {
            "datadir": str(self.data),
            "tmpdir": str(self.folder / "tmp"),
            "socket": self.socket,
            "pid-file": str(self.folder / "pid"),
            "port": str(self.port),
            "bind-address": "127.0.0.1",
            "innodb-log-file-size": "16M",
            **self._options,
        }
        texts = [(FILES / name).read_text(encoding="utf-8") for name in ("common.cnf", *self._files)]
        lines = "\n".join(f"{name} = {value}" for name, value in here.items())
        return "\n".join(texts) + f"\n# What holds for this private cluster only.\n[mariadbd]\n{lines}\n"
