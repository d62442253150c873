# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""Keeps a private cluster until a signal ends it; cluster/up starts it."""

import argparse
import shlex
import signal
import sys
from pathlib import Path

from cluster.runner.keeping import KINDS, end_in_order, kept, say, step
from cluster.runner.kind import Kind
from cluster.runner.processes import ClusterError


def write_environment(kind: Kind, target: Path | None) -> None:
    """Tells how to find the cluster: as commands for a shell, on standard output or in a file that is there whole."""
    lines = "".join(f"export {name}={shlex.quote(value)}\n" for name, value in kind.environment().items())
    if target is None:
        sys.stdout.write(lines)
        sys.stdout.flush()
        return
    new = target.with_name(f"{target.name}.new")
    new.touch(mode=0o600)  # the reader's password is in it
    new.write_text(lines, encoding="utf-8")
    new.rename(target)


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
