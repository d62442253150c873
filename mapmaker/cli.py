# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""The command line: reads a collection, makes the map, stores it, and tells how it went."""

import argparse
import json
import os
import sys
import time
from collections.abc import Iterable, Iterator, Mapping, Sequence
from contextlib import contextmanager, suppress
from typing import TypeVar

import numpy as np
from tqdm import tqdm

from mapmaker import __version__, hierarchy, keywords, mapping, som, store
from mapmaker.doctor.examine import examine
from mapmaker.doctor.finding import exit_code, json_text, text_lines
from mapmaker.doctor.patient import NameFault
from mapmaker.sources import changelogs, sample
from mapmaker.sources.document import Document, SourceError
from mapmaker.spool import BATCH, Spool, spooled

T = TypeVar("T")

FAILED = 2
FEWEST = 20  # documents a map can be made of


class UsageError(Exception):
    """An option makes no sense; the message is one line."""


class Steps:
    """Shows how long each step takes, and keeps the times in seconds by name."""

    def __init__(self) -> None:
        self.seconds: dict[str, float] = {}

    @contextmanager
    def step(self, name: str) -> Iterator[None]:
        """Times what happens inside."""
        start = time.monotonic()
        yield
        self.seconds[name] = time.monotonic() - start
        say(f"{name}: {self.seconds[name]:.1f} s")


def say(line: str) -> None:
    """One line for the user, at once also in a log."""
    print(line, flush=True)


def bar(items: Iterable[T]) -> Iterable[T]:
    """A progress bar over a loop, if there is a terminal."""
    shown: Iterable[T] = tqdm(items, leave=False, disable=not sys.stderr.isatty())
    return shown


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


def check(options: argparse.Namespace) -> None:
    """Raises UsageError for numbers out of range."""
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


def documents(options: argparse.Namespace) -> tuple[Spool[list[Document]], int]:
    """The collection that the command asks for, in batches on disk, and its size."""
    if options.command == "changelogs":
        try:
            return release_notes(options)
        except SourceError as error:
            if not options.or_sample:
                raise
            say(f"{error}; making the sample of invented texts instead")
    made = sample.make(options.documents, np.random.default_rng(options.seed), options.root)
    return spooled(made, options.batch)


def release_notes(options: argparse.Namespace) -> tuple[Spool[list[Document]], int]:
    """Documents of the release notes, and their number, at least the minimum."""
    notes = changelogs.read(bar(changelogs.changelog_files(options.root)))
    found, number = spooled(notes, options.batch)
    if number < options.minimum:
        raise SourceError(f"only {number} release notes in {options.root}, {options.minimum} are needed")
    return found, number


def make_map(
    options: argparse.Namespace, texts: Spool[list[Document]], steps: Steps
) -> tuple[store.Content, list[hierarchy.Node], dict[str, float]]:
    """The map's rows, its nodes and its quality."""
    rng = np.random.default_rng(options.seed)
    with steps.step("vectors"):
        made = mapping.vectors(texts, rng, options.batch)
    points = made.points
    grid = som.Grid(options.width, options.height) if options.width else som.default_grid(len(points))
    with steps.step(f"map of {grid.width} x {grid.height} units"):
        models = som.train(points, grid, rng, track=bar)
        trained = mapping.SOM(grid, models, som.assign(points, models))
    with steps.step("tree"):
        nodes = mapping.tree(points, trained)
    with steps.step("keywords"):
        chosen = keywords.node_keywords(made.words, made.counts, trained.units, nodes)
    with steps.step("quality"):
        numbers = mapping.figures(made, trained, chosen)
    rows = mapping.memberships(points, trained, nodes, options.branch_documents)
    return store.Content(texts, rows, mapping.node_rows(nodes, chosen)), nodes, numbers


@contextmanager
def replaced_files(texts: Mapping[str, Iterable[str]]) -> Iterator[None]:
    """Writes text files aside, lets the caller act, and puts them in place unless that fails."""
    aside = {path: f"{path}.{os.getpid()}.new" for path in texts}
    try:
        for path, lines in texts.items():
            with open(aside[path], "w", encoding="utf-8") as stream:
                stream.writelines(f"{line}\n" for line in lines)
        yield
        for path, written in aside.items():
            os.replace(written, path)
    finally:
        for written in aside.values():
            with suppress(FileNotFoundError):
                os.remove(written)


def report_lines(options: argparse.Namespace, numbers: dict[str, float], steps: Steps) -> list[str]:
    """The JSON report."""
    report = {"command": options.command, "seed": options.seed, "quality": numbers, "seconds": steps.seconds}
    return json.dumps(report, indent=2).splitlines()


def look(options: argparse.Namespace) -> int:
    """Prints what is wrong with a database; the exit code tells the worst of it."""
    names = (options.som_database, options.source_database, options.table)
    with store.connection(autocommit=None) as link:
        findings = examine(link, store.settings(os.environ)["host"], *names, track=bar)
    say(json_text(findings) if options.json else "\n".join(text_lines(findings)))
    return exit_code(findings)


def run(options: argparse.Namespace) -> None:
    """Makes and stores a map. Files and tables take their places only when all is written."""
    check(options)
    names = store.Names(options.source_database, options.som_database, options.name or options.command)
    names.check()
    steps = Steps()
    with store.connection():  # fail before the work, not after
        pass
    with steps.step("reading"):
        texts, number = documents(options)
    say(f"{number} documents")
    content, nodes, numbers = make_map(options, texts, steps)
    about = [
        f"Hierarchy of the map {names.name}, made by: mapmaker {options.command} --seed {options.seed}",
        f"{number} documents, {len(nodes)} nodes",
    ]
    with store.connection() as link:
        with steps.step("storing"):
            store.fill(link, names, content, bar)
        texts_of = {
            options.script: hierarchy.script_lines(nodes, about),
            options.report: report_lines(options, numbers, steps),
        }
        with replaced_files({path: lines for path, lines in texts_of.items() if path}):
            store.swap(link, names)
    for name, value in numbers.items():
        say(f"{name}: {value:.4g}")


def main(arguments: Sequence[str]) -> int:
    """Exit code: 0, or 2 with one line of error; after a look at a database that of the findings."""
    options = parser().parse_args(arguments)
    try:
        if options.command == "doctor":
            return look(options)
        run(options)
    except (UsageError, NameFault, SourceError, store.StoreError) as error:
        print(f"mapmaker: {error}", file=sys.stderr)
    except OSError as error:
        print(f"mapmaker: {error.filename or 'temporary files'}: {error.strerror}", file=sys.stderr)
    except KeyboardInterrupt:
        print("mapmaker: interrupted", file=sys.stderr)
    else:
        return 0
    return FAILED
