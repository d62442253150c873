# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""What readelf tells about a program or a shared object."""

import os
import re
import subprocess
from collections.abc import Iterator
from pathlib import Path

SEGMENT = re.compile(r"^  (\w+) +0x\w+ 0x\w+ 0x\w+ 0x\w+ 0x\w+ ([R ][W ][E ]) ", re.MULTILINE)
DYNAMIC = re.compile(r"^ 0x\w+ \((\w+)\)(.*)$", re.MULTILINE)
IMPORT = re.compile(r"^ *\d+: 0+ +\d+ +FUNC +(?:GLOBAL|WEAK) +DEFAULT +UND (\w+)", re.MULTILINE)


class ElfFile:
    """A file in the Executable and Linkable Format. Raises CalledProcessError when readelf can't read it."""

    def __init__(self, path: Path) -> None:
        options = ["--wide", "--segments", "--dynamic", "--dyn-syms"]
        command = ["readelf", *options, str(path)]
        environment = {**os.environ, "LC_ALL": "C"}
        result = subprocess.run(command, env=environment, capture_output=True, text=True, check=True)
        self.text = result.stdout
        self.content = path.read_bytes()

    def rights(self, segment: str) -> list[str]:
        """Rights of all segments of a type as three letters, such as "RW "."""
        return [rights for name, rights in SEGMENT.findall(self.text) if name == segment]

    def dynamic(self, tag: str) -> Iterator[str]:
        """Values of all entries of the dynamic section with a tag."""
        return (value.strip() for name, value in DYNAMIC.findall(self.text) if name == tag)

    def flags(self) -> set[str]:
        """Flags for the dynamic linker, such as BIND_NOW, NOW and PIE."""
        values = [*self.dynamic("FLAGS"), *self.dynamic("FLAGS_1")]
        return {flag for value in values for flag in value.removeprefix("Flags:").split()}

    def imports(self) -> set[str]:
        """Names of the functions that other objects bring, without versions."""
        return set(IMPORT.findall(self.text))
