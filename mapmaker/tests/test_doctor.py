# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""Each fault of tables and rows is made once and found, and nothing else; a good database has none."""

from typing import Any

import pytest

from mapmaker import hostnames
from mapmaker.doctor import texts
from mapmaker.tests.doctorbase import codes, findings, reader, run

DROP_ID_KEY = "ALTER TABLE ill_texts.document DROP PRIMARY KEY"


def test_a_good_database_has_no_findings(server: dict[str, str], admin: Any) -> None:
    assert findings(reader(server)) == []


FAULTS = {
    "no document table": ("DROP TABLE ill_texts.document", ["columns.no_table"]),
    "no node": ("ALTER TABLE ill_map.t_train DROP PRIMARY KEY, DROP COLUMN node", ["columns.missing"]),
    "no keywords": ("ALTER TABLE ill_map.t_som DROP COLUMN _keywords", ["columns.missing"]),
    "no id": ("ALTER TABLE ill_texts.document DROP COLUMN id", ["columns.missing"]),
    "no date": ("ALTER TABLE ill_texts.document DROP COLUMN date", ["columns.missing"]),
    "no title": ("ALTER TABLE ill_texts.document DROP COLUMN title", ["columns.absent"]),
    "no address": ("ALTER TABLE ill_texts.document DROP COLUMN URL", ["columns.absent"]),
    "no text": ("ALTER TABLE ill_texts.document DROP COLUMN text", ["columns.absent"]),
    "other case": ("ALTER TABLE ill_texts.document RENAME COLUMN URL TO Url", ["columns.case"]),
    "node twice": ("ALTER TABLE ill_texts.document ADD node INT", ["columns.ambiguous"]),
    "a name with a blank": ("ALTER TABLE ill_texts.document ADD `a b` INT", ["columns.name"]),
    "items as texts": ("ALTER TABLE ill_map.t_train MODIFY item VARCHAR(9)", ["columns.type"]),
    "dates as texts": (
        "ALTER TABLE ill_texts.document MODIFY date VARCHAR(30);\n"
        "UPDATE ill_texts.document SET date = '2005-03-01T13:00:00' WHERE id > 3",
        ["columns.type", "dates.text"],
    ),
    "empty keywords": ("DELETE FROM ill_map.t_som", ["keywords.empty"]),
    "nodes from 1": ("UPDATE ill_map.t_som SET node = node + 1 ORDER BY node DESC", ["keywords.numbers"]),
    "a gap": ("UPDATE ill_map.t_som SET node = 7 WHERE node = 4", ["keywords.numbers"]),
    "too few rows": ("DELETE FROM ill_map.t_som WHERE node = 4", ["keywords.beyond"]),
    "another index": (
        "UPDATE ill_map.t_som SET _assigned_topic = 20 - node;\n"
        "ALTER TABLE ill_map.t_som ADD INDEX (_assigned_topic, _keywords)",
        ["keywords.order"],
    ),
    "another engine": ("ALTER TABLE ill_map.t_som ENGINE=MyISAM", ["keywords.key"]),
    "a third engine": ("ALTER TABLE ill_map.t_som ENGINE=Aria", ["keywords.key"]),
    "partitions that mix": (
        "ALTER TABLE ill_map.t_som PARTITION BY HASH (node) PARTITIONS 3",
        ["keywords.order", "keywords.key"],
    ),
    "no key of keywords": ("ALTER TABLE ill_map.t_som DROP PRIMARY KEY", ["keywords.key"]),
    "partitions": (
        "ALTER TABLE ill_map.t_som PARTITION BY RANGE (node) (PARTITION a VALUES LESS THAN (9))",
        ["keywords.key"],
    ),
    "no number of nodes": (
        "ALTER TABLE ill_map.t_som DROP PRIMARY KEY, DROP COLUMN node",
        ["keywords.no_node"],
    ),
    "no such sign": ("UPDATE ill_map.t_som SET _assigned_topic = 21 WHERE node = 3", ["keywords.topic"]),
    "no topic": ("UPDATE ill_map.t_som SET _assigned_topic = NULL WHERE node = 3", ["keywords.topic"]),
    "two keywords": ("UPDATE ill_map.t_som SET _keywords = 'a\\nb' WHERE node = 3", ["keywords.two"]),
    "no index of nodes": ("ALTER TABLE ill_map.t_train DROP PRIMARY KEY", ["indices.node"]),
    "nodes behind items": (
        "ALTER TABLE ill_map.t_train DROP PRIMARY KEY, ADD PRIMARY KEY (item, node)",
        ["indices.node"],
    ),
    "index of nodes": ("ALTER TABLE ill_map.t_train DROP PRIMARY KEY, ADD INDEX (node)", ["indices.primary"]),
    "a pair twice": (
        "ALTER TABLE ill_map.t_train DROP PRIMARY KEY, ADD INDEX (node);\n"
        "INSERT INTO ill_map.t_train VALUES (1, 0.5, 10)",
        ["indices.primary", "indices.twice"],
    ),
    "no index of ids": (DROP_ID_KEY + ", ADD INDEX (title, id)", ["indices.id"]),
    "an id twice": (
        f"{DROP_ID_KEY}, ADD INDEX (id);\nUPDATE ill_texts.document SET id = 4 WHERE id = 3",
        ["indices.id_twice", "indices.orphans"],
    ),
    "lost documents": ("DELETE FROM ill_texts.document WHERE id < 3", ["indices.orphans"]),
    "no date in a row": ("UPDATE ill_texts.document SET date = NULL WHERE id = 7", ["dates.null"]),
    "zero date": ("UPDATE ill_texts.document SET date = '0000-00-00' WHERE id = 7", ["dates.zero"]),
    "zero day": ("UPDATE ill_texts.document SET date = '2005-03-00' WHERE id = 7", ["dates.zero"]),
    "text cut": ("UPDATE ill_texts.document SET text = REPEAT('x', 65535) WHERE id = 7", ["texts.cut"]),
}


@pytest.mark.parametrize("statements, expected", FAULTS.values(), ids=FAULTS.keys())
def test_a_fault_is_found_and_nothing_else(
    server: dict[str, str], admin: Any, statements: str, expected: list[str]
) -> None:
    run(admin, "SET SESSION sql_mode = ''")
    run(admin, statements)
    assert codes(findings(reader(server))) == expected


UNSAFE = ["http://a/$(id)", "http://a/`id`", 'http://a/"', "http://a/\\", "http://a/\n", "-x"]
CUT = ["http://a/b c", "http://a/b,c", "http://a/b)"]


@pytest.mark.parametrize(
    "address, expected",
    [(address, ["addresses.unsafe"]) for address in UNSAFE]
    + [(address, ["addresses.cut"]) for address in CUT]
    + [(address, []) for address in ("", None, "http://a/größe", "https://a/%22#b")],
)
def test_addresses_are_judged(
    server: dict[str, str], admin: Any, address: str | None, expected: list[str]
) -> None:
    with admin.cursor() as cursor:
        cursor.execute("UPDATE ill_texts.document SET URL = %s WHERE id = 7", (address,))
    admin.commit()
    found = findings(reader(server))
    assert codes(found) == expected
    assert all("1 addresses" in finding.fault and "id 7" in finding.fault for finding in found)


def test_long_texts_and_heavy_nodes_are_found(
    server: dict[str, str], admin: Any, monkeypatch: pytest.MonkeyPatch
) -> None:
    run(admin, "UPDATE ill_texts.document SET text = REPEAT('x', 1000) WHERE id = 27")
    run(admin, "INSERT INTO ill_map.t_train VALUES (2, 0.5, 45)")
    monkeypatch.setattr(texts, "LARGEST_TEXT", 999)
    assert codes(findings(reader(server))) == ["texts.long"]
    monkeypatch.setattr(texts, "LARGEST_NODE", 1009)
    (_, heavy) = findings(reader(server))
    assert (heavy.code, "node 2, " in heavy.fault) == ("texts.node", True)
    monkeypatch.setattr(texts, "LARGEST_NODE", 1010)
    assert codes(findings(reader(server))) == ["texts.long"]


def test_a_table_without_train_is_its_own_keyword_table() -> None:
    names = [hostnames.HostNames("m", "t", name) for name in ("a_train", "train", "a", "a_Train")]
    assert [name.tables() for name in names] == [
        ("t.document", "m.a_train", "m.a_som"),
        ("t.document", "m.train", "m.som"),
        ("t.document", "m.a"),
        ("t.document", "m.a_Train"),
    ]


@pytest.mark.parametrize("name", ["", "a b", "a;b", "a`b", "a.b", "x" * 65, "a\n"])
def test_names_that_need_quotes_are_refused(server: dict[str, str], admin: Any, name: str) -> None:
    with pytest.raises(hostnames.NameFault, match="^bad name [^\n]*$"):
        findings(reader(server), table=name)
