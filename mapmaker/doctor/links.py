# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""Tables that are links to other servers (engine SPIDER): do these answer, and how do rows come from there?"""

import re
from collections.abc import Iterator

from mapmaker.doctor.columns import MISSING, error, warning
from mapmaker.doctor.finding import Finding, Severity
from mapmaker.doctor.patient import Patient, Table
from mapmaker.doctor.server import is_this_machine
from mapmaker.driver import ServerError

PATIENCE = 60  # seconds
ENCRYPTED = ('ssl_ca "', 'ssl_verify_server_cert "1"')
MIXES = "3"  # value of spider_quick_mode, the usual one
CREATES_TABLES = "1"  # value of spider_bka_mode


def check(patient: Patient) -> Iterator[Finding]:
    """Links that lead nowhere, hang, need more rights, or are open to others."""
    links = [table for table in dict.fromkeys(patient.tables) if table.is_link]
    for table in links:
        if table.failure and table.failure.code not in MISSING:
            fault = f"no rows come by the link: {table.failure.message}"
            remedy = "start the server behind it, or mend CREATE SERVER, its user's rights or the table there"
            yield error(
                "links.down", table, fault, "the window shows nothing of it, and says nothing", remedy
            )
    if links:
        yield from settings(patient)
        yield from patience(patient, links)
        yield from encryption(patient, links)


def settings(patient: Patient) -> Iterator[Finding]:
    """Settings that links to whole tables need, and shards."""
    documents, assignment = patient.documents, patient.assignment
    whole = [table for table in (documents, patient.keywords) if table.is_link and not table.partitions]
    if whole and patient.setting("spider_quick_mode") == MIXES:
        fault = f"spider_quick_mode is {MIXES}: answers of more than 1,024 rows may come in another order"
        effect = (
            "large nodes may not be sorted, and nodes of large maps may have the keywords and signs of others"
        )
        yield warning("links.order", whole[0], fault, effect, "set spider_quick_mode=2")
    if documents.is_link and documents.partitions:
        yield from shards(patient)
    if assignment.is_link and assignment.partitions and patient.setting("spider_semi_split_read") != "0":
        fault = "the assignments are spread over servers, and spider_semi_split_read isn't 0"
        effect = "the statement that learns the columns hangs"
        yield error("links.hang", assignment, fault, effect, "set spider_semi_split_read=0")


def shards(patient: Patient) -> Iterator[Finding]:
    """Settings for documents on several servers."""
    documents = patient.documents
    batches = int(patient.setting("join_cache_level") or 0) > 4
    if batches and patient.setting("spider_bka_mode") == CREATES_TABLES:
        fault = "spider_bka_mode is 1"
        effect = (
            "the links' user needs the right to make temporary tables on the shards, else nodes are empty"
        )
        yield warning("links.bka_mode", documents, fault, effect, "set spider_bka_mode=2")
    if int(patient.setting("spider_first_read") or 0) <= 0:
        fault = "spider_first_read is not set: the statement that learns the columns fetches all documents of a shard"
        effect = "a window takes the longer to open the more documents a shard has"
        remedy = "set spider_first_read=501, spider_multi_split_read=500 and join_buffer_size=64K"
        yield warning("links.first_read", documents, fault, effect, remedy)


def patience(patient: Patient, links: list[Table]) -> Iterator[Finding]:
    """How long a window waits for a server that hangs, or that can't be reached."""
    own = re.compile(r'\b(net_read_timeout|nrt) "')
    reading = int(patient.setting("spider_net_read_timeout") or 0)
    attempts = int(patient.setting("spider_connect_retry_count") or 0)
    connecting = int(patient.setting("spider_connect_timeout") or 0) * attempts
    if reading > PATIENCE and not all(own.search(" ".join(table.places)) for table in links):
        remedy = f"set it to {PATIENCE} or less, or let a proxy in between end such connections"
        yield waiting("hanging", f"spider_net_read_timeout is {reading} s", "hangs", reading, remedy)
    if connecting > PATIENCE:
        fault = f"spider_connect_retry_count is {attempts}, spider_connect_timeout {connecting // attempts} s"
        remedy = "set spider_connect_timeout=1 and spider_connect_retry_count to a few"
        yield waiting("unreachable", fault, "can't be reached", connecting, remedy)


def waiting(code: str, fault: str, state: str, seconds: int, remedy: str) -> Finding:
    """A note that a window may wait long."""
    effect = f"a window stands still for up to {seconds} s when a server behind the links {state}"
    return Finding(Severity.NOTE, f"links.{code}", "server", fault, effect, remedy)


def encryption(patient: Patient, links: list[Table]) -> Iterator[Finding]:
    """Links that don't ask for encryption and a known server, to servers elsewhere or unknown to the user."""
    try:
        near = {
            name: bool(socket) or is_this_machine(host)
            for name, host, socket in patient.rows("SELECT server_name, host, socket FROM mysql.servers")
        }
    except ServerError:
        near = {}
    places = [place for table in links for place in table.places]
    plain = [place for place in places if not all(word in place for word in ENCRYPTED)]
    servers = set(re.findall(r'srv "([^"]+)"', " ".join(plain)))
    if far := sorted(server for server in servers if not near.get(server)):
        yield Finding(
            Severity.NOTE,
            "links.encryption",
            "server",
            f"links to {', '.join(far)} don't ask for encryption and a known server",
            "rows may come in plain, or from anybody, unless that is this machine or a tunnel",
            "make the links with --link-ca, or use a tunnel",
        )
