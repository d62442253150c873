# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""Programs in C and C++ are built with what the installed kit tells CMake and pkg-config."""

import os
import shlex
from pathlib import Path

import pagesamples
import pytest
from installed import LIBRARIES, TOP, VERSION, output, run

CONSUMER = TOP / "tests" / "install" / "consumer"
CODE_OF_A_MODULE_THAT_IS_NOT_THERE = "3\n"


@pytest.fixture(scope="module")
def built(prefix: Path, tmp_path_factory: pytest.TempPathFactory) -> Path:
    """The consumer's programs as CMake has built them."""
    folder = tmp_path_factory.mktemp("consumer")
    output("cmake", "-S", CONSUMER, "-B", folder, f"-DCMAKE_PREFIX_PATH={prefix}", "-G", "Ninja")
    output("cmake", "--build", folder)
    return folder


def test_cmake_builds_programs_in_c_and_cpp(built: Path) -> None:
    assert output(built / "consumer_c", "/no/such/module.so") == CODE_OF_A_MODULE_THAT_IS_NOT_THERE
    assert output(built / "consumer_cpp", "/no/such/module.so") == CODE_OF_A_MODULE_THAT_IS_NOT_THERE


def test_the_lines_of_the_kits_page_are_enough_for_cmake(prefix: Path, tmp_path: Path) -> None:
    samples = pagesamples.read(TOP / "kit" / "README.md")
    (lines,) = [text for language, text in samples if language == "cmake"]
    begin = (
        "cmake_minimum_required(VERSION 3.25)\nproject(host LANGUAGES C)\nadd_executable(host consumer.c)\n"
    )
    (tmp_path / "CMakeLists.txt").write_text(begin + lines)
    (tmp_path / "consumer.c").symlink_to(CONSUMER / "consumer.c")
    output("cmake", "-S", tmp_path, "-B", tmp_path / "build", f"-DCMAKE_PREFIX_PATH={prefix}", "-G", "Ninja")
    output("cmake", "--build", tmp_path / "build")
    assert output(tmp_path / "build" / "host", "/no/such/module.so") == CODE_OF_A_MODULE_THAT_IS_NOT_THERE


def test_cmake_is_told_module_and_data(prefix: Path, built: Path) -> None:
    paths = (built / "paths.txt").read_text().splitlines()
    assert paths == [str(prefix / LIBRARIES / "qtutils" / "qtutils.so"), str(prefix / "share" / "qtutils")]


def test_another_version_is_refused_by_cmake(prefix: Path, tmp_path: Path) -> None:
    options = [f"-DCMAKE_PREFIX_PATH={prefix}", "-G", "Ninja", "-DWANTED_VERSION=99.0"]
    result = run("cmake", "-S", CONSUMER, "-B", tmp_path, *options)
    assert result.returncode != 0
    assert 'requested version "99.0"' in " ".join(result.stderr.split())


def pkg_config(prefix: Path, *options: str) -> list[str]:
    folder = {"PKG_CONFIG_PATH": str(prefix / LIBRARIES / "pkgconfig")}
    return shlex.split(output("pkg-config", *options, "qtutils", environment=folder))


def test_pkg_config_tells_how_to_build(prefix: Path, tmp_path: Path) -> None:
    flags = pkg_config(prefix, "--cflags", "--libs")
    output("cc", CONSUMER / "consumer.c", *flags, "-o", tmp_path / "consumer")
    libraries = {"LD_LIBRARY_PATH": str(prefix / LIBRARIES)}
    code = output(tmp_path / "consumer", "/no/such/module.so", environment=libraries)
    assert code == CODE_OF_A_MODULE_THAT_IS_NOT_THERE


def test_pkg_config_is_told_version_module_and_data(prefix: Path) -> None:
    assert pkg_config(prefix, "--modversion") == [VERSION]
    (module,) = pkg_config(prefix, "--variable=module")
    (data,) = pkg_config(prefix, "--variable=datafolder")
    assert os.path.samefile(module, prefix / LIBRARIES / "qtutils" / "qtutils.so")
    assert os.path.samefile(data, prefix / "share" / "qtutils")
