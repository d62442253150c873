# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""A good database for the doctor's tests, to be made ill, and the user who looks at it."""

import re
from collections.abc import Iterator
from contextlib import contextmanager
from typing import Any

from mapmaker import store
from mapmaker.doctor.examine import examine
from mapmaker.doctor.finding import Finding
from mapmaker.hostnames import HostNames

READER = "window"
GOOD = """
CREATE DATABASE ill_map;
CREATE DATABASE ill_texts;
CREATE TABLE ill_texts.document (id INT PRIMARY KEY, date DATETIME, title VARCHAR(200), URL VARCHAR(200), text TEXT);
CREATE TABLE ill_map.t_train (node INT NOT NULL, dist DOUBLE NOT NULL, item INT NOT NULL, PRIMARY KEY (node, item));
CREATE TABLE ill_map.t_som (node INT NOT NULL PRIMARY KEY, _assigned_topic INT, _keywords VARCHAR(99));
INSERT INTO ill_texts.document SELECT seq, '2005-03-01 13:00', 'A', 'http://a.org/b?c=1&d=~e;f', 'b' FROM mysql_seq;
INSERT INTO ill_map.t_train SELECT seq DIV 10, 0.5, seq FROM mysql_seq;
INSERT INTO ill_map.t_som SELECT seq, seq, CONCAT('k', seq, '\\nb\\nc') FROM mysql_seq WHERE seq < 5;
""".replace(
    "mysql_seq", "(SELECT seq FROM ill_map.seq_0_to_49) AS numbers"
)


def run(link: Any, statements: str) -> None:
    """Carries out statements that end with a semicolon at the end of a line."""
    with link.cursor() as cursor:
        for statement in filter(None, (part.strip() for part in re.split(r";\n", statements + "\n"))):
            cursor.execute(statement.rstrip(";"))
    link.commit()


@contextmanager
def good_database(link: Any) -> Iterator[None]:
    """A good database and a user who may read it, for a while, by a connection that may do everything."""
    try:
        run(link, GOOD)
        run(link, f"CREATE USER {READER}@localhost IDENTIFIED BY 'reads'")
        for table in ("ill_map.t_train", "ill_map.t_som", "ill_texts.document"):
            run(link, f"GRANT SELECT ON {table} TO {READER}@localhost")
        yield
    finally:
        for thing in (
            f"USER IF EXISTS {READER}@localhost",
            "DATABASE IF EXISTS ill_map",
            "DATABASE IF EXISTS ill_texts",
        ):
            run(link, f"DROP {thing}")


def reader(server: dict[str, str]) -> dict[str, str]:
    """Environment of the user who may only read."""
    return {**server, "MYSQL_USER": READER, "MYSQL_PWD": "reads"}


def findings(environment: dict[str, str], host: str = "localhost", table: str = "t_train") -> list[Finding]:
    """What the doctor says."""
    with store.connection(environment, autocommit=None) as link:
        return examine(link, host, HostNames("ill_map", "ill_texts", table))


def codes(found: list[Finding]) -> list[str]:
    """Codes of findings."""
    return [finding.code for finding in found]


@contextmanager
def global_setting(link: Any, name: str, value: object) -> Iterator[None]:
    """A setting of the server for new connections, for a while."""
    with link.cursor() as cursor:
        cursor.execute(f"SELECT @@GLOBAL.{name}")
        before = cursor.fetchone()[0]
        cursor.execute(f"SET GLOBAL {name} = %s", (value,))
        try:
            yield
        finally:
            cursor.execute(f"SET GLOBAL {name} = %s", (before,))
