# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""The Debian packages: complete, without complaint of lintian, the same each time, and what they depend on."""

import os
import re
import subprocess
from pathlib import Path

import pytest
from installed import HAS_SYMBOLS, LIBRARIES, VERSION, make_packages, output

WITH_SYMBOLS = ("libqtutils-nodebrowser0", "qtutils") if HAS_SYMBOLS else ()
NAMES = {
    *(f"{name}-dbgsym" for name in WITH_SYMBOLS),
    "libqtutils-dev",
    "libqtutils-nodebrowser0",
    "mapmaker",
    "python3-qtutils",
    "qtutils",
    "qtutils-demo",
    "qtutils-doc",
}
FOR_ALL_MACHINES = {"mapmaker", "qtutils-demo", "qtutils-doc"}
# What no tool finds out: plug-ins, modules for Python, programs.
DEPENDENCIES: dict[str, set[str]] = {
    "libqtutils-dev": {"libqtutils-nodebrowser0"},
    "libqtutils-nodebrowser0": {"libc6", "qtutils"},
    "mapmaker": {
        "python3",
        "python3-numpy",
        "python3-pymysql",
        "python3-scipy",
        "python3-sklearn",
        "python3-tqdm",
    },
    "python3-qtutils": {"libqtutils-nodebrowser0", "python3"},
    "qtutils": {"libqt6sql6-mysql", "libqt6widgets6", "libmariadb3", "libxcb1", "libedit2"},
    "qtutils-demo": {"mapmaker", "mariadb-client-core", "mariadb-server-core", "qtutils", "x11-utils"},
    "qtutils-doc": set(),
    **{f"{name}-dbgsym": {name} for name in WITH_SYMBOLS},
}
OWN_FILES = re.compile(
    r"usr/(lib/debug/.*\.debug|share/(doc/[^/]+/(changelog\.gz|copyright)|lintian/overrides/[^/]+))"
)


@pytest.fixture(scope="module")
def unpacked(packages: dict[str, Path], tmp_path_factory: pytest.TempPathFactory) -> Path:
    """The folder for programs of a system with all packages."""
    root = tmp_path_factory.mktemp("root")
    for package in packages.values():
        output("dpkg-deb", "--extract", package, root)
    return root / "usr"


def field(package: Path, name: str) -> str:
    return output("dpkg-deb", "--field", package, name).strip()


def relations(text: str) -> set[str]:
    """The packages that a field names, without versions."""
    return {name.split(" ")[0] for name in text.split(", ") if name}


def contents(package: Path) -> list[str]:
    """Names of the files and links."""
    lines = output("dpkg-deb", "--contents", package).splitlines()
    return [line.split(maxsplit=5)[5].split(" -> ")[0].removeprefix("./") for line in lines if line[0] != "d"]


def test_there_is_a_package_for_each_use(packages: dict[str, Path]) -> None:
    assert packages.keys() == NAMES
    for name, package in packages.items():
        assert field(package, "Version") == VERSION
        assert (field(package, "Architecture") == "all") == (name in FOR_ALL_MACHINES)


def test_lintian_finds_no_errors_and_no_unexplained_warnings(packages: dict[str, Path]) -> None:
    command = [
        "lintian",
        "--no-cfg",
        "--allow-root",
        "--fail-on",
        "error,warning",
        *map(str, packages.values()),
    ]
    result = subprocess.run(command, capture_output=True, text=True, check=False)
    assert (result.returncode, result.stdout) == (0, "")


@pytest.mark.parametrize("name", sorted(NAMES))
def test_packages_depend_on_what_they_need(packages: dict[str, Path], name: str) -> None:
    named = relations(field(packages[name], "Depends"))
    found_by_tools = named - DEPENDENCIES[name] if name == "qtutils" else set()
    assert named - found_by_tools == DEPENDENCIES[name]


def test_packages_of_one_version_belong_together(packages: dict[str, Path]) -> None:
    assert f"libqtutils-nodebrowser0 (= {VERSION})" in field(packages["libqtutils-dev"], "Depends")
    assert f"libqtutils-nodebrowser0 (= {VERSION})" in field(packages["python3-qtutils"], "Depends")
    for name in WITH_SYMBOLS:
        assert field(packages[f"{name}-dbgsym"], "Depends") == f"{name} (= {VERSION})"


def test_the_packages_hold_each_installed_file_once(packages: dict[str, Path], prefix: Path) -> None:
    files: list[str] = sum((contents(package) for package in packages.values()), [])
    assert len(set(files)) == len(files)
    installed = {f"usr/{path.relative_to(prefix)}" for path in prefix.glob("**/*") if not path.is_dir()}
    packed = {re.sub(r"(/man\d/.*)\.gz$", r"\1", name) for name in files if not OWN_FILES.fullmatch(name)}
    assert sorted(packed ^ installed) == []


@pytest.mark.parametrize(
    "file, function, source",
    [
        (f"{LIBRARIES}/qtutils/qtutils.so", "nodeBrowser_show", "binding/mirta_qtutils.cpp"),
        (f"{LIBRARIES}/qtutils/qtutils-trace.so", "nodeBrowser_show", "kit/trace/entrypoints.cpp"),
        (f"{LIBRARIES}/libqtutils-nodebrowser.so.{VERSION}", "qtutils_show", "kit/src/nodebrowser.c"),
        ("bin/qtutils-host", "main", "host/main.cpp"),
    ],
)
def test_binaries_are_small_and_debuggers_know_their_sources(
    unpacked: Path, file: str, function: str, source: str
) -> None:
    sections = output("readelf", "--wide", "--sections", unpacked / file)
    assert ".dynsym" in sections and ".symtab" not in sections and ".debug" not in sections
    if HAS_SYMBOLS:
        (number,) = re.findall(r"Build ID: (\w+)", output("readelf", "--notes", unpacked / file))
        symbols = unpacked / "lib" / "debug" / ".build-id" / number[:2] / f"{number[2:]}.debug"
        (address,) = re.findall(rf"^(\w+) T {function}$", output("nm", symbols), re.MULTILINE)
        assert f"/{source}:" in output("addr2line", "-e", symbols, address)


def test_every_package_has_its_licence_and_its_changes(packages: dict[str, Path]) -> None:
    for name, package in packages.items():
        folder = f"usr/share/doc/{name}"
        assert {f"{folder}/copyright", f"{folder}/changelog.gz"} <= set(contents(package))


def test_the_same_build_gives_the_same_packages(packages: dict[str, Path], tmp_path: Path) -> None:
    again = make_packages(tmp_path)
    assert again.keys() == packages.keys()
    for name, package in packages.items():
        assert again[name].read_bytes() == package.read_bytes(), name


def test_the_umask_is_not_that_of_the_files(packages: dict[str, Path], tmp_path: Path) -> None:
    before = os.umask(0o077)
    try:
        again = make_packages(tmp_path)
    finally:
        os.umask(before)
    for name, package in packages.items():
        assert output("dpkg-deb", "--contents", again[name]) == output("dpkg-deb", "--contents", package)


def test_unpacked_programs_run(unpacked: Path) -> None:
    listed = output(unpacked / "bin" / "qtutils-host", "--list")
    assert listed.startswith(f"module {unpacked}/{LIBRARIES}/qtutils/qtutils.so, namespace qtutils\n")
    assert output(unpacked / "bin" / "mapmaker", "--version") == f"mapmaker {VERSION}\n"
    assert output(unpacked / "bin" / "qtutils-demo", "--version") == f"qtutils-demo {VERSION}\n"
    packages = {"PYTHONPATH": str(unpacked / "lib" / "python3" / "dist-packages")}
    program = "import qtutils.library; print(qtutils.library.library()._name)"
    library = output("/usr/bin/python3", "-c", program, environment=packages).strip()
    assert library.startswith(str(unpacked)) and Path(library).exists()


@pytest.mark.parametrize(
    "name, folder", [("mapmaker", "/usr/share/qtutils/mapmaker"), ("python3-qtutils", "")]
)
def test_python_is_compiled_when_it_is_installed(
    packages: dict[str, Path], tmp_path: Path, name: str, folder: str
) -> None:
    output("dpkg-deb", "--control", packages[name], tmp_path / name)
    for script, command in {"postinst": "py3compile", "prerm": "py3clean"}.items():
        tool = tmp_path / command
        tool.write_text(f'#!/bin/sh\necho "$*" > {tmp_path}/{script}.words\n')
        tool.chmod(0o755)
        output(
            tmp_path / name / script, "configure", environment={"PATH": f"{tmp_path}:{os.environ['PATH']}"}
        )
        assert (tmp_path / f"{script}.words").read_text().split() == ["-p", name, *folder.split()]
