# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""The module and the host program are built with the compiler's and the linker's protections.

The build hands over its folder (BUILD_FOLDER), the module (MODULE) and the host program (HOST).
"""

import json
import os
import platform
import re
import shlex
from pathlib import Path

import pytest
from elffile import ElfFile

TOP = Path(__file__).resolve().parents[2]
SOURCE_FOLDERS = ("binding", "browser", "data", "host", "table", "tree", "viewer")
ALWAYS = {"-fstack-protector-strong", "-fstack-clash-protection", "-Wformat", "-Werror=format-security"}
ON_X86 = {"-fcf-protection"}
OPTIMIZED = {"-D_FORTIFY_SOURCE=2"}
# Each of them has a checked form that takes its place in every call.
UNCHECKED = {"printf", "fprintf", "sprintf", "snprintf"}
ENDBR64 = b"\xf3\x0f\x1e\xfa"  # marks a place that may be jumped to; nothing else in a program looks like it
IS_X86 = platform.machine() == "x86_64"


def commands() -> dict[str, list[str]]:
    """The compiler's words for each source of the module and the host, by its name below the top folder."""
    found = {}
    for entry in json.loads(Path(os.environ["BUILD_FOLDER"], "compile_commands.json").read_text()):
        name = os.path.relpath(entry["file"], TOP)
        if name.split("/")[0] in SOURCE_FOLDERS:
            found[name] = shlex.split(entry["command"])
    return found


def is_optimized(words: list[str]) -> bool:
    """Whether the compiler optimises: the last of its levels counts."""
    levels = [word for word in words if re.fullmatch(r"-O[0-3sgz]?|-Ofast", word)]
    return bool(levels) and levels[-1] != "-O0"


COMMANDS = commands()


@pytest.fixture(params=[name for name in ("MODULE", "HOST") if name in os.environ])
def binary(request: pytest.FixtureRequest) -> ElfFile:
    return ElfFile(Path(os.environ[request.param]))


def test_sources_of_all_folders_are_seen() -> None:
    folders = {name.split("/")[0] for name in COMMANDS}
    assert folders >= set(SOURCE_FOLDERS) - {"host"}
    assert ("host" in folders) == ("HOST" in os.environ)


def test_every_source_is_compiled_with_the_protections() -> None:
    for name, words in COMMANDS.items():
        wanted = ALWAYS | (ON_X86 if IS_X86 else set()) | (OPTIMIZED if is_optimized(words) else set())
        assert wanted - set(words) == set(), name


def test_tables_of_addresses_are_filled_and_closed_at_the_start(binary: ElfFile) -> None:
    assert binary.rights("GNU_RELRO") == ["R  "]
    assert binary.flags() >= {"BIND_NOW", "NOW"}


def test_no_memory_is_both_written_and_run(binary: ElfFile) -> None:
    assert binary.rights("GNU_STACK") == ["RW "]
    assert len(binary.rights("LOAD")) > 2 and "RWE" not in binary.rights("LOAD")


def test_code_is_not_written_by_the_dynamic_linker(binary: ElfFile) -> None:
    assert list(binary.dynamic("TEXTREL")) == []
    assert "TEXTREL" not in binary.flags()


def test_functions_guard_their_return_addresses(binary: ElfFile) -> None:
    assert "__stack_chk_fail" in binary.imports()


def test_calls_of_the_c_library_are_checked_in_optimised_code(binary: ElfFile) -> None:
    if not all(is_optimized(words) for words in COMMANDS.values()):
        pytest.skip("this build type doesn't optimise, and the C library checks optimised code only")
    assert any(name.endswith("_chk") for name in binary.imports())
    assert binary.imports() & UNCHECKED == set()


@pytest.mark.skipif(not IS_X86, reason="the mark is this processor's")
def test_targets_of_jumps_are_marked(binary: ElfFile) -> None:
    assert binary.content.count(ENDBR64) > 100


@pytest.mark.skipif("HOST" not in os.environ, reason="this build has no host program")
def test_the_host_program_may_lie_anywhere_in_memory() -> None:
    host = ElfFile(Path(os.environ["HOST"]))
    assert "Elf file type is DYN" in host.text
    assert "PIE" in host.flags()


@pytest.mark.parametrize(
    "line, optimized",
    [("-g", False), ("-O0", False), ("-O1 -g", True), ("-O2 -O0", False), ("-O0 -Og", True), ("-O", True)],
)
def test_the_last_level_of_optimisation_counts(line: str, optimized: bool) -> None:
    assert is_optimized(line.split()) == optimized
