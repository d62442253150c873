# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""Options of the commands, and the lock of the demo's cache. Nothing is built here."""

import fcntl
import os
import subprocess
from pathlib import Path

import pytest

TOP = Path(__file__).resolve().parents[2]


def run(command: str, *arguments: str, **environment: str) -> "subprocess.CompletedProcess[str]":
    program = str(TOP / command)
    variables = {**os.environ, **environment}
    return subprocess.run([program, *arguments], env=variables, capture_output=True, text=True, check=False)


@pytest.mark.parametrize(
    "command, options",
    [
        ("check", ["--no-install", "--preset"]),
        ("demo", ["--no-install", "--fresh", "--output"]),
        ("tools/make_pictures.sh", ["--no-install", "--output"]),
        ("packaging/make_packages.sh", ["--no-install", "--output"]),
        ("packaging/try_packages.sh", ["--no-install", "--packages"]),
    ],
)
def test_help_names_every_option(command: str, options: list[str]) -> None:
    result = run(command, "--help")
    assert result.returncode == 0 and result.stdout.startswith(f"usage: ./{command} ")
    assert all(option in result.stdout for option in options)


@pytest.mark.parametrize(
    "arguments, message",
    [
        ("check --bad", "check: unknown option --bad; see ./check --help"),
        ("check --preset", "check: --preset needs a name; see ./check --help"),
        ("check --preset fast", "check: unknown preset fast; see ./check --help"),
        ("demo --bad", "demo: unknown option --bad; see ./demo --help"),
        ("demo --output", "demo: --output needs a folder; see ./demo --help"),
        (
            "tools/make_pictures.sh --bad",
            "make_pictures.sh: unknown option --bad; see ./tools/make_pictures.sh --help",
        ),
        (
            "tools/make_pictures.sh --output",
            "make_pictures.sh: --output needs a folder; see ./tools/make_pictures.sh --help",
        ),
        (
            "packaging/make_packages.sh --bad",
            "make_packages.sh: unknown option --bad; see ./packaging/make_packages.sh --help",
        ),
        (
            "packaging/try_packages.sh --bad",
            "try_packages.sh: unknown option --bad; see ./packaging/try_packages.sh --help",
        ),
        (
            "packaging/try_packages.sh --packages",
            "try_packages.sh: --packages needs a folder; see ./packaging/try_packages.sh --help",
        ),
    ],
)
def test_wrong_options_get_one_line(arguments: str, message: str) -> None:
    result = run(*arguments.split())
    assert (result.returncode, result.stdout, result.stderr) == (2, "", message + "\n")


def test_check_offers_the_presets_of_the_build() -> None:
    names = (TOP / "CMakePresets.json").read_text()
    offered = run("check", "--help").stdout.split("one of ")[1].split(" (default")[0].split()
    assert all(f'"configurePreset": "{name}"' in names for name in offered)


@pytest.mark.parametrize(
    "command",
    [
        "check",
        "demo",
        "tools/make_pictures.sh",
        "packaging/make_packages.sh",
        "packaging/try_packages.sh",
    ],
)
def test_no_install_ends_with_2_when_a_package_is_missing(command: str, tmp_path: Path) -> None:
    packages = tmp_path / "packages.txt"
    packages.write_text("no-such-package # for nothing\n")
    result = run(command, "--no-install", PACKAGES=str(packages), XDG_CACHE_HOME=str(tmp_path))
    assert result.returncode == 2
    assert result.stderr == f"{Path(command).name}: these packages are missing: no-such-package\n"


@pytest.mark.parametrize("command", ["demo", "tools/make_pictures.sh"])
def test_a_second_demo_is_refused(command: str, tmp_path: Path) -> None:
    cache = tmp_path / "qtutils-demo"
    cache.mkdir()
    with open(cache / "lock", "w", encoding="ascii") as lock:
        fcntl.flock(lock, fcntl.LOCK_EX)
        result = run(command, "--no-install", XDG_CACHE_HOME=str(tmp_path))
    assert (result.returncode, result.stdout) == (1, "")
    assert result.stderr == f"{Path(command).name}: another demo uses {cache}; end it first\n"
