# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""Release notes, well-formed and hostile."""

import gzip
import re
from datetime import datetime
from pathlib import Path

import pytest

from mapmaker.sources import changelogs
from mapmaker.sources.document import SourceError, folder_address


def entry(
    source: str, version: str, text: str = "A change.", date: str = "Mon, 06 Jan 2020 23:30:00 -0900"
) -> str:
    """One entry in Debian's format."""
    return (
        f"{source} ({version}) unstable; urgency=HIGH\n\n  * {text}\n\n -- Ann Author <ann@x.org>  {date}\n\n"
    )


def put(root: Path, package: str, content: str | bytes, name: str = "changelog.Debian.gz") -> None:
    """Writes a compressed changelog."""
    (root / package).mkdir(exist_ok=True)
    data = content.encode() if isinstance(content, str) else content
    (root / package / name).write_bytes(gzip.compress(data))


def titles(root: Path) -> list[str]:
    """Titles of all documents below the folder."""
    return [document.title for document in changelogs.read(changelogs.changelog_files(str(root)))]


def test_an_entry_has_all_columns(tmp_path: Path) -> None:
    put(tmp_path, "libfoo1", entry("foo", "1.0-1"))
    (document,) = changelogs.read(changelogs.changelog_files(str(tmp_path)))
    assert document == (
        datetime(2020, 1, 6, 23, 30),
        "foo 1.0-1",
        f"file://{tmp_path}/libfoo1",
        "* A change.",
        "Ann Author",
        "high",
        "libfoo1",
    )


def test_lines_that_are_not_utf8_are_windows_1252() -> None:
    assert changelogs.decode("Größe\n".encode() + b"Gr\xf6\xdfe \x80\x81") == "Größe\nGröße €\ufffd"


@pytest.mark.parametrize("sign", ["\r", "\x1b", "\x7f", "\x85", "\0", "\x0c"])
def test_control_characters_are_blanks(sign: str) -> None:
    text = changelogs.decode(entry("foo", "1", text=f"a{sign}b").replace("Ann", f"An{sign}n").encode())
    (found,) = changelogs.parse(text, "/doc/foo")
    assert (found.document.text, found.document.author) == ("* a b", "An n Author")


def test_tabs_are_blanks() -> None:
    text = entry("foo", "1", text="a\tb").replace("Ann Author", "Ann\tAuthor")
    (found,) = changelogs.parse(text, "/doc/foo")
    assert (found.document.text, found.document.author) == ("* a   b", "Ann Author")


def test_a_version_with_a_control_character_is_none() -> None:
    assert list(changelogs.parse(changelogs.decode(entry("foo", "1\0").encode()), "/doc/foo")) == []


def test_a_huge_line_takes_no_huge_time() -> None:
    # in work that grows with the square of the length, these would take days
    blanks = " " * 2_000_000
    for line in (
        f" -- {blanks}",
        f" -- Ann <{blanks}",
        f" -- Ann <a> {blanks}",
        f"foo (1){blanks}a",
        f"foo ({blanks}",
    ):
        text = entry("foo", "2").replace("\n -- ", f"\n{line}\n -- ") + line
        assert [found.version for found in changelogs.parse(text, "/doc/foo")] == ["2"]


def test_of_a_file_that_unpacks_to_far_more_the_beginning_is_read(tmp_path: Path) -> None:
    put(tmp_path, "foo", entry("foo", "1") + "\n" * changelogs.MOST_BYTES + entry("foo", "0"))
    assert titles(tmp_path) == ["foo 1"]


@pytest.mark.parametrize(
    "broken",
    [
        "foo (1) unstable; urgency=low\n\n  * No trailer.\n\n",
        entry("foo", "1", date="Mon, 31 Feb 2020 10:00:00 +0000"),
        entry("foo", "1", date="Mon, 03 Foo 2020 10:00:00 +0000"),
        entry("foo", "1", date="Mon, 03 Jan 2020 25:00:00 +0000"),
        entry("foo", "1", date="Mon, 01 Jan 0001 10:00:00 +0000"),
        entry("foo", "1", date="yesterday"),
        entry("foo", "1").replace("urgency=HIGH", "urgency=low, binary-only=yes"),
        entry("foo", "1", text="").replace("*", ""),
        "foo (1 unstable; urgency=low\n",
    ],
)
def test_a_broken_entry_is_skipped_and_the_next_is_read(tmp_path: Path, broken: str) -> None:
    put(tmp_path, "foo", entry("foo", "2") + broken + entry("foo", "0"))
    assert sorted(titles(tmp_path)) == ["foo 0", "foo 2"]


def test_trailers_of_old_times_are_understood(tmp_path: Path) -> None:
    put(tmp_path, "foo", entry("foo", "1", date="Fri,  3 Mar 1997 9:05:07 -0700"))
    (document,) = changelogs.read(changelogs.changelog_files(str(tmp_path)))
    assert document.date == datetime(1997, 3, 3, 9, 5, 7)


def test_an_entry_of_several_files_counts_once(tmp_path: Path) -> None:
    put(tmp_path, "foo", entry("foo", "1"))
    put(tmp_path, "foo-doc", entry("foo", "1"))
    assert titles(tmp_path) == ["foo 1"]


@pytest.mark.parametrize("first, second", [("aaa", "zzz"), ("zzz", "aaa")])
def test_of_conflicting_copies_the_sources_own_wins(tmp_path: Path, first: str, second: str) -> None:
    later = "Tue, 07 Jan 2020 10:00:00 +0000"
    put(tmp_path, first, entry("foo", "1", text="own"))
    put(tmp_path, second, entry("bar", "9") + entry("foo", "1", text="foreign", date=later))
    texts = {
        document.title: document.text
        for document in changelogs.read(changelogs.changelog_files(str(tmp_path)))
    }
    assert texts["foo 1"] == "* own"


def test_of_equal_copies_the_newest_wins(tmp_path: Path) -> None:
    put(tmp_path, "a", entry("foo", "1", text="late", date="Tue, 07 Jan 2020 10:00:00 +0000"))
    put(tmp_path, "foo", entry("foo", "1", text="early"))
    (document,) = changelogs.read(changelogs.changelog_files(str(tmp_path)))
    assert document.text == "* late"


def test_damaged_files_and_linked_folders_are_left_out(tmp_path: Path) -> None:
    put(tmp_path, "foo", entry("foo", "1"))
    put(tmp_path, "bar", "", "changelog.gz")
    (tmp_path / "bar" / "changelog.gz").write_bytes(gzip.compress(entry("bar", "1").encode())[:-9])
    (tmp_path / "link").symlink_to(tmp_path / "foo")
    (tmp_path / "foo" / "changelog.txt").write_text(entry("foo", "7"))
    assert len(changelogs.changelog_files(str(tmp_path))) == 2
    assert titles(tmp_path) == ["foo 1"]


def test_an_unreadable_folder_is_one_line(tmp_path: Path) -> None:
    with pytest.raises(SourceError, match="^cannot read the folder .*/absent: No such file or directory$"):
        changelogs.changelog_files(str(tmp_path / "absent"))


def test_addresses_hold_nothing_a_shell_could_take_wrongly() -> None:
    address = folder_address("/doc/lib c++ $(x) `y` 'z' \"w\";&|<>%~ü\\#?*")
    assert re.fullmatch(r"file:(?:[A-Za-z0-9/._~-]|%[0-9A-F]{2})+", address)
    assert address.startswith("file:///doc/lib%20c%2B%2B%20%24%28x%29%20%60y%60%20%27z%27")
    assert address.endswith("%25~%C3%BC%5C%23%3F%2A")
