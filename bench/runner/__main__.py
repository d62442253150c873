# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""Asks the questions; to be started by bench/run, which builds and starts server and display."""

import argparse
import sys
import time
from collections.abc import Iterable
from importlib.util import find_spec
from pathlib import Path

from bench.runner.data import Data
from bench.runner.measure import Line, compare, flatness, growth, sample
from bench.runner.question import Question
from bench.runner.questions import QUESTIONS
from bench.runner.report import machine, table, write_json
from bench.runner.worker import BenchError


def arguments() -> argparse.Namespace:
    parser = argparse.ArgumentParser(prog="bench/run")
    names = [question.name for question in QUESTIONS]
    parser.add_argument("case", nargs="*", metavar="case", help=f"questions to ask: {', '.join(names)}")
    parser.add_argument("--programs", required=True, help=argparse.SUPPRESS)
    parser.add_argument("--output", type=Path, default=Path("bench-out"), help="folder of the results")
    parser.add_argument("--plot", action="store_true", help="draw pictures, too (needs python3-matplotlib)")
    parser.add_argument(
        "--up-to", type=int, default=sys.maxsize, metavar="SIZE", help="leave larger sizes out"
    )
    found = parser.parse_args()
    unknown = set(found.case) - set(names)
    if unknown:
        parser.error(f"no such case: {', '.join(sorted(unknown))}")
    if found.plot and find_spec("matplotlib") is None:
        parser.error("--plot needs the package python3-matplotlib")
    return found


def answer(question: Question, data: Data, programs: str, largest: int) -> list[Line]:
    """The lines of a question; says how long it took."""
    begin = time.monotonic()
    question.prepare(data)
    prepared = time.monotonic()
    sizes = [size for size in question.rounds if size <= largest]
    lines = [line for size in sizes for line in compare(question, size, sample(question, size, programs))]
    if len(sizes) == len(question.rounds):
        lines += [*growth(question, lines), *flatness(question, lines)]
    end = time.monotonic()
    print(f"-- {question.name}: data {prepared - begin:.1f} s, rounds {end - prepared:.1f} s", flush=True)
    return lines


def answers(questions: Iterable[Question], data: Data, programs: str, largest: int) -> tuple[list[Line], int]:
    """The lines of all questions, and the number of those that failed; says why they did."""
    lines: list[Line] = []
    failures = 0
    for question in questions:
        try:
            lines += answer(question, data, programs, largest)
        except BenchError as error:
            print(f"bench/run: {question.name}: {error}", file=sys.stderr, flush=True)
            failures += 1
    return lines, failures


def main() -> int:
    options = arguments()
    chosen = [question for question in QUESTIONS if not options.case or question.name in options.case]
    lines, failures = answers(chosen, Data(options.up_to), options.programs, options.up_to)
    print(f"\n{machine()['system']}, {machine()['cores']} cores\n\n{table(lines)}\n")
    options.output.mkdir(exist_ok=True)
    write_json(options.output / "bench.json", lines)
    if options.plot:
        from bench.runner import plots

        plots.draw(lines, options.output)
    missed = sum(line.misses() for line in lines)
    print(f"{missed} goals missed, {failures} questions failed; figures in {options.output}/bench.json")
    return 1 if failures else 0


sys.exit(main())
