# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""The document: what every source delivers and the store writes."""

import os
import re
from datetime import datetime
from typing import NamedTuple
from urllib.parse import quote

LONGEST_ADDRESS = 1000
SAFE_ADDRESS = re.compile(r"(?:file|https?)://(?:[A-Za-z0-9/._~:?=#@+-]|%[0-9A-Fa-f]{2})+")


class Document(NamedTuple):
    """One text with its columns; the id follows from the position in the collection."""

    date: datetime
    title: str
    url: str
    text: str
    author: str
    urgency: str
    package: str


class SourceError(Exception):
    """A collection cannot be read or is too small; the message is one line."""


def folder_address(folder: str) -> str:
    """The file: URL of a folder, free of every character a shell or a quoted text could take wrongly.

    Letters, digits and ``/._~-`` stay; all other bytes of the path are percent-encoded.
    """
    return "file://" + quote(os.fsencode(os.path.abspath(folder)), safe="/")


def is_safe_address(address: str) -> bool:
    """Whether an address may be put into a shell's command line between double quotes, as readers do.

    Only ``file:``, ``http:`` and ``https:`` will do, and no character that means something to a shell or
    ends an argument; those are for the source to percent-encode.
    """
    return len(address) <= LONGEST_ADDRESS and SAFE_ADDRESS.fullmatch(address) is not None
