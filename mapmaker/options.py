# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""The command line's options, and which of them make sense."""

import argparse

from mapmaker import __version__
from mapmaker.spool import BATCH

FEWEST = 20  # documents a map can be made of
REPLICAS, GALERA, SHARDS = KINDS = ("replicas", "galera", "shards")
STRAIGHT, THROUGH_HEAD = LOADS = ("straight", "head")


class UsageError(Exception):
    """An option makes no sense; the message is one line."""


def parser() -> argparse.ArgumentParser:
    """All commands and options."""
    top = argparse.ArgumentParser(prog="mapmaker", description="Makes a self-organizing map of texts.")
    top.add_argument("--version", action="version", version=f"mapmaker {__version__}")
    commands = top.add_subparsers(dest="command", required=True)
    notes = commands.add_parser("changelogs", help="map the release notes of the installed packages")
    notes.add_argument("--minimum", type=int, default=500, metavar="N", help="fewest documents (500)")
    notes.add_argument("--or-sample", action="store_true", help="make the sample if there are fewer")
    invented = commands.add_parser("sample", help="map a seeded collection of invented texts")
    for command in (notes, invented):
        add_common_options(command)
        add_cluster_options(command)
    linked = commands.add_parser("head", help="make a map's tables on a Spider server as links to its rows")
    linked.add_argument("table", metavar="TABLE", help="table of assignments that the host will name")
    linked.add_argument(
        "--server", required=True, metavar="NAME", help="where the rows are, by CREATE SERVER"
    )
    add_databases(linked)
    add_link_ca(linked)
    looked_at = commands.add_parser("doctor", help="look at a database before a host uses it; writes nothing")
    looked_at.add_argument("table", metavar="TABLE", help="table of assignments that the host will name")
    looked_at.add_argument("--json", action="store_true", help="print the findings as JSON")
    add_databases(looked_at)
    return top


def add_databases(command: argparse.ArgumentParser) -> None:
    """Names of the databases."""
    add = command.add_argument
    add("--som-database", default="som", metavar="NAME", help="database of the map (som)")
    add("--source-database", default="texts", metavar="NAME", help="database of the documents (texts)")


def add_common_options(command: argparse.ArgumentParser) -> None:
    """Options of the commands that make maps."""
    add_databases(command)
    add = command.add_argument
    add("--root", default="/usr/share/doc", metavar="FOLDER", help="folder of the packages' documentation")
    add("--documents", type=int, default=2000, metavar="N", help="size of the sample (2000)")
    add("--name", metavar="NAME", help="prefix of the map's tables (the command)")
    add("--script", metavar="FILE", help="write the hierarchy script for the host program")
    add("--report", metavar="FILE", help="write the quality figures as JSON")
    add("--seed", type=int, default=1, metavar="N", help="the same seed makes the same map (1)")
    add("--width", type=int, metavar="N", help="columns of the grid (by number of documents)")
    add("--height", type=int, metavar="N", help="rows of the grid (by number of documents)")
    add(
        "--branch-documents", type=int, default=200, metavar="N", help="most documents of an inner node (200)"
    )
    add("--batch", type=int, default=BATCH, metavar="N", help=f"documents in memory at once ({BATCH})")


def add_cluster_options(command: argparse.ArgumentParser) -> None:
    """Options for a map on several servers."""
    add = command.add_argument
    add("--cluster", metavar="KIND", help=f"several servers: {', '.join(KINDS)} (one server)")
    add("--servers", metavar="NAME,...", help="shards of the documents, as CREATE SERVER names them")
    add(
        "--load",
        metavar="HOW",
        help="write documents straight into the shards, or through the head (straight)",
    )
    add_link_ca(command)
    add("--wait-for", metavar="HOST[:PORT],...", help="servers that must have the new map at the end")


def add_link_ca(command: argparse.ArgumentParser) -> None:
    """Encryption of links."""
    about = "who signs the servers' certificates: a file on the head, by which it reads encrypted (in plain)"
    command.add_argument("--link-ca", metavar="FILE", help=about)


def check(options: argparse.Namespace) -> None:
    """Raises UsageError for numbers out of range, and for options that don't belong together."""
    check_numbers(options)
    check_cluster(options)


def check_numbers(options: argparse.Namespace) -> None:
    """Numbers out of range, and half a size of the grid."""
    least = {
        "documents": FEWEST,
        "minimum": FEWEST,
        "seed": 0,
        "width": 2,
        "height": 2,
        "branch_documents": 1,
        "batch": 1,
    }
    for name, bound in least.items():
        value = getattr(options, name, None)
        if value is not None and value < bound:
            raise UsageError(f"--{name.replace('_', '-')} must be at least {bound}")
    if (options.width is None) != (options.height is None):
        raise UsageError("--width and --height belong together")


def check_cluster(options: argparse.Namespace) -> None:
    """An unknown kind, and options of another one."""
    if options.cluster not in (None, *KINDS):
        raise UsageError(f"--cluster must be {', '.join(KINDS[:-1])} or {KINDS[-1]}")
    if options.wait_for is not None and not options.cluster:
        raise UsageError("--wait-for needs --cluster")
    for name in ("servers", "load", "link_ca"):
        if getattr(options, name) is not None and options.cluster != SHARDS:
            raise UsageError(f"--{name.replace('_', '-')} belongs to --cluster {SHARDS}")
    if options.load not in (None, *LOADS):
        raise UsageError(f"--load must be {' or '.join(LOADS)}")
    if options.cluster == SHARDS and not options.servers:
        raise UsageError(f"--cluster {SHARDS} needs --servers")
