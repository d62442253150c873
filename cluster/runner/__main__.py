# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""Keeps a private cluster until a signal ends it; cluster/up starts it."""

import argparse
import fcntl
import os
import shlex
import shutil
import signal
import sys
import time
from collections.abc import Callable, Iterator
from contextlib import contextmanager
from pathlib import Path

from cluster.runner.galera import Galera
from cluster.runner.head import HeadBeforeReplicas
from cluster.runner.kind import Kind
from cluster.runner.place import Place
from cluster.runner.processes import ClusterError, end_with_parent
from cluster.runner.replicas import Replicas
from cluster.runner.shards import Shards

KINDS: dict[str, Callable[[Place], Kind]] = {
    "replicas": Replicas,
    "galera": Galera,
    "head": HeadBeforeReplicas,
    "shards": Shards,
}


def say(text: str) -> None:
    print(text, file=sys.stderr, flush=True)


@contextmanager
def step(text: str) -> Iterator[None]:
    """Says what is done and how long it took."""
    say(f"-- {text}")
    start, outcome = time.monotonic(), "failed"
    try:
        yield
        outcome = "done"
    finally:
        say(f"-- {text}: {outcome} after {time.monotonic() - start:.1f} s")


@contextmanager
def kept(folder: Path) -> Iterator[Place]:
    """A place in the folder; at the end everything that runs there is ended and the folder removed.

    The file "keeper" holds this process's number, and is locked as long as it lives (cluster/down).
    """
    place = Place(folder)
    with open(folder / "keeper", "w", encoding="ascii") as keeper:
        fcntl.flock(keeper, fcntl.LOCK_EX)
        keeper.write(f"{os.getpid()}\n")
        keeper.flush()
        try:
            yield place
        finally:
            place.end()
            shutil.rmtree(folder)


def end_in_order() -> None:
    """Has signals, and the parent's death, end this process as an exception does."""
    for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
        signal.signal(number, lambda *_: sys.exit(0))
    end_with_parent(signal.SIGTERM, os.getppid())


def write_environment(kind: Kind, target: Path | None) -> None:
    """Tells how to find the cluster: as commands for a shell, on standard output or in a file that is there whole."""
    lines = "".join(f"export {name}={shlex.quote(value)}\n" for name, value in kind.environment().items())
    if target is None:
        sys.stdout.write(lines)
        sys.stdout.flush()
        return
    target.with_suffix(".new").write_text(lines, encoding="utf-8")
    target.with_suffix(".new").rename(target)


def keep(options: argparse.Namespace) -> None:
    with kept(options.folder) as place:
        kind = KINDS[options.kind](place)
        with step(f"Start the servers: {', '.join(kind.servers)}"):
            kind.start()
        with step(f"Make a map: {' '.join(options.map)}"):
            kind.make_map([*options.map, "--name", options.name])
            kind.publish(options.name)
        write_environment(kind, options.environment)
        say("Ctrl+C, or cluster/down, ends the cluster.")
        while True:
            signal.pause()


def parser() -> argparse.ArgumentParser:
    result = argparse.ArgumentParser(prog="cluster")
    result.add_argument("kind", choices=KINDS)
    result.add_argument("--folder", type=Path, required=True, help="empty private folder; removed at the end")
    result.add_argument("--map", type=shlex.split, default=["sample"], help="mapmaker's command and options")
    result.add_argument("--name", default="sample", help="name of the map's tables")
    result.add_argument("--environment", type=Path, help="file for the variables, instead of standard output")
    return result


def main() -> int:
    options = parser().parse_args()
    end_in_order()
    try:
        keep(options)
    except (ClusterError, OSError) as error:
        say(f"cluster: {error}")
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
