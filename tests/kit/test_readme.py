# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""Every code sample of kit/README.md is compiled or run."""

import shutil
import subprocess
import sys
from pathlib import Path

import pagesamples
import pytest
from kitprocess import BUILD, LIMIT, TOP

SAMPLES = pagesamples.read(TOP / "kit" / "README.md")
PRINTED = "5 documents from 2005-02-27T23:59:59\n"
NO_MODULE = "the module can't be loaded: no/such/module.so: cannot open shared object file: No such file or directory\n"


def samples(language: str) -> list[str]:
    return [text for name, text in SAMPLES if name == language]


def run(command: list[str], environment: dict[str, str], folder: Path) -> "subprocess.CompletedProcess[str]":
    return subprocess.run(
        command,
        env=environment,
        cwd=folder,
        capture_output=True,
        text=True,
        input="\n",
        timeout=LIMIT,
        check=False,
    )


@pytest.fixture
def folder(tmp_path: Path) -> Path:
    """The project's top folder as the samples see it, with the samples of the start."""
    for name, target in {"kit": TOP / "kit", "Images": TOP / "Images", "build": BUILD}.items():
        (tmp_path / name).symlink_to(target)
    for language, name in {"c": "start.c", "cpp": "start.cpp", "python": "start.py"}.items():
        (tmp_path / name).write_text(samples(language)[0])
    return tmp_path


def test_every_sample_is_of_a_known_language() -> None:
    assert [name for name, _ in SAMPLES] == [
        "cmake",
        "c",
        "cpp",
        "python",
        "sh",
        "bash",
        "c",
        "cpp",
        "python",
        "c",
        "cpp",
        "python",
        "cpp",
        "python",
    ]


@pytest.mark.parametrize("compiler", ["gcc", "clang"])
@pytest.mark.parametrize("language", pagesamples.LANGUAGES)
def test_samples_compile_without_a_warning(compiler: str, language: str) -> None:
    if shutil.which(compiler) is None:
        pytest.skip(f"{compiler} is not installed")
    for sample in samples(language):
        assert pagesamples.complaints(compiler, language, sample) == ""


def test_the_start_runs_as_it_is_written(folder: Path, surroundings: dict[str, str]) -> None:
    del surroundings["QTUTILS_MODULE"], surroundings["QTUTILS_NODEBROWSER"], surroundings["PYTHONPATH"]
    (script,) = samples("sh")
    result = run(["sh", "-e", "-c", script], surroundings, folder)
    assert result.returncode == 0, result.stderr
    assert result.stdout == PRINTED * 2
    assert result.stderr.count("Database is open. Commencing.") == 3


def test_samples_of_errors_say_what_is_wrong(folder: Path, surroundings: dict[str, str]) -> None:
    (folder / "errors.cpp").write_text(samples("cpp")[-1])
    command = [
        "c++",
        "-std=c++20",
        "errors.cpp",
        "-Ikit/include",
        "-Lbuild",
        "-lqtutils-nodebrowser",
        "-o",
        "errors",
    ]
    assert run(command, surroundings, folder).returncode == 0
    surroundings["LD_LIBRARY_PATH"] = str(BUILD)
    assert run(["./errors"], surroundings, folder).stdout == f"3: {NO_MODULE}"
    assert (
        run([sys.executable, "-c", samples("python")[-1]], surroundings, folder).stdout == f"True {NO_MODULE}"
    )


@pytest.mark.parametrize("place", [1, 2])
def test_the_samples_of_colors_run(place: int, folder: Path, surroundings: dict[str, str]) -> None:
    result = run([sys.executable, "-c", samples("python")[place]], surroundings, folder)
    assert result.returncode == 0, result.stderr
