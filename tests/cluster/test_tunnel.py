# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""The encrypted way between two machines, here both ends on one."""

import os
import select
import shutil
import socket
from pathlib import Path

from conftest import LIMIT, TOP, wait_until

from cluster.runner.place import Place

TLS = TOP / "tests" / "data" / "tls"


def through_the_tunnel(folder: Path, name: str) -> bytes:
    """What comes back from an echo at the other end of the tunnel, whose certificate must be for that name."""
    place = Place(folder)
    try:
        tls = folder / "tls"
        tls.write_text("".join((TLS / part).read_text() for part in ("localhost.pem", "server-key.pem")))
        authority = shutil.copy(TLS / "authority.pem", folder)
        users, echo = place.ports.take(), socket.create_server(("127.0.0.1", 0))
        variables = {"CERTIFICATE": str(tls), "AUTHORITY": str(authority), "NAME": name}
        variables |= {"TUNNEL": f"127.0.0.1:{place.ports.take()}", "USERS": f"127.0.0.1:{users}"}
        variables["READERS"] = f"127.0.0.1:{echo.getsockname()[1]}"
        for file in (tls, Path(authority)):
            place.give(file)
        configuration = shutil.copy(TOP / "cluster" / "tunnel.cfg", folder)
        command = [str(place.program("haproxy")), "-db", "-f", str(configuration)]
        place.start(command, folder / "log", {**os.environ, **variables})
        return talk(users, echo)
    finally:
        place.end()


def listens(port: int) -> bool:
    with socket.socket() as client:
        return client.connect_ex(("127.0.0.1", port)) == 0


def talk(port: int, echo: socket.socket) -> bytes:
    """Says hello at a port; what is heard there, or nothing if the connection isn't carried to the other end."""

    wait_until("HAProxy listens", lambda: listens(port))
    client = socket.create_connection(("127.0.0.1", port), LIMIT)
    with client, echo:
        client.sendall(b"hello")
        readable, _, _ = select.select([echo, client], [], [], LIMIT)
        while echo in readable:
            with echo.accept()[0] as end:
                if data := end.recv(5):
                    return data
            readable, _, _ = select.select([echo, client], [], [], LIMIT)
        return b""


def test_the_tunnel_leads_to_the_right_server_only(open_folder: Path, need_clusters: None) -> None:
    for name in ("localhost", "elsewhere"):
        (open_folder / name).mkdir()
    assert through_the_tunnel(open_folder / "localhost", "localhost") == b"hello"
    assert through_the_tunnel(open_folder / "elsewhere", "elsewhere") == b""
