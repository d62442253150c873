# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""The program of docs/host-guide.md, which calls the module directly, and the page's table of methods."""

import re
import shutil
import subprocess
from pathlib import Path

import pagesamples
import pytest
from kitprocess import BUILD, LIMIT, TOP
from test_examples import has_colors, running

import screen

PAGE = TOP / "docs" / "host-guide.md"
SAMPLES = pagesamples.read(PAGE)
FIRST_DAY, LATER = bytes((55, 255, 55)), bytes((165, 255, 165))  # hue 120, saturations 200 and 90
METHOD = re.compile(r"^\| `(\w+)` \|.*\| (?:yes|no|until .*) \|", re.MULTILINE)
PROTOTYPE = re.compile(r'^    "(?:void )?(\w+)\(.*\)",$', re.MULTILINE)


@pytest.fixture
def program(tmp_path: Path) -> list[str]:
    """The command that starts the program, built as the page says, in the top folder as the page sees it."""
    (tmp_path / "build").symlink_to(BUILD)
    (tmp_path / "Images").symlink_to(TOP / "Images")
    return build(SAMPLES[0][1], tmp_path)


def build(source: str, folder: Path, *options: str) -> list[str]:
    """Builds a program as the page says; returns the command that starts it. Options are the compiler's."""
    (folder / "host.c").write_text(source)
    command, start = SAMPLES[1][1].splitlines()
    subprocess.run([*command.split(), *options], cwd=folder, check=True)
    return ["env", "-C", str(folder), start]


def with_other_methods() -> str:
    """The program, with the page's function for the other methods in it and called."""
    source = SAMPLES[0][1].replace("int main(void)", SAMPLES[2][1] + "\nint main(void)")
    assert source.count("        getchar();") == 1
    return source.replace("        getchar();", "        mark_and_hide();\n        getchar();")


def test_the_page_has_a_program_and_its_commands() -> None:
    assert [language for language, _ in SAMPLES] == ["c", "sh", "c", "", "", "", ""]


@pytest.mark.parametrize("compiler", ["gcc", "clang"])
def test_the_program_compiles_without_a_warning(compiler: str) -> None:
    if shutil.which(compiler) is None:
        pytest.skip(f"{compiler} is not installed")
    assert pagesamples.complaints(compiler, *SAMPLES[0]) == ""
    assert pagesamples.complaints(compiler, "c", with_other_methods()) == ""


def test_the_program_runs_as_it_is_written(program: list[str], surroundings: dict[str, str]) -> None:
    with running(program, surroundings) as process:
        assert process.stdout
        assert process.stdout.readline() == "5 documents from 2005-02-27T23:59:59\n"
        screen.wait_for("rows have the colours of their days", lambda: has_colors(FIRST_DAY, LATER))
        printed, errors = process.communicate("\n", timeout=LIMIT)
    assert (process.returncode, printed) == (0, "")
    assert errors.splitlines()[:2] == [
        "CNodeBrowser: Changed Table to news_train",
        "Database is open. Commencing.",
    ]


def test_the_other_methods_do_as_the_page_says(
    program: list[str], surroundings: dict[str, str], tmp_path: Path
) -> None:
    with running(build(with_other_methods(), tmp_path), surroundings) as process:
        printed, errors = process.communicate("\n", timeout=LIMIT)
    assert (process.returncode, printed.splitlines()[1:]) == (0, ["marked 1380 minutes before"]), errors


def test_the_program_tells_what_it_does(program: list[str], surroundings: dict[str, str]) -> None:
    variable, rules = re.findall(r"^(\w+)='(.*)' \./host$", SAMPLES[5][1], re.MULTILINE)[0]
    with running(program, surroundings | {variable: rules}) as process:
        assert process.stdout and process.stdout.readline()
        _, errors = process.communicate("\n", timeout=LIMIT)
    told = [line.partition(": ")[2] for line in errors.splitlines() if line.startswith("qtutils.host: ")]
    assert {"select 1", "getNumRows: 5", "show"} < set(told)
    assert re.search("^qtutils.sql: SELECT .*: 5 rows in [0-9]+ ms$", errors, re.MULTILINE)


def test_the_program_runs_under_the_address_sanitizer(
    program: list[str], surroundings: dict[str, str], tmp_path: Path
) -> None:
    (tmp_path / "tests").symlink_to(TOP / "tests")
    build(SAMPLES[0][1], tmp_path, "-fsanitize=address")
    variable, options = re.findall(r"^(\w+)=(\S+) \./host$", SAMPLES[6][1], re.MULTILINE)[0]
    with running(program, surroundings | {variable: f"{options}:print_suppressions=0"}) as process:
        assert process.stdout and process.stdout.readline()
        _, errors = process.communicate("\n", timeout=LIMIT)
    assert (process.returncode, "Sanitizer" in errors) == (0, False), errors


def test_the_program_says_that_it_has_no_window(program: list[str], surroundings: dict[str, str]) -> None:
    del surroundings["MYSQL_PWD"]
    with running(program, surroundings) as process:
        printed, errors = process.communicate(timeout=LIMIT)
    assert (process.returncode, printed) == (1, "")
    assert errors == "no window: set MYSQL_HOST, MYSQL_USER, MYSQL_PWD and DISPLAY\n"


def test_a_missing_module_is_named(program: list[str], surroundings: dict[str, str], tmp_path: Path) -> None:
    (tmp_path / "build").unlink()
    with running(program, surroundings) as process:
        printed, errors = process.communicate(timeout=LIMIT)
    assert (process.returncode, printed) == (1, "")
    assert errors.startswith("build/qtutils.so: ") and errors.count("\n") == 1


def methods() -> list[str]:
    """The names in the module's descriptor."""
    names = PROTOTYPE.findall((TOP / "binding" / "mirta_qtutils.cpp").read_text(encoding="utf-8"))
    assert len(names) == 14
    return sorted(names)


def test_the_table_has_every_method() -> None:
    assert sorted(METHOD.findall(PAGE.read_text(encoding="utf-8"))) == methods()


def test_every_method_is_called_in_a_sample() -> None:
    called = re.findall(r'"nodeBrowser_(CNodeBrowser)"|call\("(\w+)"', with_other_methods())
    assert sorted({constructor or method for constructor, method in called}) == methods()
