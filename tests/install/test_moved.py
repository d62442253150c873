# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""The installed programs work from wherever the tree has been moved, started in any folder."""

import subprocess
from pathlib import Path

import pytest
from installed import BUILD, LIBRARIES, output, run

CALLS = "CNodeBrowser som news; setSOMTable news_train; select 1; getNumRows int[1]"
PYTHON = """
import os, sys
from qtutils import NodeBrowser
os.chdir(sys.argv[1])
with NodeBrowser("som", "news") as browser:
    browser.set_som_table("news_train")
    browser.select(1)
    print(browser.num_rows)
mapped = {line.split(maxsplit=5)[5].strip() for line in open("/proc/self/maps") if "qtutils" in line}
print(*sorted(mapped), sep="\\n")
"""


@pytest.fixture
def surroundings(map_server: dict[str, str], display: dict[str, str]) -> dict[str, str]:
    """Environment variables that lead to a server with a map and to a display."""
    return {**map_server, **display, "XAUTHORITY": "", "LANG": "C.UTF-8"}


def test_the_host_finds_its_module(prefix: Path, tmp_path: Path) -> None:
    listed = output(prefix / "bin" / "qtutils-host", "--list", folder=tmp_path)
    assert listed.startswith(
        f"module {prefix}/{LIBRARIES}/qtutils/qtutils.so, namespace qtutils\nclass CNodeBrowser\n"
    )


def working_folder(host: Path, start: Path) -> Path:
    """Where a host runs that was started in a folder."""
    command = [str(host), "--command", ".echo ready", "--interactive"]
    with subprocess.Popen(command, cwd=start, stdin=subprocess.PIPE, stdout=subprocess.PIPE) as process:
        assert process.stdin and process.stdout and process.stdout.readline() == b"ready\n"
        folder = Path(f"/proc/{process.pid}/cwd").readlink()
        process.stdin.close()
    return folder


def test_the_host_runs_where_the_signs_are(prefix: Path, tmp_path: Path) -> None:
    folder = working_folder(prefix / "bin" / "qtutils-host", tmp_path)
    assert folder == prefix / "share" / "qtutils"
    assert len(list(folder.glob("Images/*.xpm"))) == 21


def test_the_host_that_is_not_installed_runs_where_the_signs_are(tmp_path: Path) -> None:
    folder = working_folder(BUILD / "qtutils-host", tmp_path)
    assert len(list(folder.glob("Images/*.xpm"))) == 21


def test_the_window_answers(prefix: Path, tmp_path: Path, surroundings: dict[str, str]) -> None:
    result = run(prefix / "bin" / "qtutils-host", "--command", CALLS, folder=tmp_path, **surroundings)
    assert (result.returncode, result.stdout) == (0, "piNumRows = 5\n"), result.stderr


def test_a_link_to_the_host_works(prefix: Path, tmp_path: Path) -> None:
    (tmp_path / "host").symlink_to(prefix / "bin" / "qtutils-host")
    assert "class CNodeBrowser" in output("./host", "--list", folder=tmp_path)


def test_the_python_package_finds_library_and_module(
    prefix: Path, tmp_path: Path, surroundings: dict[str, str]
) -> None:
    packages = {"PYTHONPATH": str(prefix / "lib" / "python3" / "dist-packages")}
    program = ["/usr/bin/python3", "-c", PYTHON, str(prefix / "share" / "qtutils")]
    lines = output(*program, folder=tmp_path, environment={**surroundings, **packages}).splitlines()
    (library,) = (prefix / LIBRARIES).glob("libqtutils-nodebrowser.so.*.*")
    assert lines == ["5", str(library), str(prefix / LIBRARIES / "qtutils" / "qtutils.so")]


def test_the_maker_of_maps_makes_one(prefix: Path, tmp_path: Path, server: dict[str, str]) -> None:
    program = prefix / "bin" / "mapmaker"
    options = ["--documents", "60", "--script", "tree.qth"]
    databases = ["--som-database", "moved_som", "--source-database", "moved_texts"]
    assert "60 documents" in output(
        program, "sample", *options, *databases, folder=tmp_path, environment=server
    )
    assert "passNodeHierarchy" in (tmp_path / "tree.qth").read_text()
    looked = run(program, "doctor", "sample_train", *databases, folder=tmp_path, **server)
    assert looked.stdout.splitlines()[-1].startswith("errors: 0"), looked.stdout + looked.stderr


def test_the_maker_of_maps_is_not_the_one_of_the_folder(prefix: Path, tmp_path: Path) -> None:
    (tmp_path / "mapmaker.py").write_text("raise SystemExit('taken from the working folder')\n")
    assert output(prefix / "bin" / "mapmaker", "--version", folder=tmp_path).startswith("mapmaker ")
