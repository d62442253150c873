#!/usr/bin/python3
# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""Writes what Debian packages hold and depend on as a software bill of materials (SPDX 2.3, JSON) to standard output.

Versions of what they depend on, directly or not, are those of this machine. Time: SOURCE_DATE_EPOCH, or now.
"""

import argparse
import hashlib
import json
import os
import re
import subprocess
import sys
import tempfile
import time
import uuid
from collections.abc import Iterable, Iterator
from pathlib import Path
from typing import Any, NamedTuple

Json = dict[str, Any]
NOTHING_KNOWN = "NOASSERTION"
LICENCE = "MIT"
HOLDERS = "The qtutils developers"
STATUS = (
    "${db:Status-Status}\t${Package}\t${Version}\t${Architecture}\t${Pre-Depends}, ${Depends}\t${Provides}\n"
)


class Installed(NamedTuple):
    """A package of this machine."""

    name: str
    version: str
    architecture: str
    depends: str


def output(*command: str) -> str:
    """What a program prints. Raises CalledProcessError when it fails."""
    return subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True).stdout


def alternatives(field: str) -> Iterator[list[str]]:
    """The names of each relation of a field such as "a (>= 1), b | c": [a], [b, c]."""
    for relation in filter(None, (part.strip() for part in field.split(","))):
        yield [re.split(r"[ (:\[]", name.strip())[0] for name in relation.split("|")]


def machine() -> dict[str, Installed]:
    """The installed packages by their names and by what they provide; a package's own name goes first."""
    named: dict[str, Installed] = {}
    provided: dict[str, Installed] = {}
    for line in output("dpkg-query", "--show", "--showformat", STATUS).splitlines():
        status, name, version, architecture, depends, provides = line.split("\t")
        if status == "installed":
            named[name] = Installed(name, version, architecture, depends)
            provided |= {other: named[name] for (other, *_) in alternatives(provides)}
    return provided | named


def identifier(kind: str, name: str) -> str:
    """Names of SPDX have letters, digits, dots and hyphens."""
    return f"SPDXRef-{kind}-" + re.sub(r"[^A-Za-z0-9.-]", lambda sign: f"-{ord(sign[0]):x}-", name)


def reference(vendor: str, name: str, version: str, architecture: str) -> list[Json]:
    """The package's address in the notation of package URLs."""
    quoted = version.replace("+", "%2B").replace(":", "%3A").replace("~", "%7E")
    locator = f"pkg:deb/{vendor}{name.replace('+', '%2B')}@{quoted}?arch={architecture}"
    return [{"referenceCategory": "PACKAGE-MANAGER", "referenceType": "purl", "referenceLocator": locator}]


def package_entry(name: str, version: str, references: list[Json], **further: Any) -> Json:
    """A package as SPDX describes it."""
    return {
        "name": name,
        "SPDXID": identifier("Package", name),
        "versionInfo": version,
        "downloadLocation": NOTHING_KNOWN,
        "filesAnalyzed": False,
        "licenseConcluded": NOTHING_KNOWN,
        "licenseDeclared": NOTHING_KNOWN,
        "copyrightText": NOTHING_KNOWN,
        "externalRefs": references,
        **further,
    }


def file_entries(package: Path, name: str) -> list[Json]:
    """The files of a package; links are left out."""
    entries = []
    with tempfile.TemporaryDirectory() as folder:
        output("dpkg-deb", "--extract", str(package), folder)
        for path in sorted(Path(folder).rglob("*")):
            if path.is_file() and not path.is_symlink():
                place = f"./{path.relative_to(folder)}"
                entries.append(file_entry(name, place, path.read_bytes()))
    return entries


def file_entry(package: str, place: str, content: bytes) -> Json:
    """A file as SPDX describes it."""
    sums = {"SHA1": hashlib.sha1(content), "SHA256": hashlib.sha256(content)}
    return {
        "fileName": place,
        "SPDXID": identifier("File", f"{package}{place.removeprefix('.')}"),
        "checksums": [
            {"algorithm": kind, "checksumValue": found.hexdigest()} for kind, found in sums.items()
        ],
        "licenseConcluded": LICENCE,
        "licenseInfoInFiles": [NOTHING_KNOWN],
        "copyrightText": HOLDERS,
    }


def verification_code(files: Iterable[Json]) -> str:
    """SHA1 of the files' SHA1 sums in their order."""
    sums = sorted(file["checksums"][0]["checksumValue"] for file in files)
    return hashlib.sha1("".join(sums).encode()).hexdigest()


def supplier(fields: dict[str, str]) -> str:
    """A package's maintainer, such as "Name <address>", in the notation of SPDX."""
    name, _, address = fields["Maintainer"].rstrip(">").partition(" <")
    return f"Organization: {name} ({address})"


def own_entry(package: Path, fields: dict[str, str], files: list[Json]) -> Json:
    """One of the packages that are described."""
    digest = hashlib.sha256(package.read_bytes()).hexdigest()
    name, version = fields["Package"], fields["Version"]
    return package_entry(
        name,
        version,
        reference("", name, version, fields["Architecture"]),
        packageFileName=package.name,
        checksums=[{"algorithm": "SHA256", "checksumValue": digest}],
        supplier=supplier(fields),
        filesAnalyzed=True,
        packageVerificationCode={"packageVerificationCodeValue": verification_code(files)},
        licenseConcluded=LICENCE,
        licenseDeclared=LICENCE,
        licenseInfoFromFiles=[NOTHING_KNOWN],
        copyrightText=HOLDERS,
    )


def relation(subject: str, kind: str, thing: str) -> Json:
    return {"spdxElementId": subject, "relationshipType": kind, "relatedSpdxElement": thing}


class Bill:
    """The document while it is made."""

    def __init__(self) -> None:
        self.packages: dict[str, Json] = {}
        self.files: list[Json] = []
        self.relations: list[Json] = []
        self._machine = machine()
        self._own: dict[str, Installed] = {}

    def describe(self, paths: list[Path]) -> None:
        """Adds packages with their files, then what they depend on."""
        for path in paths:
            self._add_own(path)
        waiting = list(self._own.values())
        while waiting:
            waiting += self._add_dependencies(waiting.pop())

    def _add_own(self, path: Path) -> None:
        wanted = ("Package", "Version", "Architecture", "Depends", "Maintainer")
        lines = output("dpkg-deb", "--field", str(path), *wanted)
        fields = dict(line.split(": ", 1) for line in lines.splitlines())
        name = fields["Package"]
        files = file_entries(path, name)
        entry = self.packages[name] = own_entry(path, fields, files)
        self.files += files
        self.relations.append(relation("SPDXRef-DOCUMENT", "DESCRIBES", entry["SPDXID"]))
        self.relations += [relation(entry["SPDXID"], "CONTAINS", file["SPDXID"]) for file in files]
        self._own[name] = Installed(
            name, fields["Version"], fields["Architecture"], fields.get("Depends", "")
        )

    def _add_dependencies(self, dependent: Installed) -> list[Installed]:
        """Adds the direct ones of a package; returns those that are new."""
        known = self._machine | self._own
        new = []
        for names in alternatives(dependent.depends):
            found = next((known[name] for name in names if name in known), None)
            if found is None:
                raise LookupError(f"{dependent.name} needs {' | '.join(names)}, which is not installed")
            ends = identifier("Package", dependent.name), "DEPENDS_ON", identifier("Package", found.name)
            if relation(*ends) not in self.relations:
                self.relations.append(relation(*ends))
            if found.name not in self.packages:
                references = reference("debian/", found.name, found.version, found.architecture)
                self.packages[found.name] = package_entry(found.name, found.version, references)
                new.append(found)
        return new

    def document(self, moment: float) -> Json:
        """The whole, made at a time in seconds since the epoch."""
        content = json.dumps([self.packages, self.files, self.relations], sort_keys=True)
        first = next(iter(self._own.values()))
        version = first.version
        return {
            "spdxVersion": "SPDX-2.3",
            "dataLicense": "CC0-1.0",
            "SPDXID": "SPDXRef-DOCUMENT",
            "name": f"qtutils-{version}",
            "documentNamespace": uuid.uuid5(uuid.NAMESPACE_OID, content).urn,
            "creationInfo": {
                "created": time.strftime("%Y-%m-%dT%H:%M:%SZ", time.gmtime(moment)),
                "creators": [self.packages[first.name]["supplier"], f"Tool: sbom.py-{version}"],
            },
            "packages": list(self.packages.values()),
            "files": self.files,
            "relationships": self.relations,
        }


def main() -> int:
    """Exit code: 0, or 2 with one line of error."""
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("packages", nargs="+", type=Path, metavar="PACKAGE.deb")
    bill = Bill()
    try:
        bill.describe(sorted(parser.parse_args().packages))
    except LookupError as error:
        print(f"sbom.py: {error.args[0]}", file=sys.stderr)
        return 2
    except subprocess.CalledProcessError:
        return 2  # the program that failed has said why
    json.dump(bill.document(float(os.environ.get("SOURCE_DATE_EPOCH", time.time()))), sys.stdout, indent=1)
    print()
    return 0


if __name__ == "__main__":
    sys.exit(main())
