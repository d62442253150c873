# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""The process that keeps servers: its steps, its end, and that of the folder."""

import fcntl
import os
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
from cluster.runner.processes import end_with_parent
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
    folder.mkdir(exist_ok=True)
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
