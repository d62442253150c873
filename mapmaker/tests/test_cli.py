# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""The whole program: the map is the same again, and errors are one line."""

import hashlib
import json
import os
import subprocess
import sys
from pathlib import Path

import numpy as np
import pytest

from mapmaker import cli
from mapmaker.sources import sample
from mapmaker.tests.privateserver import connect

TOP = Path(__file__).parents[2]


def run(server: dict[str, str], *arguments: str, threads: int = 1) -> subprocess.CompletedProcess[str]:
    """Runs the command with so many threads of the numeric libraries."""
    environment = {**os.environ, **server}
    for variable in ("OMP_NUM_THREADS", "OPENBLAS_NUM_THREADS"):
        environment[variable] = str(threads)
    command = [sys.executable, "-m", "mapmaker", *arguments]
    return subprocess.run(command, cwd=TOP, env=environment, capture_output=True, text=True)


def content_hash(server: dict[str, str], name: str) -> str:
    """Hash of all tables of a map."""
    link = connect(server)
    rows: list[object] = []
    with link.cursor() as cursor:
        for table in ("texts.document", f"som.{name}_train", f"som.{name}_som"):
            cursor.execute(f"SELECT * FROM {table}")
            rows += cursor.fetchall()
    link.close()
    return hashlib.sha256(repr(rows).encode()).hexdigest()


@pytest.fixture(scope="module")
def first_map(server: dict[str, str], tmp_path_factory: pytest.TempPathFactory) -> tuple[str, Path, str]:
    """Hash, folder of the files, and output of a map of the sample."""
    folder = tmp_path_factory.mktemp("first")
    done = run(server, "sample", "--script", f"{folder}/script", "--report", f"{folder}/report")
    assert (done.returncode, done.stderr) == (0, "")
    return content_hash(server, "sample"), folder, done.stdout


@pytest.mark.parametrize("threads", [1, 2])
def test_the_same_seed_makes_the_same_map(
    server: dict[str, str], first_map: tuple[str, Path, str], tmp_path: Path, threads: int
) -> None:
    run(server, "sample", "--script", f"{tmp_path}/script", threads=threads)
    assert content_hash(server, "sample") == first_map[0]
    assert (tmp_path / "script").read_text() == (first_map[1] / "script").read_text()


def test_another_seed_makes_another_map(server: dict[str, str], first_map: tuple[str, Path, str]) -> None:
    run(server, "sample", "--name", "other", "--source-database", "texts", "--seed", "2")
    assert content_hash(server, "other") != first_map[0]


def test_script_and_tables_name_the_same_nodes(
    server: dict[str, str], first_map: tuple[str, Path, str]
) -> None:
    lines = (first_map[1] / "script").read_text().splitlines()
    nodes = [line for line in lines if not line.startswith("#")]
    assert lines[0].startswith("# ")
    link = connect(server)
    with link.cursor() as cursor:
        cursor.execute("SELECT COUNT(*), MIN(_assigned_topic), MAX(_assigned_topic) FROM som.sample_som")
        assert cursor.fetchone() == (len(nodes), 0, 20)
        cursor.execute("SELECT COUNT(DISTINCT node) FROM som.sample_train")
        assert cursor.fetchone() == (len(nodes),)
        cursor.execute("SELECT COUNT(*) FROM som.sample_train WHERE node = 0")
        assert cursor.fetchone() == (200,)
    link.close()
    assert [line.split("] ")[1].split()[1] for line in nodes] == [str(number) for number in range(len(nodes))]


def test_the_report_tells_quality_and_times(first_map: tuple[str, Path, str]) -> None:
    report = json.loads((first_map[1] / "report").read_text())
    assert report["quality"]["topographic error"] < 0.3
    assert report["quality"]["quantization error"] < 0.7
    assert "storing" in report["seconds"]
    assert "vectors: " in first_map[2]
    assert "keyword coherence: " in first_map[2]


def test_nothing_is_left_beside_the_files(first_map: tuple[str, Path, str]) -> None:
    assert sorted(path.name for path in first_map[1].iterdir()) == ["report", "script"]


def test_too_few_release_notes_fall_back_to_the_sample(server: dict[str, str], tmp_path: Path) -> None:
    few = ["changelogs", "--root", str(tmp_path), "--name", "few", "--documents", "300"]
    alone = run(server, *few)
    assert (alone.returncode, alone.stdout) == (2, "")
    assert alone.stderr == f"mapmaker: only 0 release notes in {tmp_path}, 500 are needed\n"
    both = run(server, *few, "--or-sample")
    assert both.returncode == 0
    assert "making the sample of invented texts instead\n" in both.stdout
    assert "\n300 documents\n" in both.stdout


def test_a_failed_report_leaves_the_old_map_and_no_files(server: dict[str, str], tmp_path: Path) -> None:
    common = ["sample", "--documents", "300", "--name", "kept", "--script", f"{tmp_path}/script"]
    run(server, *common)
    before = (content_hash(server, "kept"), (tmp_path / "script").read_text())
    assert run(server, *common, "--seed", "2", "--report", "/absent/report").returncode == 2
    assert (content_hash(server, "kept"), (tmp_path / "script").read_text()) == before
    assert [path.name for path in tmp_path.iterdir()] == ["script"]


@pytest.mark.parametrize(
    "arguments, message",
    [
        (["sample", "--name", "a b"], "bad table name 'a b'"),
        (["sample", "--documents", "3"], "--documents must be at least 20"),
        (["sample", "--width", "4"], "--width and --height belong together"),
        (["changelogs", "--root", "/absent"], "cannot read the folder /absent: No such file"),
        (["sample", "--documents", "300", "--script", "/absent/script"], "/absent/script"),
    ],
)
def test_errors_are_one_line(server: dict[str, str], arguments: list[str], message: str) -> None:
    done = run(server, *arguments)
    assert done.returncode == 2
    assert message in done.stderr
    assert done.stderr.count("\n") == 1


def test_no_variables_are_one_line(
    monkeypatch: pytest.MonkeyPatch, capsys: pytest.CaptureFixture[str]
) -> None:
    monkeypatch.delenv("MYSQL_HOST", raising=False)
    assert cli.main(["sample"]) == 2
    assert capsys.readouterr().err.startswith("mapmaker: missing in the environment: MYSQL_HOST")


def test_the_sample_is_seeded() -> None:
    made = [list(sample.make(50, np.random.default_rng(seed), "/usr/share/doc")) for seed in (1, 1, 2)]
    assert made[0] == made[1]
    assert made[0] != made[2]


def test_the_sample_is_readable() -> None:
    made = list(sample.make(2000, np.random.default_rng(1), "/usr/share/doc"))
    assert len(made) == 2000
    assert made == sorted(made, key=lambda document: document.date)
    assert made[-1].date.year - made[0].date.year > 15
    assert any("ö" in document.title for document in made)
    assert not any("{" in document.title + document.text for document in made)
