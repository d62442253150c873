# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""The doctor on replicas and on the node of a cluster."""

from collections.abc import Callable, Iterator
from typing import Any

import pytest

from mapmaker.doctor import replication
from mapmaker.doctor.finding import Severity
from mapmaker.tests.doctorbase import READER, codes, findings, global_setting, good_database, reader, run
from mapmaker.tests.privateserver import (
    PASSWORD,
    USER,
    PrivateServer,
    connect,
    free_port,
    galera_options,
)

ALONE = ["cluster.size"]


@pytest.fixture(scope="module")
def node(servers: Callable[..., PrivateServer]) -> PrivateServer:
    """A cluster of one node, which reads on without the others."""
    return servers("node", *galera_options(), "--wsrep-dirty-reads=ON")


@pytest.fixture
def maker(node: PrivateServer) -> Iterator[Any]:
    """One who may do all on a node with a good map."""
    link = connect(node.environment)
    with good_database(link):
        yield link
    link.close()


def test_a_node_with_a_good_map_lacks_only_others(node: PrivateServer, maker: Any) -> None:
    (found,) = findings(reader(node.environment))
    assert (found.code, found.severity, found.fault) == (
        "cluster.size",
        Severity.WARNING,
        "the cluster has 1 node",
    )


@pytest.mark.parametrize(
    "statements, expected",
    [
        ("ALTER TABLE ill_map.t_train ENGINE=Aria", ["cluster.engine"]),
        (
            "ALTER TABLE ill_texts.document DROP PRIMARY KEY, ADD UNIQUE (id)",
            ["cluster.no_key"],
        ),
        ("ALTER TABLE ill_map.t_som MODIFY node INT NOT NULL AUTO_INCREMENT", ["cluster.auto_increment"]),
    ],
)
def test_tables_that_a_cluster_does_not_share_are_found(
    node: PrivateServer, maker: Any, statements: str, expected: list[str]
) -> None:
    if "AUTO_INCREMENT" in statements:
        run(maker, "SET SESSION sql_mode = 'NO_AUTO_VALUE_ON_ZERO'")
    run(maker, statements)
    assert codes(findings(reader(node.environment))) == ALONE + expected


def test_a_node_that_would_fall_silent_is_noted(node: PrivateServer, maker: Any) -> None:
    with global_setting(maker, "wsrep_dirty_reads", 0):
        assert codes(findings(reader(node.environment))) == [*ALONE, "cluster.dirty_reads"]


def test_a_node_that_gives_its_rows_away_is_found(node: PrivateServer, maker: Any) -> None:
    with global_setting(maker, "wsrep_desync", 1):
        found = findings(reader(node.environment))
    assert codes(found) == ["cluster.state", *ALONE]
    assert found[0].fault == "the node is Donor/Desynced, not Synced"


def test_a_node_without_the_majority_is_found(servers: Callable[..., PrivateServer]) -> None:
    lost = servers("lost", *galera_options(), "--wsrep-dirty-reads=ON")
    link = connect(lost.environment)
    with good_database(link):
        pass
    run(link, "CREATE USER someone@localhost IDENTIFIED BY 'reads'")
    run(link, "SET GLOBAL wsrep_cluster_address = 'gcomm://127.0.0.1:1'")
    link.close()
    found = findings(lost.environment)
    assert "cluster.no_quorum" in codes(found)
    lost.ask("SET GLOBAL wsrep_dirty_reads = OFF")
    (refused,) = findings(lost.environment)
    assert (refused.code, refused.severity) == ("cluster.refuses", Severity.ERROR)


@pytest.fixture(scope="module")
def replica(servers: Callable[..., PrivateServer]) -> Iterator[PrivateServer]:
    """A replica of a primary with a good map."""
    primary = servers("primary", "--log-bin=log", "--server-id=1", port=free_port())
    made = servers("replica", "--server-id=2", "--read-only")
    made.ask(
        f"CHANGE MASTER TO master_host='127.0.0.1', master_port={primary.port}, master_user='{USER}',"
        f" master_password='{PASSWORD}', master_use_gtid=slave_pos;\nSTART SLAVE"
    )
    link = connect(primary.environment)
    with good_database(link):
        position = primary.ask("SELECT @@gtid_binlog_pos")[0][0]
        assert made.ask(f"SELECT MASTER_GTID_WAIT('{position}', 30)") == [(0,)]
        yield made
    link.close()


@pytest.fixture
def stopped(replica: PrivateServer) -> Iterator[None]:
    """The replica doesn't follow for a while."""
    replica.ask("STOP SLAVE")
    yield
    replica.ask("START SLAVE")


@pytest.fixture
def seen(replica: PrivateServer) -> Iterator[None]:
    """The window's user may see how the replica follows."""
    replica.ask(f"GRANT SLAVE MONITOR ON *.* TO {READER}@localhost")
    yield
    replica.ask(f"REVOKE SLAVE MONITOR ON *.* FROM {READER}@localhost")


def test_a_good_replica_has_no_findings(replica: PrivateServer, seen: None) -> None:
    assert findings(reader(replica.environment)) == []


def test_what_a_user_may_not_see_is_a_note(replica: PrivateServer) -> None:
    (found,) = findings(reader(replica.environment))
    assert (found.code, found.severity) == ("replica.unseen", Severity.NOTE)


def test_a_replica_that_stands_still_is_found(replica: PrivateServer, stopped: None, seen: None) -> None:
    (found,) = findings(reader(replica.environment))
    assert (found.code, found.severity) == ("replica.stopped", Severity.WARNING)
    assert found.fault == "the replica doesn't follow: Slave_IO_Running, Slave_SQL_Running"


def test_a_replica_that_stands_still_is_found_without_rights(replica: PrivateServer, stopped: None) -> None:
    (found,) = findings(reader(replica.environment))
    assert (found.code, found.fault) == ("replica.stopped", "the server is read-only, but follows nobody")


def test_a_replica_that_takes_changes_is_found(replica: PrivateServer, seen: None) -> None:
    link = connect(replica.environment)
    with global_setting(link, "read_only", 0):
        assert codes(findings(reader(replica.environment))) == ["replica.writable"]
    link.close()


FOLLOWED = {
    "Slave_IO_Running": "Yes",
    "Slave_SQL_Running": "Yes",
    "Last_SQL_Error": "",
    "Last_IO_Error": "",
    "Seconds_Behind_Master": 0,
}


@pytest.mark.parametrize(
    "state, faults",
    [
        ({}, []),
        ({"Seconds_Behind_Master": 60}, []),
        ({"Seconds_Behind_Master": 61}, ["the replica is 61 s behind"]),
        (
            {"Slave_SQL_Running": "No", "Last_SQL_Error": "Duplicate\nentry", "Seconds_Behind_Master": None},
            ["the replica doesn't follow: Slave_SQL_Running: Duplicate entry"],
        ),
        (
            {"Slave_IO_Running": "Connecting", "Last_IO_Error": "no way"},
            ["the replica doesn't follow: Slave_IO_Running: no way"],
        ),
    ],
)
def test_a_source_is_judged(state: dict[str, object], faults: list[str]) -> None:
    assert [found.fault for found in replication.followed_well({**FOLLOWED, **state})] == faults


def test_an_open_account_with_rights_is_found(replica: PrivateServer, seen: None) -> None:
    replica.ask(
        "CREATE USER haproxy@localhost;\nCREATE USER open@localhost;\nGRANT SELECT ON ill_map.* TO open@localhost"
    )
    try:
        found = [finding for finding in findings(replica.environment) if finding.code != "rights.more"]
    finally:
        replica.ask("DROP USER haproxy@localhost, open@localhost")
    assert [(finding.code, finding.fault) for finding in found] == [
        ("accounts.open", "'open'@'localhost' has no password and may SELECT")
    ]
