# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""Rules that hold for every file of the project."""

import fnmatch
import os
import re
import tomllib
from collections.abc import Iterator
from pathlib import Path

TOP = Path(__file__).resolve().parents[2]
SKIPPED = re.compile(r"build|demo-out$|\.git$|\.cache$|\.mypy_cache$|\.pytest_cache$|__pycache__$")
HEADER = ("SPDX-FileCopyrightText: The qtutils developers", "SPDX-License-Identifier: MIT")
LIMITS = {".h": 120, ".cpp": 300, ".c": 300, ".py": 300, ".sh": 300, "": 300}


def files() -> Iterator[Path]:
    for folder, folders, names in os.walk(TOP):
        folders[:] = [name for name in folders if not SKIPPED.match(name)]
        yield from (Path(folder, name) for name in names if not name.endswith(".pyc"))


def covered_patterns() -> list[str]:
    with open(TOP / "REUSE.toml", "rb") as file:
        return [pattern for annotation in tomllib.load(file)["annotations"] for pattern in annotation["path"]]


def is_covered(path: Path, patterns: list[str]) -> bool:
    name = path.relative_to(TOP).as_posix()
    return any(fnmatch.fnmatch(name, pattern.replace("**", "*")) for pattern in patterns)


def text_of(path: Path) -> str:
    return path.read_text(encoding="utf-8", errors="replace")


def test_every_file_names_its_licence() -> None:
    patterns = covered_patterns()
    sources = [path for path in files() if path.parent.name != "LICENSES" and not is_covered(path, patterns)]
    bare = [str(path) for path in sources if not all(line in text_of(path)[:400] for line in HEADER)]
    assert len(sources) > 100
    assert bare == []


def test_files_stay_short() -> None:
    lengths = {path: len(text_of(path).splitlines()) for path in files() if path.suffix in LIMITS}
    limits = {path: LIMITS[path.suffix] for path in lengths}
    assert [f"{path}: {lengths[path]} lines" for path in lengths if lengths[path] > limits[path]] == []


def test_tests_wait_for_conditions() -> None:
    """A fixed wait needs a comment on its line that gives the reason."""
    wait = re.compile(r"\b(QTest::qWait|QTest::qSleep|usleep|sleep_for|sleep)\(")
    lines = [
        f"{path}:{number}: {line.strip()}"
        for path in files()
        if "tests" in path.relative_to(TOP).parts and path.suffix in (".cpp", ".h", ".c", ".py")
        for number, line in enumerate(text_of(path).splitlines(), 1)
        if wait.search(line) and not re.search(r"//|# ", line) and path != Path(__file__)
    ]
    assert lines == []


def test_lines_are_clean() -> None:
    texts = {path: text_of(path) for path in files() if path.suffix != ".png"}
    assert [str(path) for path, text in texts.items() if text and not text.endswith("\n")] == []
    assert [str(path) for path, text in texts.items() if re.search(r"[ \t]$|\t|\r", text, re.MULTILINE)] == []
