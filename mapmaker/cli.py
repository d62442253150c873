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

from mapmaker import clusters, head, hierarchy, keywords, mapping, som, store
from mapmaker.doctor.examine import examine
from mapmaker.doctor.finding import exit_code, json_text, text_lines
from mapmaker.hostnames import HostNames, NameFault
from mapmaker.options import UsageError, check, parser
from mapmaker.spider import Link
from mapmaker.sources import changelogs, sample
from mapmaker.sources.document import Document, SourceError
from mapmaker.spool import Spool, spooled

T = TypeVar("T")

FAILED = 2


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


def host_names(options: argparse.Namespace) -> HostNames:
    """The tables as a host names them."""
    return HostNames(options.som_database, options.source_database, options.table)


def link_head(options: argparse.Namespace) -> None:
    """Makes the links of a head."""
    with store.connection() as link:
        made = head.link_tables(link, host_names(options), Link(options.server, options.link_ca or ""))
    say(f"{', '.join(made)}: linked to {options.server}")


def look(options: argparse.Namespace) -> int:
    """Prints what is wrong with a database; the exit code tells the worst of it."""
    with store.connection(autocommit=None) as link:
        findings = examine(link, store.settings(os.environ)["host"], host_names(options), track=bar)
    say(json_text(findings) if options.json else "\n".join(text_lines(findings)))
    return exit_code(findings)


def run(options: argparse.Namespace) -> None:
    """Makes and stores a map. Files and tables take their places only when all is written."""
    check(options)
    names = store.Names(options.source_database, options.som_database, options.name or options.command)
    names.check()
    steps = Steps()
    others = clusters.places(options.wait_for)
    with store.connection() as link, clusters.home(link, options, names, os.environ):
        pass  # fail before the work, not after
    with steps.step("reading"):
        texts, number = documents(options)
    say(f"{number} documents")
    content, nodes, numbers = make_map(options, texts, steps)
    about = [
        f"Hierarchy of the map {names.name}, made by: mapmaker {options.command} --seed {options.seed}",
        f"{number} documents, {len(nodes)} nodes",
    ]
    with store.connection() as link, clusters.home(link, options, names, os.environ) as home:
        with steps.step("storing"):
            store.fill(link, names, content, bar, home)
        texts_of = {
            options.script: hierarchy.script_lines(nodes, about),
            options.report: report_lines(options, numbers, steps),
        }
        with replaced_files({path: lines for path, lines in texts_of.items() if path}):
            store.swap(link, names.tables())
            late = clusters.late(link, options.cluster, others, names.tables()[2], os.environ)
    for name, value in numbers.items():
        say(f"{name}: {value:.4g}")
    if late:
        raise store.StoreError(f"the map is stored, but not everywhere yet: {'; '.join(late)}")


def main(arguments: Sequence[str]) -> int:
    """Exit code: 0, or 2 with one line of error; after a look at a database that of the findings."""
    options = parser().parse_args(arguments)
    try:
        if options.command == "doctor":
            return look(options)
        (link_head if options.command == "head" else run)(options)
    except (UsageError, NameFault, SourceError, store.StoreError) as error:
        print(f"mapmaker: {error}", file=sys.stderr)
    except OSError as error:
        print(f"mapmaker: {error.filename or 'temporary files'}: {error.strerror}", file=sys.stderr)
    except KeyboardInterrupt:
        print("mapmaker: interrupted", file=sys.stderr)
    else:
        return 0
    return FAILED
