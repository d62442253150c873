# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""Who makes packages chooses maintainer, release and the demo's name; the project's own stand nowhere then."""

from pathlib import Path

import pytest
from installed import TOP, VERSION, output

NAME = "net.example.Map"
MAINTAINER = "Some Body <body@some.example>"
RELEASE = "3~some"
OWN = (b"org.qtutils", b"example.org")


@pytest.fixture(scope="module")
def package(tmp_path_factory: pytest.TempPathFactory) -> Path:
    """The demo's package of a build that is configured for it."""
    build, folder = tmp_path_factory.mktemp("build"), tmp_path_factory.mktemp("packages")
    choices = [f"-DQTUTILS_APPLICATION_ID={NAME}", f"-DQTUTILS_MAINTAINER={MAINTAINER}"]
    choices += [f"-DCPACK_DEBIAN_PACKAGE_RELEASE={RELEASE}"]
    options = ["-DQTUTILS_BUILD_TESTS=OFF", "-DQTUTILS_BUILD_BENCH=OFF", "-G", "Ninja"]
    output("cmake", "-S", TOP, "-B", build, *choices, *options)
    output("cpack", "--config", build / "CPackConfig.cmake", "-B", folder, "-D", "CPACK_COMPONENTS_ALL=demo")
    (made,) = folder.glob("*.deb")
    return made


def test_the_package_has_the_chosen_maintainer(package: Path, tmp_path: Path) -> None:
    assert output("dpkg-deb", "--field", package, "Maintainer") == f"{MAINTAINER}\n"
    output("dpkg-deb", "--extract", package, tmp_path)
    changes = tmp_path / "usr" / "share" / "doc" / "qtutils-demo" / "changelog.Debian.gz"
    assert f" -- {MAINTAINER}  " in output("zcat", changes)


def test_packages_of_one_release_belong_together(package: Path, tmp_path: Path) -> None:
    version = f"{VERSION}-{RELEASE}"
    assert output("dpkg-deb", "--field", package, "Version") == f"{version}\n"
    assert f"mapmaker (= {version})" in output("dpkg-deb", "--field", package, "Depends")
    output("dpkg-deb", "--extract", package, tmp_path)
    changes = tmp_path / "usr" / "share" / "doc" / "qtutils-demo" / "changelog.Debian.gz"
    assert output("zcat", changes).startswith(f"qtutils ({version}) ")


def test_the_demo_has_the_chosen_name(package: Path, tmp_path: Path) -> None:
    output("dpkg-deb", "--extract", package, tmp_path)
    share = tmp_path / "usr" / "share"
    assert f"\nIcon={NAME}\n" in (share / "applications" / f"{NAME}.desktop").read_text()
    assert f"<id>{NAME}</id>" in (share / "metainfo" / f"{NAME}.metainfo.xml").read_text()
    assert (share / "icons" / "hicolor" / "scalable" / "apps" / f"{NAME}.svg").is_file()
    assert "successful" in output("appstreamcli", "validate-tree", "--no-net", tmp_path / "usr")


def test_nothing_names_the_projects_own_choices(package: Path, tmp_path: Path) -> None:
    output("dpkg-deb", "--raw-extract", package, tmp_path)
    files = [path for path in tmp_path.rglob("*") if path.is_file()]
    assert len(files) > 5
    for path in files:
        text = str(path.relative_to(tmp_path)).encode() + path.read_bytes()
        assert not any(own in text for own in OWN), path
