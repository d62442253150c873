# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""tools/common.sh, tools/unpack.sh: missing packages are found, and installed or unpacked."""

import os
import subprocess
from pathlib import Path

import pytest
from shellscript import COMMON, TOP, run_script


class Machine:
    """Fake programs that decide on packages; each call is written to a file."""

    def __init__(self, folder: Path) -> None:
        self.folder, self.calls = folder, folder / "calls"
        self.calls.touch()
        (folder / "lists").mkdir()
        (folder / "packages.txt").write_text(
            "# the list\ncmake   # build\n\nbison # parser\nflex\nclang-tidy @tidy # linter\n"
        )
        self.program("dpkg-query", '[ "$4" = cmake ] && printf installed')
        self.program("apt-get", "")
        self.program("id", "echo 0")
        self.program("sudo", f'echo sudo >> {self.calls}; exec "$@"')

    def program(self, name: str, text: str) -> None:
        path = self.folder / name
        log = f'echo "{name} $*" >> {self.calls}\n' if name == "apt-get" else ""
        path.write_text(f"#!/bin/sh\n{log}{text}\n")
        path.chmod(0o755)

    def need_packages(self, *arguments: str) -> "subprocess.CompletedProcess[str]":
        return self.run(f"need_packages {' '.join(arguments)}")

    def need_files(self, install: str) -> "subprocess.CompletedProcess[str]":
        """Asks for the packages with the tag "tidy" as files, below the folder "files"."""
        return self.run(f"need_files {install} tidy {self.folder}/files")

    def run(self, command: str) -> "subprocess.CompletedProcess[str]":
        environment = {
            "PATH": f"{self.folder}:{os.environ['PATH']}",
            "PACKAGES": str(self.folder / "packages.txt"),
            "APT_LISTS": str(self.folder / "lists"),
        }
        return run_script(f"{COMMON}; . {TOP}/tools/unpack.sh; {command}", environment)

    def called(self) -> list[str]:
        return self.calls.read_text().splitlines()


INSTALL = "apt-get install -y --no-install-recommends bison flex"


@pytest.fixture
def machine(tmp_path: Path) -> Machine:
    return Machine(tmp_path)


def test_missing_packages_are_installed(machine: Machine) -> None:
    (machine.folder / "lists" / "main_Packages").touch()
    result = machine.need_packages("yes")
    assert result.returncode == 0
    assert result.stdout.splitlines() == [
        "missing packages: bison flex",
        f"running: env DEBIAN_FRONTEND=noninteractive {INSTALL}",
    ]
    assert machine.called() == [INSTALL]


def test_without_lists_they_are_fetched_first(machine: Machine) -> None:
    assert machine.need_packages("yes").returncode == 0
    assert machine.called() == ["apt-get update", INSTALL]


def test_lists_too_old_for_a_package_are_fetched_anew(machine: Machine) -> None:
    (machine.folder / "lists" / "main_Packages").touch()
    machine.program("apt-get", f'[ "$1" = update ] || grep -q "get update" {machine.calls}')
    assert machine.need_packages("yes").returncode == 0
    assert machine.called() == [INSTALL, "apt-get update", INSTALL]


def test_a_package_that_can_t_be_installed_is_named(machine: Machine) -> None:
    machine.program("apt-get", "exit 100")
    result = machine.need_packages("yes")
    assert (result.returncode, result.stderr) == (1, "bash: could not install: bison flex\n")


def test_users_install_with_sudo(machine: Machine) -> None:
    machine.program("id", "echo 1000")
    assert machine.need_packages("yes").returncode == 0
    assert machine.called() == ["sudo", "apt-get update", "sudo", INSTALL]


def test_no_install_names_the_missing_packages(machine: Machine) -> None:
    result = machine.need_packages("no")
    assert (result.returncode, result.stderr) == (2, "bash: these packages are missing: bison flex\n")
    assert machine.called() == []


def test_packages_with_a_tag_are_for_those_who_ask(machine: Machine) -> None:
    assert machine.need_packages("yes", "tidy").returncode == 0
    assert machine.called()[-1] == f"{INSTALL} clang-tidy"


def test_nothing_is_done_when_nothing_is_missing(machine: Machine) -> None:
    machine.program("dpkg-query", "printf installed")
    result = machine.need_packages("yes")
    assert (result.returncode, result.stdout, machine.called()) == (0, "", [])


def test_files_are_unpacked_instead_of_installed_and_once(machine: Machine) -> None:
    # given
    machine.program("apt-get", '[ "$2" = download ] && touch "$3.deb"')
    machine.program("dpkg-deb", 'cp "$2" "$3/program"')
    for calls in (["apt-get -q download clang-tidy"], ["apt-get -q download clang-tidy"]):
        # when
        result = machine.need_files("yes")
        # then
        assert (result.returncode, result.stderr, machine.called()) == (0, "", calls)
        assert {file.name for file in (machine.folder / "files").iterdir()} == {"program", "versions"}


def test_files_that_can_t_be_had_leave_no_folder(machine: Machine) -> None:
    machine.program("apt-get", "exit 100")
    result = machine.need_files("yes")
    assert (result.returncode, result.stderr) == (1, "bash: could not unpack: clang-tidy\n")
    assert not (machine.folder / "files").exists()


def test_no_install_names_the_missing_files(machine: Machine) -> None:
    result = machine.need_files("no")
    assert result.returncode == 2
    assert result.stderr == "bash: files of these packages are missing: clang-tidy\n"
    assert machine.called() == []
