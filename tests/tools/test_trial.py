# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""packaging/try_packages.sh: what it says of trials, and when something is missing. No system is made here."""

import os
import subprocess
from pathlib import Path

import pytest

TOP = Path(__file__).resolve().parents[2]
CONTROL = "Package: small\nVersion: {}\nArchitecture: all\nMaintainer: nobody <no@body.example>\nDescription: none\n"
SUITE = "dists/bookworm/InRelease"


class Machine:
    """Fake programs that stand for rights, apt and the bare system, and a folder with a package."""

    def __init__(self, folder: Path) -> None:
        self.folder = folder
        self.packages, self.temporary = folder / "packages", folder / "temporary"
        for path in (self.packages, self.temporary, folder / SUITE.rpartition("/")[0]):
            path.mkdir(parents=True)
        (folder / SUITE).write_text("an archive\n")
        (folder / "packages.txt").touch()
        self.program("apt-get", f"echo deb file:{folder}/ bookworm main")
        self.results("ok\tsmall\tapt installs it\t\nend\n")
        self.add_package("1.0")

    def program(self, name: str, text: str) -> None:
        path = self.folder / name
        path.write_text(f"#!/bin/sh\n{text}\n")
        path.chmod(0o755)

    def results(self, text: str) -> None:
        """What the trials in the system write."""
        (self.folder / "trials").write_text(text)
        written = f'cp "{self.folder}/trials" "$TMPDIR/results"'
        self.program("mmdebstrap", written)
        self.program("unshare", f'case "$*" in *mmdebstrap*) {written};; esac')

    def add_package(self, version: str) -> None:
        control = self.folder / version / "DEBIAN"
        control.mkdir(parents=True)
        (control / "control").write_text(CONTROL.format(version))
        command = ["dpkg-deb", "--build", str(control.parent), str(self.packages)]
        subprocess.run(command, check=True, capture_output=True)

    def run(self) -> "subprocess.CompletedProcess[str]":
        environment = {
            **os.environ,
            "PATH": f"{self.folder}:{os.environ['PATH']}",
            "PACKAGES": str(self.folder / "packages.txt"),
            "TMPDIR": str(self.temporary),
        }
        program = str(TOP / "packaging" / "try_packages.sh")
        command = [program, "--no-install", "--packages", str(self.packages)]
        result = subprocess.run(command, env=environment, capture_output=True, text=True, check=False)
        assert list(self.temporary.iterdir()) == [], "something is left"
        return result


@pytest.fixture
def machine(tmp_path: Path) -> Machine:
    return Machine(tmp_path)


def says(result: "subprocess.CompletedProcess[str]", code: int, line: str) -> None:
    assert (result.returncode, result.stderr) == (code, f"try_packages.sh: {line}\n")


def test_trials_that_are_well_are_listed(machine: Machine) -> None:
    result = machine.run()
    assert (result.returncode, result.stderr) == (0, "")
    heading, row, end = result.stdout.splitlines()[-3:]
    assert heading.split() == ["Result", "Packages", "Trial"]
    assert row.split(maxsplit=2) == ["ok", "small", "apt installs it"]
    assert end == "All 1 trials are well."


def test_a_trial_that_fails_is_told_with_its_reason(machine: Machine) -> None:
    machine.results("ok\tsmall\tapt installs it\t\nFAILED\tsmall\tit runs\tno library\nend\n")
    result = machine.run()
    says(result, 1, "1 of 2 trials failed, the first: small: it runs: no library")
    assert result.stdout.splitlines()[-1].split(maxsplit=2) == ["FAILED", "small", "it runs: no library"]


def test_trials_without_an_end_are_not_well(machine: Machine) -> None:
    machine.results("ok\tsmall\tapt installs it\t\n")
    says(machine.run(), 1, "the trials broke off")


def test_a_system_that_breaks_off_is_told(machine: Machine) -> None:
    for name in ("mmdebstrap", "unshare"):
        machine.program(name, 'case "$0 $*" in *mmdebstrap*) exit 25;; esac')
    says(machine.run(), 1, "the bare system broke off")


def test_without_packages_it_is_told_who_makes_them(machine: Machine) -> None:
    (machine.packages / "small_1.0_all.deb").unlink()
    line = f"there are no packages in {machine.packages}; make them with packaging/make_packages.sh"
    says(machine.run(), 2, line)


def test_two_versions_of_a_package_are_refused(machine: Machine) -> None:
    machine.add_package("1.1")
    says(machine.run(), 1, f"more than one version in {machine.packages}: small")


def test_without_rights_it_is_told_which(machine: Machine) -> None:
    machine.program("unshare", "exit 1")
    says(machine.run(), 2, "needs root, or user namespaces with ranges in /etc/subuid and /etc/subgid")


def test_without_lists_it_is_told_how_to_get_them(machine: Machine) -> None:
    machine.program("apt-get", "")
    says(machine.run(), 2, "this machine's apt has no lists of Debian bookworm; run: apt-get update")


def test_without_the_network_it_is_told_what_can_t_be_reached(machine: Machine) -> None:
    (machine.folder / SUITE).unlink()
    says(machine.run(), 2, f"the network is missing: can't reach file:{machine.folder}/")
