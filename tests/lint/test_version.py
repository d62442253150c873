# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""The version stands in CMakeLists.txt. The few files that can't ask for it there say the same; no others name it."""

import re

from test_files import TEXTS, report

PROJECT = re.compile(r"^project\(qtutils VERSION (\d+\.\d+\.\d+) ", re.MULTILINE)
PYTHON = re.compile(r'^__version__ = "(.*)"$', re.MULTILINE)
PACKAGES = ("mapmaker/__init__.py", "kit/python/qtutils/__init__.py")
HEADING = re.compile(r"^## (.*)$", re.MULTILINE)
DATED = re.compile(r"(\d+)\.(\d+)\.(\d+) - \d{4}-\d{2}-\d{2}")
MAY_NAME_IT = {"CMakeLists.txt", "CHANGELOG.md", *PACKAGES}


def version() -> str:
    (found,) = PROJECT.findall(TEXTS["CMakeLists.txt"])
    return str(found)


def test_the_packages_for_python_have_the_projects_version() -> None:
    assert {name: PYTHON.findall(TEXTS[name]) for name in PACKAGES} == {
        name: [version()] for name in PACKAGES
    }


def test_no_other_file_names_the_version() -> None:
    named = re.compile(rf"(?<![\w.,]){re.escape(version())}(?![\w.])")
    others = {name: text for name, text in TEXTS.items() if name not in MAY_NAME_IT}
    report(f"{name} names version {version()}" for name, text in others.items() if named.search(text))


def test_the_changes_are_those_of_this_version() -> None:
    newest, *older = HEADING.findall(TEXTS["CHANGELOG.md"])
    assert newest == "Unreleased" or newest.startswith(f"{version()} - ")
    dated = [DATED.fullmatch(heading) for heading in ([] if newest == "Unreleased" else [newest]) + older]
    numbers = [tuple(map(int, match.groups())) for match in dated if match]
    assert len(numbers) == len(dated)
    assert numbers == sorted(numbers, reverse=True)
