# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""The build that is installed, and running what comes of it."""

import os
import subprocess
from collections.abc import Mapping
from pathlib import Path

TOP = Path(__file__).resolve().parents[2]
BUILD = Path(os.environ["QTUTILS_BUILD"])
LIBRARIES = os.environ["QTUTILS_LIBDIR"]  # below the prefix
VERSION = os.environ["QTUTILS_VERSION"]
HAS_SYMBOLS = "Deb" in os.environ["QTUTILS_BUILD_TYPE"]  # Debug or RelWithDebInfo
LIMIT = 60  # seconds, for a hang only
PROGRAMS = ("mapmaker", "qtutils-demo", "qtutils-host")


def run(*command: "str | Path", folder: Path = TOP, **environment: str) -> "subprocess.CompletedProcess[str]":
    """Runs a program with further variables; without those of this test that lead into the build and the tree."""
    variables = {name: value for name, value in os.environ.items() if not name.startswith("QTUTILS_")}
    variables.pop("PYTHONPATH", None)
    return subprocess.run(
        [str(word) for word in command],
        env={**variables, **environment},
        cwd=folder,
        capture_output=True,
        text=True,
        timeout=LIMIT,
        check=False,
        stdin=subprocess.DEVNULL,
    )


def output(*command: "str | Path", folder: Path = TOP, environment: Mapping[str, str] | None = None) -> str:
    """What a program prints; it must end well."""
    result = run(*command, folder=folder, **(environment or {}))
    assert result.returncode == 0, result.stdout + result.stderr
    return result.stdout


def install(prefix: Path) -> None:
    """Installs the build."""
    output("cmake", "--install", BUILD, "--prefix", prefix)


def make_packages(folder: Path) -> dict[str, Path]:
    """The Debian packages of the build by their names."""
    config = BUILD / "CPackConfig.cmake"
    output("cpack", "--config", config, "-B", folder, environment={"SOURCE_DATE_EPOCH": "1700000000"})
    return {path.name.split("_")[0]: path for path in folder.glob("*.deb")}
