# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""The map that everything is proved with, and the window's statements on it.

Node 0 has a few documents, the next nodes as many as asked for. Documents of 2 kB are made by the servers themselves,
beside those of a map by mapmaker; two have the same date each.
"""

from typing import NamedTuple

from cluster.runner.kind import Kind

MAP = "prove"
MADE_BY_MAPMAKER = 300
FEW = 12  # documents of node 0
STEP = 7  # a node's documents are spread: every seventh, round and round
SAMPLE = ("sample", "--documents", str(MADE_BY_MAPMAKER), "--name", "sample")

DOCUMENTS = """USE {database};
INSERT INTO {table}
SELECT seq, TIMESTAMP('2001-01-01') + INTERVAL (seq DIV 2) HOUR, CONCAT('Document ', seq),
    CONCAT('https://example.org/', seq), REPEAT(MD5(seq), 64), CONCAT('Author ', seq MOD 50), 'low', 'invented'
FROM seq_{first}_to_{last} WHERE {condition};
"""
TABLES = """USE som;
CREATE TABLE prove_train (node INT NOT NULL, dist DOUBLE NOT NULL, item INT NOT NULL, PRIMARY KEY (node, item))
ENGINE=InnoDB;
CREATE TABLE prove_som (node INT NOT NULL PRIMARY KEY, _assigned_topic INT, _keywords TEXT) ENGINE=InnoDB;
"""
NODE = "INSERT INTO prove_train SELECT {node}, seq / 1024, seq * {step} MOD {total} FROM seq_0_to_{last};\n"
KEYWORDS = "INSERT INTO prove_som VALUES ({node}, {topic}, 'word {node}\\nother\\nthird\\nfourth');\n"


class Sizes(NamedTuple):
    """How many documents the nodes from 1 on have."""

    nodes: tuple[int, ...]

    @property
    def total(self) -> int:
        """Documents in all; has no common divisor with STEP, so that each node's documents are different ones."""
        return self.nodes[-1] * 6 // 5

    @property
    def large(self) -> int:
        """The node with the most documents."""
        return len(self.nodes)


# The short map, too, has a node with more rows than Spider takes at once (1,024).
FULL, SHORT = Sizes((100, 1_000, 10_000)), Sizes((100, 2_000))


def tables(sizes: Sizes) -> str:
    """The script that makes assignments and keywords."""
    script = TABLES
    for node, size in enumerate((FEW, *sizes.nodes)):
        script += NODE.format(node=node, step=STEP, total=sizes.total, last=size - 1)
        script += KEYWORDS.format(node=node, topic=node)
    return script


def load(kind: Kind, sizes: Sizes) -> None:
    """Brings both maps to a cluster that has just been started."""
    kind.make_map(SAMPLE)
    for server, table, condition in kind.document_tables():
        words = {"database": "texts", "table": table, "condition": condition}
        server.script(DOCUMENTS.format(first=MADE_BY_MAPMAKER, last=sizes.total - 1, **words))
    kind.writer.script(tables(sizes))
    kind.publish(MAP)


PROBE = f"SELECT node, dist, document.* FROM {MAP}_train, texts.document LIMIT 1"
KEYWORD_QUERY = f"SELECT _assigned_topic, _keywords FROM {MAP}_som "
DAY = ' AND texts.document.date like "2001-01-15%"'


def selection(node: int, further: str = "", database: str = "") -> str:
    """The statement for a node's documents, in the connection's own database or in one with a point behind its name."""
    train = f"{database}{MAP}_train"
    condition = f"texts.document.id={train}.item AND node={node}{further}"
    return f"SELECT node, dist, document.* FROM {train}, texts.document WHERE {condition} ORDER BY date"
