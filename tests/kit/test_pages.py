# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""Samples of pages beside the kit's own: the project's README, docs/security.md, host/README.md."""

import os
import re
import shutil
import subprocess
import sys
from pathlib import Path

import pagesamples
import pytest
from kitprocess import BUILD, LIMIT, TOP

# docs/security.md calls the documents' database as mapmaker does.
TEXTS = b"CREATE DATABASE texts; CREATE TABLE texts.document AS SELECT * FROM news.document;"
ACCOUNT = re.compile(r"CREATE USER '(\w+)'@'localhost' IDENTIFIED BY '([^']+)'")
HOST = """
from qtutils import NodeBrowser

with NodeBrowser("som", "texts") as browser:
    browser.set_som_table("news_train")
    browser.pass_hierarchy([[1, 2, 3], [], [], []])
    browser.select(1)
    print(browser.num_rows)
"""


def ask(server: dict[str, str], statements: bytes) -> "subprocess.CompletedProcess[bytes]":
    """Runs statements as the server's administrator."""
    command = ["mariadb", "--no-defaults", f"--user={server['MYSQL_USER']}"]
    return subprocess.run(
        command, input=statements, env={**os.environ, **server}, capture_output=True, check=False
    )


@pytest.fixture(scope="module")
def databases(map_server: dict[str, str]) -> dict[str, str]:
    """The server with the databases of the pages."""
    drafts = (TOP / "tests" / "data" / "drafts.sql").read_bytes()
    assert ask(map_server, drafts + TEXTS).returncode == 0
    return map_server


@pytest.fixture
def folder(tmp_path: Path) -> Path:
    """The folder host/ as its page sees it, with an installed program."""
    links = {
        "scripts": TOP / "host" / "scripts",
        "Images": TOP / "Images",
        "qtutils.so": BUILD / "qtutils.so",
    }
    for name, target in links.items():
        (tmp_path / name).symlink_to(target)
    return tmp_path


def run_host(
    script: str, folder: Path, surroundings: dict[str, str], *options: str
) -> "subprocess.CompletedProcess[str]":
    """Runs a script, or checks its answers."""
    (folder / "sample.qth").write_text(script)
    command = [str(BUILD / "qtutils-host"), *options, "sample.qth", "./qtutils.so"]
    return subprocess.run(
        command, env=surroundings, cwd=folder, capture_output=True, text=True, timeout=LIMIT, check=False
    )


@pytest.mark.parametrize("compiler", ["gcc", "clang"])
def test_the_projects_readme_calls_the_module(compiler: str) -> None:
    if shutil.which(compiler) is None:
        pytest.skip(f"{compiler} is not installed")
    ((_, sample),) = [one for one in pagesamples.read(TOP / "README.md") if one[0] == "c"]
    declarations, types, statements = sample.split("\n\n", 2)
    program = f"{declarations}\n{types}\nint main(void)\n{{\n{statements}return 0;\n}}\n"
    # ISO C has no cast from data to functions; POSIX does.
    command = [compiler, "-x", "c", "-std=c11", "-Wall", "-Wextra", "-Werror", "-fsyntax-only", "-"]
    result = subprocess.run(command, input=program, capture_output=True, text=True, check=False)
    assert (result.returncode, result.stderr) == (0, "")
    exported = subprocess.run(["nm", "-D", BUILD / "qtutils.so"], capture_output=True, text=True, check=True)
    names = re.findall(r'dlsym\(module, "(\w+)"\)', sample)
    assert [name for name in names if f" T {name}\n" not in exported.stdout] == [] != names


def test_the_statements_for_a_database_owner_do_as_they_say(
    databases: dict[str, str], surroundings: dict[str, str]
) -> None:
    # when: all statements of the page
    samples = [text for language, text in pagesamples.read(TOP / "docs" / "security.md") if language == "sql"]
    for sample in samples:
        result = ask(databases, sample.encode())
        assert result.returncode == 0, result.stderr
    # then: the window's user has rights enough
    (account,) = [match.groups() for sample in samples for match in ACCOUNT.finditer(sample)]
    surroundings["MYSQL_USER"], surroundings["MYSQL_PWD"] = account
    shown = subprocess.run(
        [sys.executable, "-c", HOST],
        env=surroundings,
        cwd=TOP,
        capture_output=True,
        text=True,
        timeout=LIMIT,
        check=False,
    )
    assert (shown.returncode, shown.stdout) == (0, "5\n"), shown.stderr
    # and no address goes in that is a command
    for address, code in {"https://example.org/%20a": 0, "https://example.org/$(a)": 1}.items():
        assert ask(databases, f"UPDATE texts.document SET URL = '{address}'".encode()).returncode == code


def test_the_commands_of_the_hosts_page_run(
    databases: dict[str, str], folder: Path, surroundings: dict[str, str]
) -> None:
    command = pagesamples.read(TOP / "host" / "README.md")[1][1]
    surroundings["PATH"] = f"{BUILD}:{surroundings['PATH']}"
    result = subprocess.run(
        ["sh", "-e", "-c", command],
        env=surroundings,
        cwd=folder,
        capture_output=True,
        text=True,
        timeout=LIMIT,
        check=False,
        stdin=subprocess.DEVNULL,
    )
    assert result.returncode == 0, result.stderr
    assert "piNumRows = 0\n" in result.stdout


def test_the_statements_of_the_hosts_page_run(
    databases: dict[str, str], folder: Path, surroundings: dict[str, str]
) -> None:
    statements = pagesamples.read(TOP / "host" / "README.md")[2][1]
    result = run_host(statements, folder, surroundings, "--script")
    assert (result.returncode, result.stdout) == (0, "piNumRows = 0\npiDate = \n")


def test_the_answers_of_the_hosts_page_are_right(
    databases: dict[str, str], folder: Path, surroundings: dict[str, str]
) -> None:
    answers = pagesamples.read(TOP / "host" / "README.md")[3][1]
    before = (
        'CNodeBrowser "som" "news"\nsetSOMTable news_train\n#=! CNodeBrowser: Changed Table to news_train\n'
    )
    after = "FREE_CNodeBrowser\n#=! Terminating QApplication\n"
    right = run_host(before + answers + after, folder, surroundings, "--check")
    assert (right.returncode, right.stderr) == (0, "")
    wrong = run_host(before + answers.replace("= 5", "= 6") + after, folder, surroundings, "--check")
    assert (wrong.returncode, wrong.stderr) == (
        1,
        'sample.qth:4: wanted "piNumRows = 6", got "piNumRows = 5"\n',
    )
