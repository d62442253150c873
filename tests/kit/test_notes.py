# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""The host in a few lines: its example, the page's way to a map of its own, and the reader of hierarchies."""

import os
import re
import subprocess
import sys
from pathlib import Path

import pagesamples
import pytest
from kitprocess import BUILD, LIMIT, TOP
from test_examples import MESSAGES, has_colors, running

sys.path.insert(0, str(TOP / "tools"))
os.environ["QTUTILS_NODEBROWSER"] = str(BUILD / "libqtutils-nodebrowser.so")
sys.path.insert(0, str(TOP / "kit" / "python"))

import screen  # noqa: E402
from qtutils import read_hierarchy  # noqa: E402

EXAMPLE = TOP / "kit" / "examples" / "python" / "notes.py"
NEWEST = bytes((74, 131, 180))  # end of the scale
# The map of the tests under the names that mapmaker gives.
VIEWS = """
CREATE DATABASE texts;
CREATE VIEW texts.document AS SELECT * FROM news.document;
CREATE VIEW som.changelogs_train AS SELECT * FROM som.news_train;
CREATE VIEW som.changelogs_som AS SELECT * FROM som.news_som;
"""
SCRIPT = "# a map\npassNodeHierarchy [1 2 3] 3 0 4\n" + "".join(
    f"passNodeHierarchy [] 0 {node} 4\n" for node in (1, 2, 3)
)


@pytest.fixture
def script(tmp_path: Path) -> Path:
    file = tmp_path / "hierarchy.qth"
    file.write_text(SCRIPT)
    return file


def test_the_example_has_fifteen_lines() -> None:
    assert len(EXAMPLE.read_text().splitlines()) <= 15


def test_the_example_shows_nodes_in_colours_of_their_age(surroundings: dict[str, str], script: Path) -> None:
    client = ["mariadb", "--no-defaults", f"--user={surroundings['MYSQL_USER']}"]
    subprocess.run(client, input=VIEWS, env=surroundings, text=True, check=True)
    with running([sys.executable, str(EXAMPLE), str(script)], surroundings) as example:
        assert example.stdin and example.stdout
        example.stdin.write("2\n1\n")
        example.stdin.flush()
        printed = [example.stdout.readline() for _ in range(2)]
        assert printed == [
            "2 release notes since 2006-05-10T12:00:00\n",
            "5 release notes since 2005-02-27T23:59:59\n",
        ]
        screen.wait_for("rows are coloured by age", lambda: has_colors(NEWEST))
        _, errors = example.communicate(timeout=LIMIT)
    assert (example.returncode, errors.splitlines()[1:]) == (0, MESSAGES[1:])


def test_the_page_goes_from_nothing_to_a_window(
    surroundings: dict[str, str], tmp_path: Path, monkeypatch: pytest.MonkeyPatch
) -> None:
    # given: the project as the page sees it, and a smaller map
    for name in ("kit", "Images", "mapmaker"):
        (tmp_path / name).symlink_to(TOP / name)
    (tmp_path / "build").symlink_to(BUILD)
    ((_, page),) = [sample for sample in pagesamples.read(TOP / "kit" / "README.md") if sample[0] == "bash"]
    commands = page.replace("mapmaker changelogs", "mapmaker sample --name changelogs")
    assert commands != page
    variables = {name: value for name, value in surroundings.items() if not name.startswith("MYSQL_")}
    for name in ("QTUTILS_MODULE", "QTUTILS_NODEBROWSER", "PYTHONPATH"):
        variables.pop(name, None)
    variables |= {"HOME": str(tmp_path), "PYTHONDONTWRITEBYTECODE": "1"}
    # when
    bash = ["env", "-C", str(tmp_path), "bash", "-e", "-c", f'trap "kill \\$server; wait" EXIT\n{commands}']
    with running(bash, variables) as shell:
        printed, errors = shell.communicate("1\n", timeout=LIMIT)
    # then
    assert shell.returncode == 0, errors
    assert re.fullmatch(r"200 release notes since 20\d\d-\d\d-\d\dT.*", printed.splitlines()[-1]), printed


def test_a_hierarchy_is_read(script: Path) -> None:
    assert read_hierarchy(script) == [[1, 2, 3], [], [], []]


@pytest.mark.parametrize(
    "text, fault",
    [
        ("passNodeHierarchy [1] 1 0\n", ":1: not the hierarchy of node 0"),
        ("# a\n\npassNodeHierarchy [] 0 1 1\n", ":3: not the hierarchy of node 0"),
        ("passNodeHierarchy [1 2] 1 0 1\n", ":1: not the hierarchy of node 0"),
        ("passNodeHierarchy [] 0 0 2\n", ": 1 nodes of 2"),
    ],
)
def test_what_is_no_hierarchy_is_named(text: str, fault: str, tmp_path: Path) -> None:
    file = tmp_path / "no.qth"
    file.write_text(text)
    with pytest.raises(ValueError) as raised:
        read_hierarchy(file)
    assert str(raised.value) == f"{file}{fault}"
