# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""The doctor on heads: links to a map, and documents on shards."""

from collections.abc import Callable, Iterator
from typing import Any

import pytest

from mapmaker import head, store
from mapmaker.doctor import plan
from mapmaker.doctor.examine import examine
from mapmaker.doctor.finding import Finding, Severity
from mapmaker.hostnames import HostNames
from mapmaker.spider import Link, shard_definition
from mapmaker.tests.doctorbase import GOOD, READER, codes, global_setting, good_database, reader
from mapmaker.tests.privateserver import PrivateServer, connect, spider_options
from mapmaker.tests.test_shards import BATCHED, known

NAMES = HostNames("ill_map", "ill_texts", "t_train")
AS_THEY_COME = "--spider-quick-mode=2"  # rows of a link are passed on one by one
SHORT = [
    AS_THEY_COME,
    "--spider-net-read-timeout=60",
    "--spider-connect-timeout=1",
    "--spider-connect-retry-count=20",
]
COLUMNS = "(id INT PRIMARY KEY, date DATETIME, title VARCHAR(200), URL VARCHAR(200), text TEXT)"


@pytest.fixture(scope="module")
def behind(servers: Callable[..., PrivateServer]) -> Iterator[PrivateServer]:
    """A server with a good map."""
    made = servers("behind")
    link = connect(made.environment)
    with good_database(link):
        yield made
    link.close()


@pytest.fixture(scope="module")
def front(servers: Callable[..., PrivateServer], behind: PrivateServer) -> PrivateServer:
    """A head that knows the other server."""
    made = servers("front", *spider_options(), *BATCHED, *SHORT)
    known(made, "backend", behind)
    known(made, "other", behind)
    return made


@pytest.fixture
def links(front: PrivateServer) -> Iterator[PrivateServer]:
    """The head with links to the map."""
    with store.connection(front.environment) as opened:
        head.link_tables(opened, NAMES, Link("backend"))
    yield front
    front.ask("DROP DATABASE ill_map;\nDROP DATABASE ill_texts")


def look(server: PrivateServer, environment: dict[str, str] | None = None) -> list[Finding]:
    """What the doctor says to a user, else to one who may do all, but for the rights."""
    with store.connection(environment or server.environment, autocommit=None) as link:
        found = examine(link, "localhost", NAMES)
    return [finding for finding in found if finding.code != "rights.more"]


def test_good_links_have_no_findings(links: PrivateServer) -> None:
    assert look(links) == []


def test_links_whose_rows_come_in_disorder_are_found(links: PrivateServer) -> None:
    link = connect(links.environment)
    with global_setting(link, "spider_quick_mode", 3):
        (found,) = look(links)
    link.close()
    assert (found.code, found.severity, found.place) == (
        "links.order",
        Severity.WARNING,
        "ill_texts.document",
    )


@pytest.mark.parametrize("spread", [False, True])
def test_items_without_a_document_are_found_behind_links(
    links: PrivateServer, behind: PrivateServer, spread: bool
) -> None:
    many = "FROM (SELECT seq FROM ill_map.seq_50_to_2999) AS numbers"
    behind.ask(
        f"INSERT INTO ill_texts.document SELECT seq, '2005-03-01', 'A', 'http://a.org', REPEAT('x', 500) {many};\n"
        f"INSERT INTO ill_map.t_train SELECT 3, 0.5, seq {many}"
    )
    try:
        if spread:
            in_shards(links, ["backend"])
        assert look(links) == []
        behind.ask("DELETE FROM ill_texts.document WHERE id IN (2000, 2001)")
        (found,) = look(links)
    finally:
        behind.ask(
            "DELETE FROM ill_texts.document WHERE id > 49;\nDELETE FROM ill_map.t_train WHERE item > 49"
        )
    assert (found.code, found.fault) == ("indices.orphans", "2 items are the id of no document")


def in_shards(front: PrivateServer, servers: list[str]) -> None:
    """Puts the documents into partitions, of which each is a link, and the rest into the head."""
    front.ask(
        "DROP TABLE ill_texts.document;\n"
        f"CREATE TABLE ill_texts.document {shard_definition(COLUMNS, [Link(name) for name in servers], 'ill_texts', 'document')};\n"
        "CREATE TABLE ill_map.own ENGINE=InnoDB AS SELECT * FROM ill_map.t_train;\n"
        "ALTER TABLE ill_map.own ADD PRIMARY KEY (node, item);\n"
        "DROP TABLE ill_map.t_train;\nRENAME TABLE ill_map.own TO ill_map.t_train"
    )


def test_documents_that_come_one_by_one_are_found(links: PrivateServer) -> None:
    in_shards(links, ["backend"])
    assert look(links) == []
    link = connect(links.environment)
    with global_setting(link, "join_cache_level", 2):
        (found,) = look(links)
    link.close()
    assert (found.code, found.severity, found.place) == (
        "plan.one_by_one",
        Severity.WARNING,
        "ill_texts.document",
    )


def test_batches_that_need_more_rights_are_found(links: PrivateServer) -> None:
    in_shards(links, ["backend"])
    link = connect(links.environment)
    with global_setting(link, "spider_bka_mode", 1):
        assert codes(look(links)) == ["links.bka_mode"]
    link.close()


def test_shards_that_send_all_documents_to_a_new_window_are_found(links: PrivateServer) -> None:
    link = connect(links.environment)
    with global_setting(link, "spider_first_read", 0):
        assert look(links) == []  # whole tables hand the statement over with its limit
        in_shards(links, ["backend"])
        (found,) = look(links)
    link.close()
    assert (found.code, found.severity, found.place) == (
        "links.first_read",
        Severity.WARNING,
        "ill_texts.document",
    )


def test_assignments_on_several_servers_are_found(links: PrivateServer) -> None:
    place = 'srv "backend", database "ill_map", table "t_train"'
    links.ask(
        "DROP TABLE ill_map.t_train;\n"
        "CREATE TABLE ill_map.t_train (node INT NOT NULL, dist DOUBLE NOT NULL, item INT NOT NULL,"
        " PRIMARY KEY (node, item)) ENGINE=SPIDER COMMENT='wrapper \"mysql\"'"
        f" PARTITION BY RANGE (node) (PARTITION a VALUES LESS THAN MAXVALUE COMMENT='{place}')"
    )
    link = connect(links.environment)
    with global_setting(link, "spider_semi_split_read", 1):
        assert "links.hang" in codes(look(links))
    link.close()
    assert "links.hang" not in codes(look(links))


def test_links_without_a_key_of_nodes_are_found(links: PrivateServer) -> None:
    place = 'wrapper "mysql", srv "backend", database "ill_map", table "t_som"'
    links.ask(
        "DROP TABLE ill_map.t_som;\n"
        "CREATE TABLE ill_map.t_som (node INT NOT NULL, _assigned_topic INT, _keywords VARCHAR(99))"
        f" ENGINE=SPIDER COMMENT='{place}'"
    )
    assert codes(look(links)) == ["keywords.key"]


@pytest.mark.parametrize(
    "name, value, expected",
    [
        ("spider_net_read_timeout", 600, ["links.hanging"]),
        ("spider_connect_retry_count", 61, ["links.unreachable"]),
    ],
)
def test_long_waits_are_noted(links: PrivateServer, name: str, value: int, expected: list[str]) -> None:
    link = connect(links.environment)
    with global_setting(link, name, value):
        found = look(links)
    link.close()
    assert (codes(found), found[0].severity) == (expected, Severity.NOTE)


def test_links_to_elsewhere_without_a_certificate_are_noted(
    links: PrivateServer, behind: PrivateServer
) -> None:
    far = "FOREIGN DATA WRAPPER mysql OPTIONS (HOST 'db.example.org', USER 'u')"
    links.ask(f"CREATE OR REPLACE SERVER backend {far}")
    found = look(links)
    known(links, "backend", behind)
    assert "links to backend don't ask for encryption and a known server" in [note.fault for note in found]
    links.ask(f"CREATE OR REPLACE SERVER backend {far.replace('db.example.org', '127.0.0.1')}")
    found = look(links)
    known(links, "backend", behind)
    assert "links.encryption" not in codes(found)


def test_a_user_who_may_not_see_where_links_lead_gets_a_note(links: PrivateServer) -> None:
    grants = "".join(f";\nGRANT SELECT ON {table} TO {READER}@localhost" for table in NAMES.tables())
    links.ask(f"CREATE USER {READER}@localhost IDENTIFIED BY 'reads'" + grants)
    assert codes(look(links, reader(links.environment))) == ["links.encryption"]


def test_a_server_that_is_gone_is_an_error(
    links: PrivateServer, servers: Callable[..., PrivateServer]
) -> None:
    gone = servers("gone")
    gone.ask(GOOD)
    known(links, "leaving", gone)
    in_shards(links, ["backend", "leaving"])
    gone.stop()
    found = look(links)
    assert [(finding.code, finding.severity, finding.place) for finding in found] == [
        ("links.down", Severity.ERROR, "ill_texts.document")
    ]


def test_a_link_that_may_not_read_is_an_error(links: PrivateServer, behind: PrivateServer) -> None:
    behind.ask(
        "CREATE USER blind@localhost IDENTIFIED BY 'x';\nGRANT INSERT ON ill_texts.document TO blind@localhost"
    )
    links.ask(
        "CREATE SERVER blind FOREIGN DATA WRAPPER mysql OPTIONS (HOST 'localhost', "
        f"SOCKET '{behind.folder}/socket', USER 'blind', PASSWORD 'x')"
    )
    in_shards(links, ["blind"])
    (found,) = look(links)
    assert (found.code, "denied" in found.fault) == ("links.down", True)


def test_an_index_that_is_not_used_is_found(links: PrivateServer, monkeypatch: pytest.MonkeyPatch) -> None:
    in_shards(links, ["backend"])
    monkeypatch.setattr(plan, "MANY", 5)
    assert look(links) == []
    links.ask(
        "ALTER TABLE ill_map.t_train DROP PRIMARY KEY, ADD INDEX hidden (node, item);\n"
        "ALTER TABLE ill_map.t_train ALTER INDEX hidden IGNORED"
    )
    monkeypatch.setattr(plan, "MANY", 40)
    assert codes(look(links)) == ["indices.primary", "plan.scan"]
    monkeypatch.setattr(plan, "MANY", 60)
    assert codes(look(links)) == ["indices.primary"]
