# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""The ssh tunnel of docs/security.md, with a server of its own for ssh on this machine."""

import os
import pwd
import shutil
import socket
import subprocess
import sys
import tempfile
from collections.abc import Iterator
from pathlib import Path

import pagesamples
import pytest
from kitprocess import LIMIT, TOP

CACHE = Path(os.environ.get("XDG_CACHE_HOME") or Path.home() / ".cache") / "qtutils-check"
# Root's server would ask for a user of its own; that of others serves themselves alone.
AS_USER = ["setpriv", "--reuid=nobody", "--regid=nogroup", "--clear-groups"] if os.geteuid() == 0 else []
HOST = f"""#!{sys.executable}
import os, stat
from qtutils import NodeBrowser

print(oct(stat.S_IMODE(os.stat(os.environ["MYSQL_UNIX_PORT"]).st_mode)))
with NodeBrowser("som", "news") as browser:
    browser.set_som_table("news_train")
    browser.pass_hierarchy([[1, 2, 3], [], [], []])
    browser.select(1)
    print(browser.num_rows)
"""
SERVER = """HostKey {folder}/host
AuthorizedKeysFile {folder}/user.pub
StrictModes no
UsePAM {pam}
PidFile none
"""
# The server lives as long as the connection, or until the limit if this process is killed before.
CLIENT = """Host db.example.org
    User {user}
    IdentityFile {folder}/user
    IdentitiesOnly yes
    UserKnownHostsFile {folder}/known
    GlobalKnownHostsFile none
    ProxyCommand timeout {limit} {program} -i -f {folder}/sshd_config
"""


def server_program(folder: Path) -> Path:
    """sshd: the installed one, or a copy of the unpacked one that others may run."""
    if installed := shutil.which("sshd", path="/usr/sbin:/usr/local/sbin"):
        return Path(installed)
    unpacked = CACHE / "usr" / "sbin" / "sshd"
    if not unpacked.exists():
        pytest.skip("openssh-server is neither installed nor unpacked: ./check unpacks it")
    return Path(shutil.copy(unpacked, folder))


def make_key(file: Path) -> str:
    """Makes a pair of keys; the public one."""
    subprocess.run(["ssh-keygen", "-q", "-t", "ed25519", "-N", "", "-f", str(file)], check=True)
    return file.with_suffix(".pub").read_text()


def make_program(file: Path, text: str) -> None:
    file.write_text(text)
    file.chmod(0o755)


@pytest.fixture
def machine() -> Iterator[Path]:
    """A folder with the programs ssh and host-program, to which db.example.org is a machine that answers."""
    with tempfile.TemporaryDirectory(prefix="ssh-") as name:
        folder = Path(name)
        folder.chmod(0o755)
        host_key = make_key(folder / "host")
        make_key(folder / "user")
        (folder / "known").write_text(f"db.example.org {host_key}")
        user = pwd.getpwnam("nobody" if AS_USER else pwd.getpwuid(os.geteuid()).pw_name)
        os.chown(folder / "host", user.pw_uid, user.pw_gid)
        words = {"folder": folder, "user": user.pw_name, "limit": LIMIT, "pam": "yes" if AS_USER else "no"}
        program = " ".join([*AS_USER, str(server_program(folder))])
        (folder / "sshd_config").write_text(SERVER.format(**words))
        (folder / "ssh_config").write_text(CLIENT.format(**words, program=program))
        (folder / "bin").mkdir()
        make_program(
            folder / "bin" / "ssh", f'#!/bin/sh\nexec {shutil.which("ssh")} -F {folder}/ssh_config "$@"\n'
        )
        make_program(folder / "bin" / "host-program", HOST)
        (folder / "run").mkdir(mode=0o700)
        yield folder


def open_way(file: Path) -> None:
    """Lets other users reach a file in private folders below that for temporary files."""
    for folder in file.parents:
        if folder == Path(tempfile.gettempdir()):
            break
        folder.chmod(folder.stat().st_mode | 0o011)


def sample(database: str) -> str:
    """The page's commands, with the socket of a private database server."""
    page = pagesamples.read(TOP / "docs" / "security.md")
    (text,) = [text for _, text in page if "ssh -f" in text]
    assert "/run/mysqld/mysqld.sock" in text
    return text.replace("/run/mysqld/mysqld.sock", database)


def test_the_ssh_tunnel_leads_to_the_server(machine: Path, surroundings: dict[str, str]) -> None:
    # given: the socket that an earlier tunnel has left
    database = surroundings.pop("MYSQL_UNIX_PORT")
    open_way(Path(database))
    surroundings |= {"XDG_RUNTIME_DIR": f"{machine}/run", "PATH": f"{machine}/bin:{surroundings['PATH']}"}
    with socket.socket(socket.AF_UNIX) as left:
        left.bind(f"{machine}/run/som.sock")
    # when
    result = subprocess.run(
        ["sh", "-e", "-c", sample(database)],
        env=surroundings,
        cwd=TOP,
        stdin=subprocess.DEVNULL,
        capture_output=True,
        text=True,
        timeout=LIMIT,
        check=False,
    )
    # then: the map was shown by a socket that is closed to others, and the tunnel has ended
    assert (result.returncode, result.stdout) == (0, "0o600\n5\n"), result.stderr
    assert not (machine / "run" / "som.ssh").exists()
