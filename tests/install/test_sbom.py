# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""The bill of materials of the Debian packages: complete, true, and in the form of SPDX."""

import hashlib
import json
import re
import uuid
from collections import Counter
from pathlib import Path
from typing import Any

import pytest
import sbom
from installed import TOP, VERSION, output, run

SBOM = TOP / "packaging" / "sbom.py"
TIME = {"SOURCE_DATE_EPOCH": "1700000000"}
IDENTIFIER = re.compile(r"SPDXRef-[A-Za-z0-9.-]+")
Json = dict[str, Any]


@pytest.fixture(scope="module")
def bill(packages: dict[str, Path]) -> Json:
    made: Json = json.loads(output(SBOM, *packages.values(), environment=TIME))
    return made


def ends(bill: Json, kind: str, start: str) -> set[str]:
    """What a thing is related to, by identifiers."""
    relations = [one for one in bill["relationships"] if one["relationshipType"] == kind]
    return {one["relatedSpdxElement"] for one in relations if one["spdxElementId"] == start}


def named(bill: Json, name: str) -> Json:
    (found,) = (one for one in bill["packages"] if one["name"] == name)
    return dict(found)


def installed_version(name: str) -> str:
    return output("dpkg-query", "--show", "--showformat", "${Version}", name)


def test_the_bill_has_the_form_of_spdx(bill: Json) -> None:
    assert (bill["spdxVersion"], bill["dataLicense"], bill["name"]) == (
        "SPDX-2.3",
        "CC0-1.0",
        f"qtutils-{VERSION}",
    )
    assert bill["creationInfo"]["created"] == "2023-11-14T22:13:20Z"
    assert uuid.UUID(bill["documentNamespace"]).urn == bill["documentNamespace"]
    things = [bill, *bill["packages"], *bill["files"]]
    identifiers = Counter(thing["SPDXID"] for thing in things)
    assert all(IDENTIFIER.fullmatch(name) for name in identifiers)
    assert set(identifiers.values()) == {1}
    for relation in bill["relationships"]:
        assert {relation["spdxElementId"], relation["relatedSpdxElement"]} <= identifiers.keys()
    assert max(Counter(json.dumps(relation) for relation in bill["relationships"]).values()) == 1


def test_names_that_differ_have_identifiers_that_differ() -> None:
    names = ("a-b", "a_b", "a/b", "a+b", "a.b")
    identifiers = [sbom.identifier("File", name) for name in names]
    assert len(set(identifiers)) == len(names)
    assert all(IDENTIFIER.fullmatch(name) for name in identifiers)


def test_the_packages_are_described(bill: Json, packages: dict[str, Path]) -> None:
    described = ends(bill, "DESCRIBES", "SPDXRef-DOCUMENT")
    assert described == {named(bill, name)["SPDXID"] for name in packages}
    for name, path in packages.items():
        entry = named(bill, name)
        assert (entry["versionInfo"], entry["packageFileName"]) == (VERSION, path.name)
        assert entry["supplier"] in bill["creationInfo"]["creators"]
        maintainer = output("dpkg-deb", "--field", path, "Maintainer").strip()
        assert entry["supplier"] == f"Organization: {maintainer}".replace("<", "(").replace(">", ")")
        assert entry["checksums"][0]["checksumValue"] == hashlib.sha256(path.read_bytes()).hexdigest()


def test_every_file_is_in_the_bill_with_its_sums(
    bill: Json, packages: dict[str, Path], tmp_path: Path
) -> None:
    files = {file["SPDXID"]: file for file in bill["files"]}
    for name, path in packages.items():
        output("dpkg-deb", "--extract", path, tmp_path / name)
        entry = named(bill, name)
        listed = {files[one]["fileName"]: files[one] for one in ends(bill, "CONTAINS", entry["SPDXID"])}
        unpacked = [file for file in (tmp_path / name).rglob("*") if file.is_file() and not file.is_symlink()]
        assert listed.keys() == {f"./{file.relative_to(tmp_path / name)}" for file in unpacked}
        sums = {}
        for file in unpacked:
            content = file.read_bytes()
            sums[f"./{file.relative_to(tmp_path / name)}"] = [
                {"algorithm": "SHA1", "checksumValue": hashlib.sha1(content).hexdigest()},
                {"algorithm": "SHA256", "checksumValue": hashlib.sha256(content).hexdigest()},
            ]
        assert {place: file["checksums"] for place, file in listed.items()} == sums
        code = hashlib.sha1("".join(sorted(one[0]["checksumValue"] for one in sums.values())).encode())
        assert entry["packageVerificationCode"]["packageVerificationCodeValue"] == code.hexdigest()


@pytest.mark.parametrize("name", ["libqt6sql6-mysql", "python3-numpy", "libstdc++6", "mariadb-server-core"])
def test_what_packages_depend_on_has_this_machines_version(bill: Json, name: str) -> None:
    entry = named(bill, name)
    assert entry["versionInfo"] == installed_version(name)
    locator = entry["externalRefs"][0]["referenceLocator"]
    assert re.fullmatch(r"pkg:deb/debian/[a-z0-9.%B-]+@[\w.%~-]+\?arch=\w+", locator)


def test_dependencies_are_followed_to_their_end(bill: Json) -> None:
    qtutils = ends(bill, "DEPENDS_ON", named(bill, "qtutils")["SPDXID"])
    assert qtutils >= {named(bill, "libqt6sql6-mysql")["SPDXID"], named(bill, "libqt6widgets6")["SPDXID"]}
    assert named(bill, "qtutils")["SPDXID"] in ends(bill, "DEPENDS_ON", named(bill, "qtutils-demo")["SPDXID"])
    widgets = ends(bill, "DEPENDS_ON", named(bill, "libqt6widgets6")["SPDXID"])
    assert named(bill, "libqt6gui6")["SPDXID"] in widgets
    for entry in bill["packages"]:
        if "pkg:deb/debian/" in entry["externalRefs"][0]["referenceLocator"]:
            wanted = output("dpkg-query", "-Wf", "${Pre-Depends}${Depends}", entry["name"])
            assert bool(ends(bill, "DEPENDS_ON", entry["SPDXID"])) == bool(wanted), entry["name"]


def test_the_same_packages_give_the_same_bill(bill: Json, packages: dict[str, Path]) -> None:
    backwards = reversed(sorted(packages.values()))
    assert json.loads(output(SBOM, *backwards, environment=TIME)) == bill


def test_a_package_that_is_missing_is_named(packages: dict[str, Path]) -> None:
    result = run(SBOM, packages["libqtutils-dev"])
    assert (result.returncode, result.stdout) == (2, "")
    assert result.stderr == "sbom.py: libqtutils-dev needs libqtutils-nodebrowser0, which is not installed\n"
