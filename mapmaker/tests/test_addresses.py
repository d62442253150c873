# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""Addresses reach a reader's shell as they are stored; it must take them for nothing but addresses."""

import gzip
import os
import subprocess
from pathlib import Path
from urllib.parse import unquote_to_bytes

import numpy as np
import pytest

from mapmaker import store
from mapmaker.sources import changelogs, sample
from mapmaker.sources.document import LONGEST_ADDRESS, Document, folder_address, is_safe_address
from mapmaker.tests.conftest import document

# What a shell makes of each of these names would leave a file named "taken" or more than one argument.
HOSTILE_NAMES = [
    '";touch taken;"',
    "$(touch taken)",
    "`touch taken`",
    "'; touch taken; '",
    "a\ntouch taken\n",
    "a & touch taken &",
    "a | touch taken",
    "a > taken",
    "a),new-tab); touch taken #",
    'a\\" ; touch taken ; \\"',
    "${HOME} $$ $? ~ * ? [a-z] {a,b} !!",
    "--help -remote",
    "größe 🐝 \udcff\udcfe",
    "a\t\r\x01\x7fb%22%24",
]
ENTRY = (
    'foo ({}) unstable; urgency=low\n\n  * "`touch taken`"\n\n -- A <a@x>  Mon, 06 Jan 2020 10:00:00 +0000\n'
)


def opened_by_shell(address: str, folder: Path) -> list[list[str]]:
    """Runs a reader's command line in a shell; gives the arguments of each program that it starts.

    The only program that it can find is a web browser that writes down its arguments and, asked for a window
    that is open already, has none.
    """
    programs, work = folder / "bin", folder / "work"
    programs.mkdir()
    work.mkdir()
    noted = folder / "noted"
    noted.touch()
    browser = programs / "firefox"
    browser.write_text(f'#!/bin/sh\nprintf "%s\\0" $# "$@" >> {noted}\n[ "$1" != -remote ]\n')
    browser.chmod(0o755)
    (programs / "touch").symlink_to("/usr/bin/touch")
    line = f'firefox -remote "openURL({address},new-tab)"      || firefox "{address}"'
    environment = {"PATH": str(programs), "HOME": "/home"}
    done = subprocess.run(["/bin/sh", "-c", line], cwd=work, env=environment, capture_output=True, check=True)
    assert (done.stdout, done.stderr, os.listdir(work)) == (b"", b"", [])
    return calls(noted.read_text().split("\0")[:-1])


def calls(words: list[str]) -> list[list[str]]:
    """Splits what the browser has written into the arguments of each call."""
    found = []
    while words:
        number = int(words[0])
        found.append(words[1 : number + 1])
        words = words[number + 1 :]
    return found


def release_note(root: Path, package: str) -> Document:
    """The document of a package that has one release note with a hostile text."""
    (root / package).mkdir(parents=True)
    (root / package / "changelog.gz").write_bytes(gzip.compress(ENTRY.format("1;`touch-taken`").encode()))
    (made,) = changelogs.read(changelogs.changelog_files(str(root)))
    return made


@pytest.mark.parametrize("name", HOSTILE_NAMES)
def test_a_shell_takes_the_address_of_a_release_note_for_one_argument(tmp_path: Path, name: str) -> None:
    made = release_note(tmp_path / "doc", name)
    assert made.title == "foo 1;`touch-taken`"
    address = store.document_row(0, made)[3]
    assert opened_by_shell(address, tmp_path) == [["-remote", f"openURL({address},new-tab)"], [address]]


def test_a_shell_takes_the_address_of_an_invented_text_for_one_argument(tmp_path: Path) -> None:
    made = sample.make(20, np.random.default_rng(1), "/doc/" + "".join(HOSTILE_NAMES).replace("/", ""))
    (address,) = {store.document_row(number, text)[3] for number, text in enumerate(made)}
    assert opened_by_shell(address, tmp_path)[-1] == [address]


def test_the_shell_of_these_tests_can_be_deceived(tmp_path: Path) -> None:
    with pytest.raises(AssertionError, match="taken"):
        opened_by_shell("file:///$(touch taken)", tmp_path)


@pytest.mark.parametrize("name", HOSTILE_NAMES)
def test_the_folder_can_be_read_from_its_address(tmp_path: Path, name: str) -> None:
    address = folder_address(str(tmp_path / name))
    assert is_safe_address(address)
    assert unquote_to_bytes(address.removeprefix("file://")) == os.fsencode(tmp_path / name)


@pytest.mark.parametrize("sign", list("\"'`$;&|<>()\\\n\t *,!{}[]^\0\x7fäß🐝\u2028\udcff"))
def test_an_address_with_an_unsafe_sign_is_refused(sign: str) -> None:
    for address in (f"https://example.org/{sign}", f"https://example.org/{sign}a", f"{sign}https://a"):
        assert not is_safe_address(address)
        with pytest.raises(store.StoreError, match="^unsafe address [^\n]* of document 't'$"):
            store.document_row(0, document("t")._replace(url=address))


@pytest.mark.parametrize(
    "address",
    ["", "-remote", "--help", "/doc", "javascript:a", "file:a", "http://", "http://a%", "http://a%2"],
)
def test_what_is_no_address_is_refused(address: str) -> None:
    assert not is_safe_address(address)


@pytest.mark.parametrize(
    "address",
    ["http://a", "https://example.org:8080/a.b/~c-d_e?f=g+h@i#j%20k%C3%A4", "file:///usr/share/doc/a"],
)
def test_plain_addresses_are_taken(address: str) -> None:
    assert store.document_row(0, document("t")._replace(url=address))[3] == address


def test_an_address_is_refused_rather_than_cut() -> None:
    start = "http://a/"
    longest = start + "b" * (LONGEST_ADDRESS - len(start))
    assert is_safe_address(longest) and not is_safe_address(longest + "b")


def test_a_map_with_an_unsafe_address_is_not_stored(server: dict[str, str]) -> None:
    texts = [document("good"), document("bad")._replace(url='http://a/";x;"')]
    content = store.Content([texts], [[(0, 0.0, 0)]], [(0, "a")])
    names = store.Names("unsafe_texts", "unsafe_map", "unsafe")
    with pytest.raises(store.StoreError, match="^unsafe address 'http://a/\";x;\"' of document 'bad'$"):
        with store.connection(server) as link:
            store.fill(link, names, content)
            store.swap(link, names.tables())
