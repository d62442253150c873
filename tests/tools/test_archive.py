# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""The source archive: of the last commit, with all of its files and no others, and the same bytes each time."""

import os
import shutil
import subprocess
import tarfile
from pathlib import Path

import pytest

TOP = Path(__file__).resolve().parents[2]
FILES = {"CMakeLists.txt", "packaging/make_archive.sh", "tools/common.sh"}
AUTHOR = {f"GIT_{who}_{what}": "nobody" for who in ("AUTHOR", "COMMITTER") for what in ("NAME", "EMAIL")}
DATES = {"GIT_AUTHOR_DATE": "2001-02-03T04:05:06Z", "GIT_COMMITTER_DATE": "2001-02-03T04:05:06Z"}


def run(*command: str, folder: Path, **environment: str) -> "subprocess.CompletedProcess[str]":
    variables = {**os.environ, **AUTHOR, **DATES, "GIT_CONFIG_GLOBAL": os.devnull, **environment}
    return subprocess.run(command, cwd=folder, env=variables, capture_output=True, text=True, check=False)


def repository(folder: Path) -> Path:
    """A small repository of the files that the archive is made with, with one commit of a fixed time."""
    for name in FILES:
        (folder / name).parent.mkdir(parents=True, exist_ok=True)
        shutil.copy(TOP / name, folder / name)
    for command in ("git init -q", "git add .", "git commit -qm sources"):
        assert run(*command.split(), folder=folder).returncode == 0
    (folder / "left over").touch()
    return folder


def archive(folder: Path, **environment: str) -> Path:
    result = run("packaging/make_archive.sh", "--output", "made", folder=folder, **environment)
    assert result.returncode == 0, result.stderr
    (line,) = result.stdout.splitlines()
    return Path(line)


def test_the_archive_holds_the_commit(tmp_path: Path) -> None:
    made = archive(repository(tmp_path))
    name = made.name.removesuffix(".tar.gz")
    version = name.removeprefix("qtutils-")
    assert f"project(qtutils VERSION {version} " in (TOP / "CMakeLists.txt").read_text()
    with tarfile.open(made) as content:
        members = content.getmembers()
        assert {one.name for one in members if one.isfile()} == {f"{name}/{file}" for file in FILES}
        assert {one.mtime for one in members} == {981173106}
        assert content.getmember(f"{name}/packaging/make_archive.sh").mode & 0o777 == 0o755
    assert [path.name for path in made.parent.iterdir()] == [made.name]


def test_the_archive_is_the_same_whoever_makes_it(tmp_path: Path) -> None:
    first = archive(repository(tmp_path / "first"), TZ="UTC")
    old = os.umask(0o077)
    try:
        own = {"GIT_CONFIG_COUNT": "1", "GIT_CONFIG_KEY_0": "tar.umask", "GIT_CONFIG_VALUE_0": "user"}
        second = archive(repository(tmp_path / "second"), TZ="Asia/Tokyo", LC_ALL="C", **own)
    finally:
        os.umask(old)
    assert first.read_bytes() == second.read_bytes()


def test_without_a_repository_there_is_none(tmp_path: Path) -> None:
    folder = repository(tmp_path)
    shutil.rmtree(folder / ".git")
    result = run("packaging/make_archive.sh", folder=folder)
    assert (result.returncode, result.stdout) == (1, "")
    assert result.stderr == f"make_archive.sh: there is no repository in {folder}\n"


@pytest.mark.parametrize("arguments", [["--bad"], ["--output"]])
def test_wrong_options_are_refused(tmp_path: Path, arguments: list[str]) -> None:
    result = run(str(TOP / "packaging" / "make_archive.sh"), *arguments, folder=tmp_path)
    assert (result.returncode, result.stdout) == (2, "")
    assert result.stderr.endswith("; see ./packaging/make_archive.sh --help\n")
