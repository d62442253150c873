# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""Fuzzes the reading of changelogs: fuzz_changelogs.py [--seconds N] [--found FOLDER] KEPT, with the top folder
in PYTHONPATH.

Runs each input of the folder KEPT once. With --seconds it then makes inputs anew for so long, from those that reached
something new; an input that breaks a demand or takes too long is written to the folder FOUND and ends the search.
"""

import argparse
import hashlib
import random
import signal
import sys
import time
import traceback
from collections.abc import Iterator, Sequence
from contextlib import contextmanager
from pathlib import Path
from types import FrameType

from coverage_of_lines import Coverage
from mutations import mutated

from mapmaker.sources import changelogs, copies, document

SECONDS_PER_INPUT = 1  # of the processor
SECONDS_PER_LINE = 10


class Broken(Exception):
    """A demand doesn't hold; the message names it."""


def demand(holds: bool, what: str) -> None:
    """Raises Broken unless the demand holds."""
    if not holds:
        raise Broken(what)


def is_plain(text: str) -> bool:
    """Whether a text has no control characters but line feeds."""
    return all(sign == "\n" or (sign >= " " and not "\x7f" <= sign <= "\x9f") for sign in text)


def spelled(entry: copies.Entry) -> str:
    """An entry as a changelog has it."""
    found = entry.document
    lines = [f"    {line}" if line else "" for line in found.text.split("\n")]
    urgency = f"urgency={found.urgency}" if found.urgency else ""
    head = f"{entry.source} ({entry.version}) unstable; {urgency}"
    return "\n".join(
        [head, "", *lines, "", f" -- {found.author} <a@b>  {found.date:%a, %d %b %Y %H:%M:%S} +0000", ""]
    )


def check(entry: copies.Entry) -> None:
    """The demands on one entry."""
    found = entry.document
    demand(found.title == f"{entry.source} {entry.version}", "the title is source and version")
    for name in ("title", "author", "urgency", "package"):
        demand(is_plain(getattr(found, name)), f"{name} has no control characters")
        demand("\n" not in getattr(found, name), f"{name} is one line")
    demand(is_plain(found.text), "the text has no control characters but line feeds")
    demand(found.text == found.text.strip(), "the text has no blanks around it")
    demand(found.date.year >= changelogs.EARLIEST_YEAR, "the date is possible")
    demand(document.is_safe_address(found.url), "the address is safe")
    (again,) = changelogs.parse(spelled(entry), "/doc/package")
    demand(again.document == found, f"an entry reads the same again: {again.document} for {found}")


def check_all(entries: Sequence[copies.Entry]) -> None:
    """The demands on all entries of an input."""
    for entry in entries:
        check(entry)
    demand(len(list(copies.unique(entries))) <= len(entries), "no document comes from nowhere")


@contextmanager
def limited(seconds: int) -> Iterator[None]:
    """Ends what takes too long, also inside a pattern, with Broken; 0 is no limit."""

    def stop(number: int, frame: FrameType | None) -> None:
        raise Broken(f"an input takes more than {seconds} s of the processor")

    signal.signal(signal.SIGVTALRM, stop)
    signal.setitimer(signal.ITIMER_VIRTUAL, seconds)
    try:
        yield
    finally:
        signal.setitimer(signal.ITIMER_VIRTUAL, 0)


def tried(content: bytes, seconds: int = 0) -> frozenset[int]:
    """Runs an input, at most so long; gives what it reached. Raises whatever the code raises, or Broken."""
    with limited(seconds):
        with Coverage(changelogs.__file__, copies.__file__, document.__file__) as coverage:
            entries = list(changelogs.parse(changelogs.decode(content), "/doc/package"))
        check_all(entries)
    return coverage.reached()


def search(kept: list[bytes], seconds: float, rng: random.Random) -> bytes | None:
    """Makes inputs for a while; gives the first one that fails."""
    pool, known = list(kept), set[int]()
    for content in pool:
        known |= tried(content)
    end, said, runs = time.monotonic() + seconds, time.monotonic(), 0
    while time.monotonic() < end:
        content = mutated(rng, pool)
        try:
            reached = tried(content, SECONDS_PER_INPUT)
        except Exception:
            traceback.print_exc()
            return content
        if not reached <= known:
            pool.append(content)
            known |= reached
        runs += 1
        if time.monotonic() - said > SECONDS_PER_LINE:
            said = time.monotonic()
            print(f"{runs} runs, {len(known)} steps reached, {len(pool)} inputs", flush=True)
    print(f"done: {runs} runs, {len(known)} steps reached, {len(pool)} inputs", flush=True)
    return None


def main() -> int:
    """Exit code: 0, or 1 when an input fails."""
    parser = argparse.ArgumentParser(description="Fuzzes the reading of changelogs.")
    parser.add_argument("kept", type=Path, help="folder of the kept inputs")
    parser.add_argument(
        "--seconds", type=float, default=0, help="how long to make inputs (0: run the kept ones)"
    )
    parser.add_argument("--found", type=Path, default=Path("."), help="folder for an input that fails (.)")
    parser.add_argument(
        "--seed", type=int, default=time.time_ns(), help="the same seed makes the same inputs"
    )
    options = parser.parse_args()
    files = sorted(options.kept.iterdir())
    for file in files:
        print(file, flush=True)
        tried(file.read_bytes())
    if options.seconds:
        print(f"seed {options.seed}")
        failing = search([file.read_bytes() for file in files], options.seconds, random.Random(options.seed))
        if failing is not None:
            name = options.found / f"changelogs-{hashlib.sha1(failing).hexdigest()}"
            name.write_bytes(failing)
            print(f"kept as {name}", file=sys.stderr)
            return 1
    return 0 if files else 1


if __name__ == "__main__":
    sys.exit(main())
