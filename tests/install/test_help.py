# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""Help, manual page and completion of each command name the same options; completion of words and files."""

import re
from pathlib import Path

import pytest
from installed import PROGRAMS, VERSION, output, run

OPTION = re.compile(r"(?<![\w-])--[a-z][a-z-]*")
COMPLETE = """
source "$1"
shift
COMP_WORDS=("$@") COMP_CWORD=$(($# - 1))
rule=$(complete -p "${COMP_WORDS[0]}")
function=${rule#* -F }
"${function%% *}"
printf '%s\\n' "${COMPREPLY[@]}"
"""


def completions(prefix: Path, *words: str, folder: Path | None = None) -> set[str]:
    """What Tab offers after these words of a command line, of which the last is complete in part."""
    rules = prefix / "share" / "bash-completion" / "completions" / words[0]
    return set(output("bash", "-c", COMPLETE, "bash", rules, *words, folder=folder or prefix).split("\n")) - {
        ""
    }


def options_in_help(prefix: Path, name: str) -> set[str]:
    """Those of the command, and of its own commands."""
    program = prefix / "bin" / name
    text = output(program, "--help")
    for command in re.findall(r"\{([a-z,]+)\}", text)[:1]:
        text += "".join(output(program, word, "--help") for word in command.split(","))
    return set(OPTION.findall(text))


def options_in_completion(prefix: Path, name: str) -> set[str]:
    offered = completions(prefix, name, "-")
    for command in completions(prefix, name, "") if name == "mapmaker" else []:
        offered |= completions(prefix, name, command, "-")
    return {word for word in offered if word.startswith("-")}


@pytest.mark.parametrize("name", PROGRAMS)
def test_page_and_completion_name_the_options_of_the_help(prefix: Path, name: str) -> None:
    options = options_in_help(prefix, name)
    page = (prefix / "share" / "man" / "man1" / f"{name}.1").read_text().replace("\\-", "-")
    sections = re.sub(r"(?s)^\.SH EXAMPLES.*", "", page[page.index(".SH OPTIONS") :])
    assert options >= {"--help", "--version"}
    assert set(OPTION.findall(sections)) == options
    assert options_in_completion(prefix, name) == options


@pytest.mark.parametrize("name", PROGRAMS)
def test_programs_tell_the_projects_version(prefix: Path, name: str) -> None:
    assert output(prefix / "bin" / name, "--version") == f"{name} {VERSION}\n"


def test_only_options_of_the_command_are_offered(prefix: Path) -> None:
    assert completions(prefix, "mapmaker", "s") == {"sample"}
    assert "--json" in completions(prefix, "mapmaker", "doctor", "--")
    assert "--json" not in completions(prefix, "mapmaker", "sample", "--")
    assert completions(prefix, "mapmaker", "sample", "--seed", "") == set()


def test_files_of_the_right_kind_are_offered(prefix: Path, tmp_path: Path) -> None:
    for name in ("a tour.qth", "a module.so", "a text.txt"):
        (tmp_path / name).touch()
    (tmp_path / "a folder").mkdir()

    def offered(*words: str) -> set[str]:
        return completions(prefix, "qtutils-host", *words, folder=tmp_path)

    assert offered("a") == {"a module.so", "a folder"}
    assert offered("--script", "a") == {"a tour.qth", "a folder"}
    assert offered("--directory", "a") == {"a folder"}
    assert offered("--command", "a") == set()
    assert "HOME" in offered("--need", "HO")


@pytest.mark.parametrize(
    "arguments, error",
    [
        (["--none"], "qtutils-demo: unknown option --none; see qtutils-demo --help"),
        (["--fresh", "--fresh"], "qtutils-demo: one option at most; see qtutils-demo --help"),
    ],
)
def test_the_demo_refuses_other_options(prefix: Path, arguments: list[str], error: str) -> None:
    result = run(prefix / "bin" / "qtutils-demo", *arguments)
    assert (result.returncode, result.stdout, result.stderr) == (2, "", error + "\n")


def test_the_demo_needs_a_display(prefix: Path) -> None:
    result = run(prefix / "bin" / "qtutils-demo", DISPLAY="")
    assert (result.returncode, result.stdout, result.stderr) == (1, "", "qtutils-demo: there is no display\n")
