# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""The tables as readers meet them."""

from collections.abc import Iterator
from pathlib import Path
from typing import Any

import pytest

from mapmaker import store
from mapmaker.tests.conftest import document
from mapmaker.tests.privateserver import connect

NAMES = store.Names("notes_texts", "notes_map", "notes")
READER = (
    "SELECT node, dist, document.* FROM notes_train, notes_texts.document "
    "WHERE notes_texts.document.id=notes_train.item AND node=1 ORDER BY date"
)


def content(mark: str, documents: int = 3, nodes: int = 4) -> store.Content:
    """A map whose keywords carry a mark; every document lies in node 1, the newest first."""
    texts = [document(f"{mark} Größe {number} 🐝", day=28 - number % 28) for number in range(documents)]
    members = [(1, number / 8, number) for number in range(documents)]
    return store.Content(
        [texts[:2], texts[2:]],
        [members[:1], members[1:]],
        [(number % 21, f"{mark}{number}") for number in range(nodes)],
    )


def store_map(environment: dict[str, str], rows: store.Content) -> None:
    """Fills and swaps."""
    with store.connection(environment) as link:
        store.fill(link, NAMES, rows)
        store.swap(link, NAMES.tables())


@pytest.fixture
def reader(server: dict[str, str]) -> Iterator[Any]:
    """A connection that looks at the map's database; the databases are dropped at the end."""
    link = connect(server)
    with link.cursor() as cursor:
        for database in NAMES[:2]:
            cursor.execute(f"CREATE DATABASE {database}")
        cursor.execute("USE notes_map")
    yield link
    link.rollback()
    with link.cursor() as cursor:
        cursor.execute("DROP DATABASE notes_texts")
        cursor.execute("DROP DATABASE notes_map")
    link.close()


def ask(link: Any, query: str) -> list[tuple[Any, ...]]:
    """All rows of a query."""
    with link.cursor() as cursor:
        cursor.execute(query)
        return list(cursor.fetchall())


def test_databases_are_created_where_missing(server: dict[str, str]) -> None:
    store_map(server, content("a"))
    link = connect(server)
    assert ask(link, "SELECT COUNT(*) FROM notes_map.notes_som") == [(4,)]
    ask(link, "DROP DATABASE notes_map")
    ask(link, "DROP DATABASE notes_texts")
    link.close()


def test_documents_come_back_in_order_of_date(server: dict[str, str], reader: Any) -> None:
    store_map(server, content("a"))
    rows = ask(reader, READER)
    assert [(row[0], row[1], row[2], row[4]) for row in rows] == [
        (1, 0.25, 2, "a Größe 2 🐝"),
        (1, 0.125, 1, "a Größe 1 🐝"),
        (1, 0.0, 0, "a Größe 0 🐝"),
    ]


def test_column_names_keep_their_case(server: dict[str, str], reader: Any) -> None:
    store_map(server, content("a"))
    columns = [row[0] for row in ask(reader, "SHOW COLUMNS FROM notes_texts.document")]
    assert columns == ["id", "date", "title", "URL", "text", "author", "urgency", "package"]


def test_nodes_come_in_order_without_being_asked(server: dict[str, str], reader: Any) -> None:
    store_map(server, content("a", nodes=1500))
    rows = ask(reader, "SELECT _assigned_topic, _keywords FROM notes_som ")
    assert rows == [(number % 21, f"a{number}") for number in range(1500)]
    assert ask(reader, "SHOW INDEX FROM notes_som WHERE Key_name != 'PRIMARY'") == []


def test_the_readers_query_uses_primary_keys(server: dict[str, str], reader: Any) -> None:
    rows = content("a", documents=600)
    members = [(number % 6, 0.5, number) for number in range(600)]
    store_map(server, rows._replace(memberships=[members]))
    plan = [(row[2], row[3], row[5]) for row in ask(reader, "EXPLAIN " + READER)]
    assert plan == [("notes_train", "ref", "PRIMARY"), ("document", "eq_ref", "PRIMARY")]


def test_a_second_map_replaces_the_first(server: dict[str, str], reader: Any) -> None:
    store_map(server, content("a"))
    store_map(server, content("b", documents=1, nodes=2))
    assert ask(reader, "SELECT _keywords FROM notes_som") == [("b0",), ("b1",)]
    assert ask(reader, "SELECT COUNT(*) FROM notes_texts.document") == [(1,)]
    assert sorted(ask(reader, "SHOW TABLES")) == [("notes_som",), ("notes_train",)]


def test_a_reader_sees_the_old_map_until_the_swap(server: dict[str, str], reader: Any) -> None:
    store_map(server, content("a"))
    with store.connection(server) as link:
        store.fill(link, NAMES, content("b"))
        assert ask(reader, "SELECT _keywords FROM notes_som LIMIT 1") == [("a0",)]
        reader.rollback()
        store.swap(link, NAMES.tables())
    assert ask(reader, "SELECT _keywords FROM notes_som LIMIT 1") == [("b0",)]


def test_leftovers_of_a_broken_run_do_not_matter(server: dict[str, str], reader: Any) -> None:
    with store.connection(server) as link:
        store.fill(link, NAMES, content("a"))
    ask(reader, "CREATE TABLE notes_som__old (node INT)")
    store_map(server, content("b"))
    assert ask(reader, "SELECT _keywords FROM notes_som LIMIT 1") == [("b0",)]


def test_texts_are_cut_to_their_columns() -> None:
    row = store.document_row(7, document("ä" * 300))
    assert (row[0], row[2]) == (7, "ä" * 255)


@pytest.mark.parametrize("name", ["", "a b", "a;b", "größe", "a`b", "a.b", "x" * 41, "a\n"])
def test_bad_names_are_refused(name: str) -> None:
    with pytest.raises(store.StoreError, match="bad table name"):
        NAMES._replace(name=name).check()


def test_missing_variables_are_named() -> None:
    with pytest.raises(store.StoreError, match="^missing in the environment: MYSQL_USER, MYSQL_PWD$"):
        store.settings({"MYSQL_HOST": "localhost"})


def test_localhost_means_the_socket() -> None:
    base = {"MYSQL_USER": "u", "MYSQL_PWD": "", "MYSQL_UNIX_PORT": "/s"}
    assert store.settings({**base, "MYSQL_HOST": "localhost"})["unix_socket"] == "/s"
    assert "unix_socket" not in store.settings({**base, "MYSQL_HOST": "db.example.org"})


def test_another_host_is_asked_on_its_port() -> None:
    base = {"MYSQL_HOST": "db.example.org", "MYSQL_USER": "u", "MYSQL_PWD": "", "MYSQL_TCP_PORT": "3307"}
    assert store.settings(base)["port"] == 3307
    for wrong in ({"MYSQL_TCP_PORT": "x"}, {"MYSQL_HOST": "host=a;port=x"}):
        with pytest.raises(
            store.StoreError, match="^the port in MYSQL_HOST or MYSQL_TCP_PORT is no number: [^\n]*$"
        ):
            store.settings({**base, **wrong})


def test_a_host_may_hold_options() -> None:
    base = {"MYSQL_USER": "u", "MYSQL_PWD": "p", "MYSQL_TCP_PORT": "3307"}
    host = "host=db.example.org; ssl-ca=/ca.pem; ssl-verify-server-cert=1; plugin-dir=/x"
    made = {"host": "db.example.org", "port": 3307, "user": "u", "password": "p", "ssl_ca": "/ca.pem"}
    verified = {"ssl_verify_cert": True, "ssl_verify_identity": True}
    assert store.settings({**base, "MYSQL_HOST": host}) == {**made, **verified}
    assert "ssl_verify_cert" not in store.settings({**base, "MYSQL_HOST": "host=a;ssl-ca=/ca.pem"})
    assert store.settings({**base, "MYSQL_HOST": "socket=/s;port=3308"})["unix_socket"] == "/s"
    assert store.settings({**base, "MYSQL_HOST": "host=a;port=3308"})["port"] == 3308


def test_no_server_is_one_line() -> None:
    missing = {"MYSQL_HOST": "localhost", "MYSQL_USER": "u", "MYSQL_PWD": "", "MYSQL_UNIX_PORT": "/nowhere"}
    with pytest.raises(store.StoreError, match="^no connection to the server: [^\n]*$"):
        with store.connection(missing):
            pass


def test_a_missing_certificate_is_one_line(tmp_path: Path) -> None:
    for file in (tmp_path / "absent", tmp_path / "empty"):
        (tmp_path / "empty").touch()
        asked = {"MYSQL_HOST": f"host=127.0.0.1;ssl-ca={file}", "MYSQL_USER": "u", "MYSQL_PWD": ""}
        with pytest.raises(
            store.StoreError, match="^the files for TLS in MYSQL_HOST cannot be read: [^\n]+$"
        ):
            with store.connection(asked):
                pass


def test_refusals_of_the_server_are_one_line(server: dict[str, str]) -> None:
    with pytest.raises(store.StoreError, match="^the server refuses: [^\n]*$"):
        with store.connection(server) as link:
            store.swap(link, NAMES._replace(source_database="absent", som_database="absent").tables())
