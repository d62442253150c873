# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""Rules for files. They take a file's name below the top folder and its text, and give one line for each fault."""

import re
import subprocess
from collections.abc import Iterable, Iterator, Mapping, Set
from pathlib import Path

# REUSE-IgnoreStart
HEADER = ("SPDX-FileCopyrightText: The qtutils developers", "SPDX-License-Identifier: MIT")
# REUSE-IgnoreEnd
HEADER_PLACE = 400  # characters from the beginning
LIMITS = {".h": 120, ".cpp": 300, ".c": 300, ".py": 300, ".sh": 300, "": 300}
REASON = re.compile(r"(//|#|/\*).*\bwait-reason:\s*\S")
WAIT = re.compile(
    r"\b(qWait|qSleep|sleep_for|sleep_until|msleep|usleep|nanosleep|clock_nanosleep|(QThread|time|this_thread)(::|\.)sleep)\("
    r"|(?<![\w.>:])sleep\(\d"
)
SHELL_WAIT = re.compile(r"(^|[;&|({]|\bdo|\bthen|\belse)\s*sleep\s")
PIN = re.compile(r"Test: (\w+), (\w+)\.")
PIN_PLACE = 6  # lines that a comment's reference to its test may take
CPP_TEST = re.compile(r"^    void (\w+)\(\)", re.MULTILINE)
PYTHON_TEST = re.compile(r"^\s*def (test_\w+)\(", re.MULTILINE)


def suffix(name: str) -> str:
    last = name.rsplit("/", 1)[-1]
    return last[last.rindex(".") :] if "." in last else ""


def licence(name: str, text: str) -> list[str]:
    """The two lines of the licence stand at the beginning."""
    return [] if all(line in text[:HEADER_PLACE] for line in HEADER) else [f"{name}: no licence"]


def length(name: str, text: str) -> list[str]:
    lines = len(text.splitlines())
    return [f"{name}: {lines} lines"] if lines > LIMITS.get(suffix(name), lines) else []


def cleanliness(name: str, text: str) -> list[str]:
    """No tabs, no blanks at the end of a line, and a line feed at the end of the file."""
    faults = [f"{name}: no line feed at the end"] if text and not text.endswith("\n") else []
    if re.search(r"[ \t]$|\t|\r", text, re.MULTILINE):
        faults.append(f"{name}: tabs or blanks at the end of a line")
    return faults


def waits(name: str, text: str) -> Iterator[str]:
    """Tests wait for conditions. A fixed wait needs a comment on its line: "wait-reason:" and the reason."""
    pattern = WAIT if suffix(name) in (".cpp", ".h", ".c", ".py") else SHELL_WAIT
    for number, line in enumerate(text.splitlines(), 1):
        if pattern.search(line) and not REASON.search(line):
            yield f"{name}:{number}: {line.strip()}"


def tests_of(name: str, text: str) -> tuple[str, set[str]]:
    """A test program's name and the names of its tests."""
    pattern = PYTHON_TEST if suffix(name) == ".py" else CPP_TEST
    return name.rsplit("/", 1)[-1].removesuffix(suffix(name)), set(pattern.findall(text))


def deliberate(name: str, text: str, tests: Mapping[str, Set[str]]) -> Iterator[str]:
    """What looks like a mistake but is wanted names the test that holds it: "Test: program, function."."""
    lines = text.splitlines()
    for index, line in enumerate(lines):
        if "Deliberate:" not in line:
            continue
        comment = " ".join(
            re.sub(r"^\s*(//|#|\*)?\s*", "", part) for part in lines[index : index + PIN_PLACE]
        )
        pin = PIN.search(comment)
        if pin is None:
            yield f"{name}:{index + 1}: names no test"
        elif pin[2] not in tests.get(pin[1], set()):
            yield f"{name}:{index + 1}: no such test: {pin[1]}, {pin[2]}"


def layout(folder: Path, names: Iterable[str]) -> list[str]:
    """C and C++ look as clang-format makes them. Reads the files below the folder by itself, all at once."""
    command = ["clang-format", "--dry-run", "-Werror", *names]
    result = subprocess.run(command, cwd=folder, capture_output=True, text=True, check=False)
    return [line for line in result.stderr.splitlines() if " error: " in line]
