# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""Proves the kinds of clusters one after the other; cluster/prove starts it on a display."""

import argparse
import shutil
import sys
from collections.abc import Iterator
from contextlib import contextmanager
from pathlib import Path

from cluster.proof.data import FULL, SHORT, Sizes, load, selection
from cluster.proof.faults import Stage, faults
from cluster.proof.report import FAULTS, STATEMENTS, finding_row, head, is_wrong, sight_row
from cluster.proof.scene import NODE, Scene, Sight
from cluster.proof.statements import Finding, findings
from cluster.proof.watcher import NODE as WATCHED
from cluster.proof.watcher import Watcher
from cluster.proof.window import Look, Window
from cluster.runner.client import Client, connected
from cluster.runner.keeping import KINDS, end_in_order, kept, say, step
from cluster.runner.kind import Kind
from cluster.runner.plain import Plain
from cluster.runner.processes import ClusterError

GOALS = {
    "replicas": 1.1,
    "galera": 1.1,
    "head": 1.5,
    "shards": 2.0,
}  # times one server's, with 10,000 documents
ROUNDS = 15


class Proof:
    """Compares kinds with one server, which runs all the time and has the same map."""

    def __init__(self, plain: Kind, options: argparse.Namespace) -> None:
        self.short: bool = options.short
        self.sizes: Sizes = SHORT if self.short else FULL
        self._plain, self._build = plain, options.build
        self._expected: Look | None = None

    def prepare(self) -> None:
        self._plain.start()
        load(self._plain, self.sizes)
        with self._window(self._plain) as window:
            window.open()
            self._expected = window.look(NODE)

    def statements(self, name: str, kind: Kind) -> Iterator[Finding]:
        with reading(self._plain) as plain, reading(kind) as other:
            yield from findings(plain, other, self.sizes, 1 if self.short else ROUNDS, GOALS[name])

    def faults(self, kind: Kind) -> Iterator[Sight]:
        assert self._expected
        with reading(self._plain) as plain:
            watched = plain.rows(selection(WATCHED))
        with Watcher(kind.address, kind.place.reader, watched) as watcher, self._window(kind) as window:
            scene = Scene(window, self._expected)
            scene.begin()
            yield from faults(Stage(scene, kind, watcher, self.sizes, self.short))
        say(f"-- another reader's {watcher.text()}")
        if watcher.wrong:
            raise ClusterError("another reader got wrong rows")

    def _window(self, kind: Kind) -> Window:
        return Window(self._build, kind.environment(), len(self.sizes.nodes) + 1)


@contextmanager
def reading(kind: Kind) -> Iterator[Client]:
    """The reader's connection to the map."""
    with connected(kind.address, kind.place.reader, "som") as client:
        yield client


def prove(options: argparse.Namespace) -> bool:
    """Prints the tables; whether all rows were right."""
    rows: tuple[list[str], list[str]] = (head(STATEMENTS), head(FAULTS))
    right = True
    with kept(options.folder / "plain") as place:
        proof = Proof(Plain(place), options)
        with step("Start one server, and load the map"):
            proof.prepare()
        for name in options.kinds or KINDS:
            with kept(options.folder / name) as place, step(f"Prove {name}"):
                kind = KINDS[name](place)
                with step(f"Start {name}, and load the map"):
                    kind.start()
                    load(kind, proof.sizes)
                for finding in proof.statements(name, kind):
                    rows[0].append(show(finding_row(name, finding)))
                    right = right and not is_wrong(finding)
                for sight in proof.faults(kind):
                    rows[1].append(show(sight_row(name, sight)))
                    right = right and not is_wrong(sight)
    print("\n".join((*rows[0], "", *rows[1])))
    return right


def show(line: str) -> str:
    """Says a line as soon as it is known."""
    say(line)
    return line


def parser() -> argparse.ArgumentParser:
    result = argparse.ArgumentParser(prog="prove")
    result.add_argument("kinds", nargs="*", metavar="KIND", help="kinds to prove (all)")
    result.add_argument(
        "--folder",
        type=Path,
        required=True,
        help="private folder, for those of the clusters; removed at the end",
    )
    result.add_argument(
        "--build", type=Path, required=True, help="folder with the built module and plainhost"
    )
    result.add_argument(
        "--short", action="store_true", help="smaller nodes, each statement once, fewer faults"
    )
    return result


def main() -> int:
    options = parser().parse_args()
    end_in_order()
    try:
        right = prove(options)
    except (ClusterError, OSError) as error:
        say(f"prove: {error}")
        return 2
    finally:
        shutil.rmtree(options.folder, ignore_errors=True)
    return 0 if right else 1


if __name__ == "__main__":
    sys.exit(main())
