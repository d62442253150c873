# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""A head without rows: its tables are links to a map on another server."""

from collections.abc import Callable
from pathlib import Path

import pytest

from mapmaker import cli, driver, head, store
from mapmaker.hostnames import HostNames, NameFault
from mapmaker.spider import Link
from mapmaker.tests.maps import READER, ask, marked, marks, put, watched, whole
from mapmaker.tests.privateserver import PASSWORD, USER, PrivateServer, spider_options
from mapmaker.tests.test_shards import known

TLS = Path(__file__).parents[2] / "tests" / "data" / "tls"
NAMES = HostNames("som", "texts", "notes_train")


@pytest.fixture(scope="module")
def behind(servers: Callable[..., PrivateServer]) -> PrivateServer:
    """The server with the rows, which can encrypt."""
    certificate = [f"--ssl-cert={TLS}/localhost.pem", f"--ssl-key={TLS}/server-key.pem"]
    return servers("behind", "--general-log", "--log-output=TABLE", *certificate)


@pytest.fixture(scope="module")
def front(servers: Callable[..., PrivateServer], behind: PrivateServer) -> PrivateServer:
    """The head, which knows the other one as backend."""
    made = servers("front", *spider_options(), "--spider-quick-mode=2")
    known(made, "backend", behind)
    return made


@pytest.fixture(autouse=True)
def no_tables(front: PrivateServer) -> None:
    """The head begins without databases."""
    front.ask("DROP DATABASE IF EXISTS som;\nDROP DATABASE IF EXISTS texts")


def link(
    front: PrivateServer, names: HostNames = NAMES, server: str = "backend", authority: str = ""
) -> None:
    """Makes the links."""
    with store.connection(front.environment) as opened:
        head.link_tables(opened, names, Link(server, authority))


@pytest.mark.parametrize(
    "statement",
    [
        READER.replace("date", "document.date, id"),
        READER.replace(" ORDER", ' AND texts.document.date like "2020-01-07%" ORDER'),
        "SELECT _assigned_topic, _keywords FROM notes_som ",
        "SHOW COLUMNS FROM texts.document",
    ],
)
def test_a_head_gives_what_the_other_server_would(
    front: PrivateServer, behind: PrivateServer, statement: str
) -> None:
    put(behind.environment, marked(1))
    front.ask("CREATE DATABASE som CHARACTER SET latin1;\nCREATE DATABASE texts CHARACTER SET latin1")
    link(front)
    rows = ask(front.environment, statement)
    assert rows == ask(behind.environment, statement)
    assert rows


def test_further_columns_come_along(front: PrivateServer, behind: PrivateServer) -> None:
    put(behind.environment, marked(1))
    behind.ask("ALTER TABLE texts.document ADD `Größe` INT UNSIGNED DEFAULT 7, ADD `URL2` TEXT")
    link(front)
    assert ask(front.environment, "SELECT `Größe`, `URL2` FROM texts.document LIMIT 1") == [(7, None)]


def test_a_node_s_choice_is_one_statement_of_the_other_server(
    front: PrivateServer, behind: PrivateServer
) -> None:
    put(behind.environment, marked(1))
    link(front)
    ask(front.environment, READER)
    behind.ask("TRUNCATE mysql.general_log")
    assert len(ask(front.environment, READER)) == 20
    log = behind.ask(
        "SELECT CONVERT(argument USING utf8mb4) FROM mysql.general_log WHERE command_type = 'Query'"
    )
    (join,) = (text for (text,) in log if text.startswith("select t0"))
    assert "`notes_train` t0 join `texts`.`document` t1" in join


def test_a_head_need_not_be_told_of_a_new_map(front: PrivateServer, behind: PrivateServer) -> None:
    put(behind.environment, marked(0))
    link(front)
    with watched(front.environment) as seen:
        for mark in range(1, 8):
            put(behind.environment, marked(mark))
    assert set(seen) <= {whole(mark) for mark in range(8)}
    assert marks(ask(front.environment, READER)) == {(7.0, "7")}


def test_links_may_be_encrypted(
    front: PrivateServer, behind: PrivateServer, servers: Callable[..., PrivateServer]
) -> None:
    put(behind.environment, marked(1))
    behind.ask(f"ALTER USER {USER}@localhost REQUIRE SSL")
    try:
        with pytest.raises(store.StoreError, match="^the server refuses: Unable to connect [^\n]* backend$"):
            link(front)
        link(front, authority=f"{TLS}/authority.pem")
        assert marks(ask(front.environment, READER)) == {(1.0, "1")}
        with pytest.raises(store.StoreError, match="^the server refuses: Unable to connect [^\n]* backend$"):
            link(front, authority=f"{TLS}/other-authority.pem")
    finally:
        run_encrypted(behind, f"ALTER USER {USER}@localhost REQUIRE NONE")
    plain = servers("plain", "--skip-ssl")
    known(front, "plain", plain)
    put(plain.environment, marked(2))
    with pytest.raises(store.StoreError, match="^the server refuses: Unable to connect [^\n]* plain$"):
        link(front, server="plain", authority=f"{TLS}/authority.pem")
    with pytest.raises(store.StoreError, match='^bad file "/a\'b": [^\n]*$'):
        link(front, authority="/a'b")


def run_encrypted(server: PrivateServer, statement: str) -> None:
    """Carries out a statement for a user who must encrypt."""
    link = driver.connect(
        unix_socket=f"{server.folder}/socket", user=USER, password=PASSWORD, ssl_ca=f"{TLS}/authority.pem"
    )
    link.cursor().execute(statement)
    link.close()


def test_links_are_replaced_by_links(front: PrivateServer, behind: PrivateServer) -> None:
    put(behind.environment, marked(1))
    for _ in range(2):
        link(front)
    assert sorted(front.ask("SHOW TABLES FROM som")) == [("notes_som",), ("notes_train",)]
    assert behind.ask("SELECT COUNT(*) FROM texts.document") == [(60,)]


def test_a_table_with_rows_is_never_replaced(front: PrivateServer, behind: PrivateServer) -> None:
    put(front.environment, marked(1))
    with pytest.raises(
        store.StoreError, match=r"^texts.document has rows of its own here \(InnoDB\): [^\n]*$"
    ):
        link(front)
    assert marks(ask(front.environment, READER)) == {(1.0, "1")}


def test_what_is_missing_is_one_line(front: PrivateServer, behind: PrivateServer) -> None:
    put(behind.environment, marked(1))
    with pytest.raises(store.StoreError, match="^no CREATE SERVER has been made for absent$"):
        link(front, server="absent")
    with pytest.raises(
        store.StoreError, match="^the server refuses: Remote table 'som.other_train' is not found$"
    ):
        link(front, NAMES._replace(table="other_train"))
    with pytest.raises(NameFault, match="^bad name 'a b'"):
        link(front, NAMES._replace(table="a b"))
    with pytest.raises(NameFault, match="only up to 59 characters$"):
        link(front, NAMES._replace(table="x" * 60))


def test_the_command_makes_the_links(
    front: PrivateServer,
    behind: PrivateServer,
    monkeypatch: pytest.MonkeyPatch,
    capsys: pytest.CaptureFixture[str],
) -> None:
    put(behind.environment, marked(1))
    for name, value in front.environment.items():
        monkeypatch.setenv(name, value)
    assert cli.main(["head", "notes_train", "--server", "backend"]) == 0
    assert capsys.readouterr().out == "texts.document, som.notes_train, som.notes_som: linked to backend\n"
    assert cli.main(["head", "notes_train", "--server", "absent"]) == 2
    assert capsys.readouterr().err == "mapmaker: no CREATE SERVER has been made for absent\n"
    assert marks(ask(front.environment, READER)) == {(1.0, "1")}


@pytest.mark.parametrize("names", [["--name", "notes"], ["--som-database", "other"]])
def test_no_map_takes_the_place_of_links(
    front: PrivateServer,
    behind: PrivateServer,
    monkeypatch: pytest.MonkeyPatch,
    capsys: pytest.CaptureFixture[str],
    names: list[str],
) -> None:
    put(behind.environment, marked(1))
    link(front)
    for name, value in front.environment.items():
        monkeypatch.setenv(name, value)
    assert cli.main(["sample", "--documents", "20", *names]) == 2
    output = capsys.readouterr()
    assert output.err.startswith(
        "mapmaker: texts.document is a link here: make the map on the server with its rows"
    )
    assert output.out == ""
    assert marks(ask(front.environment, READER)) == {(1.0, "1")}
