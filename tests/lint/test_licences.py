# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""The sources follow REUSE. The tool sees a copy: below the top folder there may be builds, with or without Git."""

import shutil
import subprocess
from pathlib import Path

import pytest
from test_files import SKIPPED, TOP


def not_ours(_: str, names: list[str]) -> set[str]:
    """What builds and tools leave; the inputs for fuzzing are ours."""
    return {name for name in names if SKIPPED.match(name) and name != "corpus"}


@pytest.fixture(scope="module")
def copy(tmp_path_factory: pytest.TempPathFactory) -> Path:
    folder = tmp_path_factory.mktemp("sources") / "qtutils"
    shutil.copytree(TOP, folder, ignore=not_ours)
    return folder


def complaints(folder: Path) -> str:
    """What the tool says about a tree; empty when all is well."""
    command = ["reuse", "--root", str(folder), "lint"]
    result = subprocess.run(command, capture_output=True, text=True, check=False)
    return "" if result.returncode == 0 else result.stdout + result.stderr


def test_every_file_has_a_licence(copy: Path) -> None:
    assert complaints(copy) == ""


def test_a_file_without_a_licence_is_noticed(copy: Path) -> None:
    bare = copy / "tools" / "bare.py"
    bare.write_text("print()\n")
    found = complaints(copy)
    bare.unlink()
    assert "tools/bare.py\n" in found
