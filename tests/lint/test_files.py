# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""The project's files follow the rules."""

import fnmatch
import os
import re
from collections.abc import Iterable, Iterator
from pathlib import Path

import links
import pytest
import rules

TOP = Path(__file__).resolve().parents[2]
SKIPPED = re.compile(r"build|corpus$|demo-out$|\.git$|\.cache$|\.mypy_cache$|\.pytest_cache$|__pycache__$")
CPP = (".h", ".cpp", ".c")


def names() -> Iterator[str]:
    """Names of all files below the top folder."""
    for folder, folders, files in os.walk(TOP):
        folders[:] = [name for name in folders if not SKIPPED.match(name)]
        yield from (
            Path(folder, name).relative_to(TOP).as_posix() for name in files if not name.endswith(".pyc")
        )


def text_of(name: str) -> str:
    return (TOP / name).read_text(encoding="utf-8", errors="replace")


TEXTS = {name: text_of(name) for name in names() if not name.endswith(".png")}
SOURCES = {name: text for name, text in TEXTS.items() if rules.suffix(name) in (*CPP, ".py")}
# The rules' own samples are bad on purpose.
SAMPLES = "tests/lint/test_rules.py"


def is_covered(name: str) -> bool:
    """The annotation file names the licence of files that can hold no header."""
    lists = re.findall(r"^Files: (.*(?:\n .*)*)", TEXTS[".reuse/dep5"], re.MULTILINE)
    return any(fnmatch.fnmatch(name, pattern) for patterns in lists for pattern in patterns.split())


def report(faults: Iterable[str]) -> None:
    """Fails with one line for each fault."""
    text = "\n".join(faults)
    if text:
        pytest.fail(text, pytrace=False)


def test_all_folders_are_seen() -> None:
    assert len(TEXTS) > 100
    assert {"binding/CHandover.cpp", "tests/lint/rules.py", "check"} <= TEXTS.keys()


def test_every_file_names_its_licence() -> None:
    bare = [name for name in TEXTS if not name.startswith("LICENSES/") and not is_covered(name)]
    report(fault for name in bare for fault in rules.licence(name, TEXTS[name]))


def test_files_stay_short() -> None:
    report(fault for name, text in TEXTS.items() for fault in rules.length(name, text))


def test_lines_are_clean() -> None:
    report(fault for name, text in TEXTS.items() for fault in rules.cleanliness(name, text))


def test_tests_wait_for_conditions() -> None:
    tests = {name: text for name, text in TEXTS.items() if "tests" in name.split("/") and name != SAMPLES}
    assert len(tests) > 20
    report(fault for name, text in tests.items() for fault in rules.waits(name, text))


def test_deliberate_oddities_are_tested() -> None:
    programs = [name for name in SOURCES if name.rsplit("/", 1)[-1].startswith(("tst_", "test_"))]
    tests = dict(rules.tests_of(name, SOURCES[name]) for name in programs)
    marked = {name: text for name, text in SOURCES.items() if not name.startswith("tests/lint/")}
    report(fault for name, text in marked.items() for fault in rules.deliberate(name, text, tests))


def test_links_lead_somewhere() -> None:
    pages = {name: text for name, text in TEXTS.items() if name.endswith(".md")}
    known = links.with_folders(set(names()))
    assert sum(len(list(links.targets(text))) for text in pages.values()) > 50
    report(fault for name in pages for fault in links.faults(name, pages, known))


def test_sources_are_formatted() -> None:
    report(rules.layout(TOP, [name for name in SOURCES if rules.suffix(name) in CPP]))
