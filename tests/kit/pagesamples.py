# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""The code samples of a page in Markdown."""

import re
import subprocess
from pathlib import Path

from kitprocess import TOP

BLOCK = re.compile(r"^ *```(\w*)\n(.*?)^ *```$", re.MULTILINE | re.DOTALL)
STRICT = ["-Wall", "-Wextra", "-Wpedantic", "-Wshadow", "-Werror", f"-I{TOP}/kit/include", "-fsyntax-only"]
LANGUAGES = {"c": ["-x", "c", "-std=c11"], "cpp": ["-x", "c++", "-std=c++20"]}


def read(page: Path) -> list[tuple[str, str]]:
    """Language and text of each sample, also in lists, in their order. Every block of the page must have an end."""
    text = page.read_text(encoding="utf-8")
    samples: list[tuple[str, str]] = BLOCK.findall(text)
    assert text.count("```") == 2 * len(samples)
    return samples


def complaints(compiler: str, language: str, sample: str) -> str:
    """What a strict compiler says of a sample in C or C++; nothing when it is good."""
    command = [compiler, *LANGUAGES[language], *STRICT, "-"]
    result = subprocess.run(command, input=sample, text=True, capture_output=True, check=False)
    return f"{result.stderr}ended with {result.returncode}" if result.returncode else result.stderr
