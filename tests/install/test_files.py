# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""What is installed: everything that is needed, nothing else, and nothing that knows where it was built."""

import os
import re
from pathlib import Path

import pytest
from installed import BUILD, LIBRARIES, TOP, VERSION, output, run

KIT = (
    "Error.h",
    "NodeBrowser.h",
    "Recipes.h",
    "Rows.h",
    "errors.h",
    "nodebrowser.h",
    "recipes.h",
    "rowcolors.h",
)
PAGES = ("man1/mapmaker.1", "man1/qtutils-demo.1", "man1/qtutils-host.1", "man3/qtutils.3")
APPLICATION = os.environ["QTUTILS_APPLICATION_ID"]
WANTED = {
    f"{LIBRARIES}/qtutils/qtutils.so",
    f"{LIBRARIES}/qtutils/qtutils-trace.so",
    f"{LIBRARIES}/libqtutils-nodebrowser.so",
    f"{LIBRARIES}/libqtutils-nodebrowser.so.0",
    f"{LIBRARIES}/libqtutils-nodebrowser.so.{VERSION}",
    f"{LIBRARIES}/pkgconfig/qtutils.pc",
    f"{LIBRARIES}/cmake/qtutils/qtutilsConfig.cmake",
    f"{LIBRARIES}/cmake/qtutils/qtutilsConfigVersion.cmake",
    f"{LIBRARIES}/cmake/qtutils/qtutilsTargets.cmake",
    "lib/python3/dist-packages/qtutils/libqtutils-nodebrowser.so.0",
    "lib/python3/dist-packages/qtutils/py.typed",
    f"share/metainfo/{APPLICATION}.metainfo.xml",
    f"share/applications/{APPLICATION}.desktop",
    f"share/icons/hicolor/scalable/apps/{APPLICATION}.svg",
    *(f"bin/{name}" for name in ("mapmaker", "qtutils-demo", "qtutils-host")),
    *(f"share/bash-completion/completions/{name}" for name in ("mapmaker", "qtutils-demo", "qtutils-host")),
    *(f"include/qtutils/{name}" for name in KIT),
    *(f"share/man/{name}" for name in PAGES),
    *(f"share/qtutils/Images/{topic}.xpm" for topic in range(21)),
    *(f"share/qtutils/tools/{name}" for name in ("common.sh", "demomap.sh", "guard.sh")),
}


def below(folder: Path, pattern: str) -> set[str]:
    return {path.relative_to(folder).as_posix() for path in folder.glob(pattern)}


def wanted() -> set[str]:
    """The list above, and the files of folders that are installed whole."""
    packages = {f"share/qtutils/{name}" for name in below(TOP, "mapmaker/**/*.py")}
    packages = {name for name in packages if "/tests/" not in name}
    packages |= {
        f"lib/python3/dist-packages/{name}" for name in below(TOP / "kit" / "python", "qtutils/*.py")
    }
    pages = {*below(TOP, "docs/**/*.*"), *below(TOP, "*/README.md"), *below(TOP, "kit/examples/*/*.*")}
    pages = {name for name in pages if name.split("/")[0] in ("docs", "host", "kit", "mapmaker")}
    for suffix in ("cnf", "cfg", "sql"):
        pages |= below(TOP, f"cluster/**/*.{suffix}")
    return (
        WANTED
        | packages
        | {f"share/qtutils/{name}" for name in below(TOP, "host/scripts/*.qth")}
        | {f"share/doc/qtutils/{name}" for name in pages | {"README.md", "CHANGELOG.md"}}
    )


def test_everything_is_installed_and_nothing_else(prefix: Path) -> None:
    files = {name for name in below(prefix, "**/*") if not (prefix / name).is_dir()}
    by_build_type = {name for name in files if re.search(r"/cmake/qtutils/qtutilsTargets-\w+\.cmake$", name)}
    assert len(by_build_type) == 1
    assert sorted(files - by_build_type - wanted()) == []
    assert sorted(wanted() - files) == []


def test_links_lead_to_installed_files(prefix: Path) -> None:
    links = [path for path in prefix.glob("**/*") if path.is_symlink()]
    assert len(links) == 3
    for link in links:
        assert not link.readlink().is_absolute() and link.exists(), link


def test_no_text_names_the_folders_of_the_build_and_of_the_sources(prefix: Path) -> None:
    for path in prefix.glob("**/*"):
        if path.is_file() and path.suffix != ".so" and b"\0" not in (content := path.read_bytes()):
            assert str(BUILD).encode() not in content, path
            assert str(TOP).encode() not in content, path


def test_libraries_look_nowhere_but_in_the_usual_places(prefix: Path) -> None:
    for name in (
        f"{LIBRARIES}/qtutils/qtutils.so",
        f"{LIBRARIES}/qtutils/qtutils-trace.so",
        f"{LIBRARIES}/libqtutils-nodebrowser.so",
        "bin/qtutils-host",
    ):
        assert not re.search("R(UN)?PATH", output("readelf", "--dynamic", prefix / name)), name


def test_the_desktop_file_is_valid(prefix: Path) -> None:
    file = prefix / "share" / "applications" / f"{APPLICATION}.desktop"
    assert output("desktop-file-validate", file) == ""
    assert (prefix / "bin" / re.findall("^Exec=(.*)$", file.read_text(), re.MULTILINE)[0]).exists()


def test_the_data_for_software_centres_is_valid(prefix: Path) -> None:
    file = prefix / "share" / "metainfo" / f"{APPLICATION}.metainfo.xml"
    output("appstreamcli", "validate", "--no-net", file)
    tree = output("appstreamcli", "validate-tree", "--no-net", prefix)
    assert "successful" in tree, tree


@pytest.mark.parametrize("page", PAGES)
def test_manual_pages_are_well_formed(prefix: Path, page: str) -> None:
    file = prefix / "share" / "man" / page
    result = run("groff", "-man", "-Tutf8", "-ww", file)
    assert (result.returncode, result.stderr) == (0, "")
    assert f"qtutils {VERSION}" in result.stdout
