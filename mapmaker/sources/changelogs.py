# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""Release notes: the entries of the Debian changelogs that packages install with their documentation."""

import gzip
import os
import re
import textwrap
import zlib
from collections.abc import Iterable, Iterator
from datetime import datetime

from mapmaker.sources.copies import Entry, unique
from mapmaker.sources.document import Document, SourceError, folder_address

HEADER = re.compile(
    r"^(?P<source>[A-Za-z0-9][A-Za-z0-9.+-]*) \((?P<version>[^()\s]+)\)(?:[ \t]+[-+.\w]+)+;(?P<options>.*)$",
    re.MULTILINE,
)
TRAILER = re.compile(
    r"^ -- (?P<author>[^<\n]*)<[^>\n]*> +(?:[A-Za-z]{3}, *)?(?P<day>\d{1,2}) +(?P<month>[A-Za-z]{3})[a-z]*"
    r" +(?P<year>\d{4}) +(?P<hour>\d{1,2}):(?P<minute>\d\d):(?P<second>\d\d)\b",
    re.MULTILINE,
)
URGENCY = re.compile(r"urgency\s*=\s*([a-z]+)", re.IGNORECASE)
MONTHS = "jan feb mar apr may jun jul aug sep oct nov dec".split()
EARLIEST_YEAR = 1990
MOST_BYTES = 64 * 1024 * 1024  # read of one file: a small compressed one may hold far more
BLANKED = {code: " " for code in (*range(0x20), *range(0x7F, 0xA0)) if chr(code) not in "\t\n"}


def decode(content: bytes) -> str:
    """Text of a changelog; lines that are not UTF-8 are read as Windows-1252, control characters as blanks."""
    try:
        text = content.decode("utf-8")
    except UnicodeDecodeError:
        text = "\n".join(decode_line(line) for line in content.split(b"\n"))
    return text.translate(BLANKED)


def decode_line(line: bytes) -> str:
    """One line as UTF-8, else as Windows-1252."""
    try:
        return line.decode("utf-8")
    except UnicodeDecodeError:
        return line.decode("windows-1252", errors="replace")


def entry_date(trailer: re.Match[str]) -> datetime | None:
    """Local time of a trailer line without its zone, or None when there is no such date.

    Deliberate: the author's clock is kept. Moving the times to UTC would change the day of many entries.
    Test: test_changelogs, test_an_entry_has_all_columns.
    """
    try:
        month = MONTHS.index(trailer["month"].lower()) + 1
        hour, minute, second = (int(trailer[part]) for part in ("hour", "minute", "second"))
        date = datetime(int(trailer["year"]), month, int(trailer["day"]), hour, minute, second)
    except ValueError:
        return None
    return date if date.year >= EARLIEST_YEAR else None


def parse(text: str, folder: str) -> Iterator[Entry]:
    """Entries of a changelog found in the documentation folder of a package.

    Entries without a trailer line or with an impossible date are left out, and so are rebuilds
    by machine (binary-only), which all say the same.
    """
    text = text.expandtabs()
    headers = list(HEADER.finditer(text))
    ends = [header.start() for header in headers[1:]] + [len(text)]
    package = os.path.basename(folder)
    address = folder_address(folder)
    for header, end in zip(headers, ends):
        trailer = TRAILER.search(text, header.end(), end)
        date = entry_date(trailer) if trailer else None
        if trailer is None or date is None or "binary-only=yes" in header["options"].lower():
            continue
        urgency = URGENCY.search(header["options"])
        body = textwrap.dedent(text[header.end() : trailer.start()]).strip()
        document = Document(
            date=date,
            title=f"{header['source']} {header['version']}",
            url=address,
            text=body,
            author=trailer["author"].strip(' "'),
            urgency=urgency[1].lower() if urgency else "",
            package=package,
        )
        yield Entry(header["source"], header["version"], headers[0]["source"], document)


def changelog_files(root: str) -> list[str]:
    """Paths of all compressed changelogs directly in the documentation folders, sorted.

    Folders that are links are left out: they lead to folders which are read anyway.
    """
    try:
        folders = sorted(entry.path for entry in os.scandir(root) if entry.is_dir(follow_symlinks=False))
    except OSError as error:
        raise SourceError(f"cannot read the folder {root}: {error.strerror}") from error
    return [os.path.join(folder, name) for folder in folders for name in changelog_names(folder)]


def changelog_names(folder: str) -> list[str]:
    """Sorted names of the compressed changelogs in one folder; none if it may not be read."""
    try:
        names = sorted(os.listdir(folder))
    except OSError:
        return []
    return [name for name in names if name.startswith("changelog") and name.endswith(".gz")]


def read_file(path: str) -> Iterator[Entry]:
    """Entries of one file; a file that is no changelog, or is damaged, has none."""
    try:
        with gzip.open(path) as stream:
            content = stream.read(MOST_BYTES)
    except (OSError, EOFError, zlib.error):
        return iter(())
    return parse(decode(content), os.path.dirname(path))


def read(paths: Iterable[str]) -> Iterator[Document]:
    """All documents of the given changelog files, in order of date and title."""
    return unique(entry for path in paths for entry in read_file(path))
