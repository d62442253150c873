# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""The kit's manual page says of each function what the headers say, and its program is built and run."""

import ctypes
import re
import shutil
import subprocess
from pathlib import Path

import pagesamples
import pytest
from kitprocess import BUILD, LIMIT, TOP
from test_examples import has_colors, running

import screen

PAGE = TOP / "man" / "qtutils.3.in"
HEADERS = sorted((TOP / "kit" / "include" / "qtutils").glob("[a-z]*.h"))
WIDTH = 78  # columns of the narrowest terminal with its margin
EXPORTED = re.compile(r"/\* ((?:(?!\*/).)*?) \*/ QTUTILS_KIT_EXPORT ([^;]*?(qtutils_\w+)\([^;]*\));")
ENTRY = re.compile(r"^ {7}(qtutils_\w+)\(\)\n((?: {14}.*\n)+)", re.MULTILINE)
CODE = re.compile(r"QTUTILS_ERROR_(\w+) = (\d+)")
CODE_IN_PAGE = re.compile(r"^ {7}QTUTILS_ERROR_(\w+) \((\d+)\)\n((?: {14}.*\n)+)", re.MULTILINE)
OLDEST, NEWEST = bytes((255, 247, 217)), bytes((74, 131, 180))  # ends of the recipes' scale


def one_line(text: str) -> str:
    return " ".join(text.split())


def rendered() -> str:
    """The page as it is read, without bold type."""
    command = ["groff", "-man", "-Tascii", "-P-cbou", "-rHY=0", f"-rLL={WIDTH}n", str(PAGE)]
    return subprocess.run(command, capture_output=True, text=True, check=True).stdout


TEXT = rendered()
FUNCTIONS = {
    name: (prototype.replace("( ", "("), comment)
    for header in HEADERS
    for comment, prototype, name in EXPORTED.findall(one_line(header.read_text(encoding="utf-8")))
}
ENTRIES = {name: one_line(text) for name, text in ENTRY.findall(TEXT)}


def section(title: str) -> str:
    (text,) = re.findall(rf"^{title}\n(.*?)^(?=\S)", TEXT, re.MULTILINE | re.DOTALL)
    return str(text)


def program() -> str:
    """The program, as it is copied from the page."""
    lines = section("EXAMPLES").splitlines()
    return "\n".join(
        line.removeprefix(" " * 7) for line in lines[lines.index("       #include <stdio.h>") - 2 :]
    )


def codes(description: str) -> list[str]:
    """The codes in the last sentence, and whether the function waits."""
    last = description.removesuffix(".").rpartition(". ")[2]
    found = re.findall(r"\b[A-Z][A-Z_]{3,}\b(?! never)", last)
    return [*found, *re.findall(r"\bWaits\b", description)]


def test_the_headers_functions_are_seen() -> None:
    text = "".join(header.read_text(encoding="utf-8") for header in HEADERS)
    assert len(FUNCTIONS) == len(re.findall(r"^QTUTILS_KIT_EXPORT ", text, re.MULTILINE)) > 0
    assert codes(FUNCTIONS["qtutils_close"][1]) == ["BUSY"]


def test_the_page_names_every_function() -> None:
    names, _, _ = one_line(section("NAME")).partition(" - ")
    assert sorted(names.split(", ")) == sorted(["qtutils", *FUNCTIONS])
    assert sorted(ENTRIES) == sorted(FUNCTIONS)


@pytest.mark.parametrize("name", FUNCTIONS)
def test_functions_are_declared_as_in_the_headers(name: str) -> None:
    assert f" {FUNCTIONS[name][0]};" in one_line(section("SYNOPSIS"))


@pytest.mark.parametrize("name", FUNCTIONS)
def test_functions_wait_and_fail_as_in_the_headers(name: str) -> None:
    assert codes(ENTRIES[name]) == codes(FUNCTIONS[name][1])


def test_every_code_has_its_number_and_text() -> None:
    library = ctypes.CDLL(str(BUILD / "libqtutils-nodebrowser.so"))
    library.qtutils_error_text.restype = ctypes.c_char_p
    header = (TOP / "kit" / "include" / "qtutils" / "errors.h").read_text(encoding="utf-8")
    wanted = [
        (name, number, library.qtutils_error_text(int(number)).decode())
        for name, number in CODE.findall(header)
    ]
    assert [(name, number, one_line(text)) for name, number, text in CODE_IN_PAGE.findall(TEXT)] == wanted


def test_lines_that_are_not_filled_fit_a_terminal() -> None:
    assert [line for line in TEXT.splitlines() if len(line) > WIDTH] == []


@pytest.mark.parametrize("compiler", ["gcc", "clang"])
def test_the_program_compiles_without_a_warning(compiler: str) -> None:
    if shutil.which(compiler) is None:
        pytest.skip(f"{compiler} is not installed")
    assert pagesamples.complaints(compiler, "c", program()) == ""


@pytest.fixture
def command(tmp_path: Path) -> list[str]:
    """The command that starts the program, in a folder with the signs."""
    (tmp_path / "Images").symlink_to(TOP / "Images")
    (tmp_path / "program.c").write_text(program())
    build = [
        "cc",
        "program.c",
        f"-I{TOP}/kit/include",
        f"-L{BUILD}",
        "-lqtutils-nodebrowser",
        "-o",
        "program",
    ]
    subprocess.run(build, cwd=tmp_path, check=True)
    return ["env", "-C", str(tmp_path), f"LD_LIBRARY_PATH={BUILD}", "./program"]


def test_the_program_shows_a_map(command: list[str], surroundings: dict[str, str]) -> None:
    with running(command, surroundings) as process:
        screen.wait_for("rows have the colours of their days", lambda: has_colors(OLDEST, NEWEST))
        printed, errors = process.communicate("\n", timeout=LIMIT)
    assert (process.returncode, printed) == (0, "5 documents\n"), errors


def test_the_program_says_what_is_missing(command: list[str], surroundings: dict[str, str]) -> None:
    del surroundings["MYSQL_USER"]
    with running(command, surroundings) as process:
        printed, errors = process.communicate(timeout=LIMIT)
    assert (process.returncode, printed) == (1, "")
    assert errors == "a variable for the database server is unset MYSQL_USER is unset\n"
