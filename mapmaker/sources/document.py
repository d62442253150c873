# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""The document: what every source delivers and the store writes."""

import os
from datetime import datetime
from typing import NamedTuple
from urllib.parse import quote


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
