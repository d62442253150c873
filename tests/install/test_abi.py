# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""What the libraries export is what programs built before expect; each kind of difference is noticed.

Differences are made in a copy of the descriptions: what they have and the build doesn't is missing in the build.
"""

import re
import shutil
import subprocess
from pathlib import Path

import pytest
from installed import BUILD, TOP, run

MODULE, KIT = "qtutils.so", "libqtutils-nodebrowser.so"
SYMBOL = re.compile(r"    <elf-symbol name='(\w+)' type='func-type'.*\n")
FUNCTION = re.compile(r"    <function-decl name='(\w+)' .*\n(?:      .*\n)*    </function-decl>\n")


@pytest.fixture
def baseline(tmp_path: Path) -> Path:
    return Path(shutil.copytree(TOP / "packaging" / "abi", tmp_path / "abi"))


def compare(baseline: Path) -> "subprocess.CompletedProcess[str]":
    return run(TOP / "packaging" / "abi.sh", "--baseline", baseline, BUILD)


def edit(baseline: Path, library: str, old: str, new: str) -> None:
    """Replaces a text that stands there once."""
    file = baseline / f"{library}.abi"
    text = file.read_text()
    assert text.count(old) == 1
    file.write_text(text.replace(old, new))


def part(baseline: Path, library: str, pattern: "re.Pattern[str]", name: str) -> str:
    """The symbol or the function of that name."""
    text = (baseline / f"{library}.abi").read_text()
    (found,) = (match[0] for match in pattern.finditer(text) if match[1] == name)
    return found


def test_programs_built_before_run_with_this_build(baseline: Path) -> None:
    result = compare(baseline)
    assert (result.returncode, result.stderr) == (0, ""), result.stdout


@pytest.mark.parametrize("library, name", [(MODULE, "nodeBrowser_show"), (KIT, "qtutils_show")])
def test_a_function_that_is_gone_is_noticed(baseline: Path, library: str, name: str) -> None:
    for pattern in (SYMBOL, FUNCTION):
        text = part(baseline, library, pattern, name)
        edit(baseline, library, text, text + text.replace(name, f"{name}_gone"))
    result = compare(baseline)
    assert result.returncode == 1
    assert f"{name}_gone" in result.stdout
    assert result.stderr == f"abi.sh: {library} differs from the last release\n"


@pytest.mark.parametrize(
    "library, name, differs", [(MODULE, "nodeBrowser_show", True), (KIT, "qtutils_show", False)]
)
def test_the_library_may_have_more_functions_and_the_module_not(
    baseline: Path, library: str, name: str, differs: bool
) -> None:
    for pattern in (SYMBOL, FUNCTION):
        edit(baseline, library, part(baseline, library, pattern, name), "")
    result = compare(baseline)
    assert (result.returncode == 1, name in result.stdout) == (differs, differs)


@pytest.mark.parametrize("library, name", [(MODULE, "nodeBrowser_select"), (KIT, "qtutils_mark_row")])
def test_another_argument_is_noticed(baseline: Path, library: str, name: str) -> None:
    text = part(baseline, library, FUNCTION, name)
    *_, last = re.findall(r"      <parameter type-id='\w+'/>\n", text)
    edit(baseline, library, text, text.replace(last, last + last, 1))
    result = compare(baseline)
    assert result.returncode == 1 and name in result.stdout


def test_another_size_of_the_descriptor_is_noticed(baseline: Path) -> None:
    edit(baseline, MODULE, "name='CNodeBrowser_def' size='128'", "name='CNodeBrowser_def' size='136'")
    result = compare(baseline)
    assert result.returncode == 1 and "CNodeBrowser_def" in result.stdout


def test_another_name_of_the_library_is_noticed(baseline: Path) -> None:
    edit(baseline, KIT, "soname='libqtutils-nodebrowser.so.0'", "soname='libqtutils-nodebrowser.so.1'")
    result = compare(baseline)
    assert result.returncode == 1 and "SONAME" in result.stdout


def test_a_written_description_is_the_builds(baseline: Path) -> None:
    (baseline / f"{KIT}.abi").write_text("")
    assert run(TOP / "packaging" / "abi.sh", "--write", "--baseline", baseline, BUILD).returncode == 0
    assert compare(baseline).returncode == 0
    assert re.findall(" path='[^']*/", (baseline / f"{KIT}.abi").read_text()) == []


@pytest.mark.parametrize(
    "arguments, error",
    [
        ([], "abi.sh: which build?; see ./packaging/abi.sh --help"),
        (["--none"], "abi.sh: unknown option --none; see ./packaging/abi.sh --help"),
        (["--baseline"], "abi.sh: --baseline needs a folder; see ./packaging/abi.sh --help"),
    ],
)
def test_wrong_options_are_refused(arguments: list[str], error: str) -> None:
    result = run(TOP / "packaging" / "abi.sh", *arguments)
    assert (result.returncode, result.stdout, result.stderr) == (2, "", error + "\n")


def test_a_folder_without_libraries_is_told(tmp_path: Path) -> None:
    result = run(TOP / "packaging" / "abi.sh", tmp_path)
    assert result.returncode == 1
    assert result.stderr == f"abi.sh: there is no {tmp_path}/{MODULE}\nabi.sh: there is no {tmp_path}/{KIT}\n"
