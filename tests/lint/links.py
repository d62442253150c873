# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""Links and pictures of the pages in Markdown, and what they must lead to."""

import posixpath
import re
from collections.abc import Iterator, Mapping, Set
from urllib.parse import unquote

FENCE = re.compile(r"^ *(`{3,}|~{3,})")
CODE = re.compile(r"(`+)(?!`).+?(?<!`)\1(?!`)")
LINK = re.compile(
    r"\]\(\s*<?([^\s()<>]+)>?[^()]*\)|^ {0,3}\[[^\]]+\]:\s*<?([^\s<>]+)|\b(?:src|href)=\"([^\"]+)\""
)
ELSEWHERE = re.compile(r"[a-z][a-z0-9+.-]*:|//", re.IGNORECASE)
HEADING = re.compile(r"#{1,6} +(.*?)(?: +#+)? *$")
LINK_TEXT = re.compile(r"!?\[([^\]]*)\]\([^()]*\)")


def prose(text: str) -> Iterator[tuple[int, str]]:
    """The lines outside of blocks of code, with their numbers from 1."""
    end = ""
    for number, line in enumerate(text.splitlines(), 1):
        fence = FENCE.match(line)
        if not end and not fence:
            yield number, line
        elif not end and fence:
            end = fence[1]
        elif line.strip().startswith(end) and not line.strip().strip(end[0]):
            end = ""


def targets(text: str) -> Iterator[tuple[int, str]]:
    """What the page's links and pictures lead to, with the numbers of their lines."""
    for number, line in prose(text):
        for found in LINK.finditer(CODE.sub("", line)):
            yield number, next(filter(None, found.groups()))


def anchors(text: str) -> set[str]:
    """What the page's headings can be reached by: small letters, blanks as hyphens, a number behind repeated ones."""
    names: set[str] = set()
    for _, line in prose(text):
        if heading := HEADING.match(line):
            plain = LINK_TEXT.sub(r"\1", heading[1]).lower()
            name = first = re.sub(r"[^\w\- ]", "", plain).replace(" ", "-")
            number = 0
            while name in names:
                number += 1
                name = f"{first}-{number}"
            names.add(name)
    return names


def with_folders(files: Set[str]) -> set[str]:
    """The files and all folders that they lie in, but for the top one."""
    known = set(files)
    for name in files:
        while name := posixpath.dirname(name):
            known.add(name)
    return known


def faults(name: str, pages: Mapping[str, str], known: Set[str]) -> Iterator[str]:
    """A line for each link of a page that leads nowhere. Pages and known files are named from the top folder."""
    for number, target in targets(pages[name]):
        if ELSEWHERE.match(target):
            continue
        path, hash_sign, anchor = unquote(target).partition("#")
        place = posixpath.normpath(posixpath.join(posixpath.dirname(name), path)) if path else name
        if place not in known:
            yield f"{name}:{number}: no such file: {target}"
        elif hash_sign and anchor not in anchors(pages.get(place, "")):
            yield f"{name}:{number}: no such heading: {target}"
