# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""The server's settings for a connection, and the line to it."""

import ipaddress
import socket
from collections.abc import Iterator

from mapmaker.doctor.finding import Finding, Severity
from mapmaker.doctor.patient import Patient

WORKING_DAY = 8 * 60 * 60  # seconds


def check(patient: Patient) -> Iterator[Finding]:
    """Settings that break statements, or the connection."""
    if "ANSI_QUOTES" in str(patient.value("SELECT @@sql_mode")).split(","):
        yield Finding(
            Severity.ERROR,
            "server.ansi_quotes",
            "server",
            "the mode ANSI_QUOTES is on",
            "a date filter empties the table: its value stands in double quotes and is taken for a column",
            "take ANSI_QUOTES (or ANSI) out of sql_mode",
        )
    seconds = int(patient.value("SELECT @@wait_timeout"))
    if seconds < WORKING_DAY:
        yield Finding(
            Severity.WARNING,
            "server.wait_timeout",
            "server",
            f"wait_timeout is {seconds} s",
            "after so long without a statement the window stays empty until the host makes a new one",
            f"set it to {WORKING_DAY} or more",
        )
    yield from encryption(patient)


def is_this_machine(host: str) -> bool:
    """Whether a connection to the host stays on this machine."""
    try:
        return ipaddress.ip_address(host).is_loopback
    except ValueError:
        return host == "localhost"


def encryption(patient: Patient) -> Iterator[Finding]:
    """A line that others can listen to, or whose other end may be anybody."""
    if is_this_machine(patient.host):
        yield from elsewhere(patient)
        return
    cipher = patient.rows("SHOW SESSION STATUS LIKE 'Ssl_cipher'")
    if not (cipher and cipher[0][1]):
        yield line_finding(
            "encryption",
            f"the line to {patient.host} is not encrypted",
            "whoever is on the way can read the documents, and change them",
            "ask for TLS in MYSQL_HOST (host=...;ssl-ca=...;ssl-verify-server-cert=1), or use a tunnel to a socket",
        )
    elif not patient.link.ctx.check_hostname:
        yield line_finding(
            "certificate",
            f"nobody checks that the server is {patient.host}",
            "whoever is on the way can take its place, and get the documents' readers to open any address",
            "add ssl-verify-server-cert=1 to MYSQL_HOST",
        )


def elsewhere(patient: Patient) -> Iterator[Finding]:
    """A line that begins on this machine and ends on another one."""
    name = str(patient.value("SELECT @@hostname"))
    if name != socket.gethostname():
        yield Finding(
            Severity.NOTE,
            "server.elsewhere",
            "server",
            f"{patient.host} leads to another machine, {name}",
            "the way between is the tunnel's or the proxy's; from here nobody sees whether it is encrypted",
            "look there; a proxy that passes bytes on needs TLS in MYSQL_HOST as well",
        )


def line_finding(fault_code: str, fault: str, effect: str, remedy: str) -> Finding:
    """A warning about the line."""
    return Finding(Severity.WARNING, f"server.{fault_code}", "server", fault, effect, remedy)
