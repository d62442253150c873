# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""HAProxy before the servers of a private cluster."""

import os
from collections.abc import Mapping

from cluster.runner.client import Address
from cluster.runner.place import FILES, Place, last_line
from cluster.runner.processes import Child, ClusterError
from cluster.runner.server import Server


class Proxy:
    """Listens on a port of its own, with a configuration below cluster/."""

    def __init__(self, place: Place, configuration: str, servers: Mapping[str, Server]) -> None:
        self._place = place
        self._port = place.ports.take()
        self._log = place.folder / "haproxy.log"
        self._file = place.folder / "haproxy.cfg"
        self._file.write_bytes((FILES / configuration).read_bytes())
        place.give(self._file)
        self._child: Child | None = None
        self._variables = {name.upper(): f"127.0.0.1:{server.port}" for name, server in servers.items()}
        self._variables["READERS"] = f"127.0.0.1:{self._port}"

    @property
    def address(self) -> Address:
        return Address(port=self._port)

    def start(self, *options: str) -> None:
        command = [str(self._place.program("haproxy")), "-db", "-f", str(self._file), *options]
        self._child = self._place.start(command, self._log, {**os.environ, **self._variables})

    def check(self) -> None:
        """Raises ClusterError when HAProxy has ended."""
        if self.child.has_ended():
            raise ClusterError(f"HAProxy has ended: {last_line(self._log)}")

    def restart(self) -> None:
        """Ends HAProxy and starts it anew: its sessions end."""
        self.child.kill()
        self.start()

    def reload(self) -> None:
        """Starts a new HAProxy, to which the old one leaves the port; the old one goes on with its sessions."""
        self.start("-sf", str(self.child.number))

    @property
    def child(self) -> Child:
        if self._child is None:
            raise ClusterError("HAProxy has not been started")
        return self._child
