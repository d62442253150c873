# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""The tables of a window by the names that its host gives it."""

import re
from typing import NamedTuple

PLAIN_NAME = re.compile(r"[A-Za-z0-9_$]{1,64}")


class NameFault(Exception):
    """A name that the window could not use without quotes; the message is one line."""


class HostNames(NamedTuple):
    """Two databases and the table of assignments."""

    som_database: str
    source_database: str
    table: str

    def check(self) -> None:
        """Raises NameFault for names that need quotes."""
        for name in self:
            if not PLAIN_NAME.fullmatch(name):
                raise NameFault(f"bad name {name!r}: only A-Z, a-z, 0-9, _ and $ and up to 64 characters")

    @property
    def keyword_table(self) -> str:
        """The keywords' table: "som" for a trailing "train", else the table itself."""
        return self.table.removesuffix("train") + "som" if self.table.endswith("train") else self.table

    def tables(self) -> tuple[str, ...]:
        """Full names of the tables of documents, assignments and keywords, each once."""
        names = (self.table, self.keyword_table)
        som = (f"{self.som_database}.{name}" for name in dict.fromkeys(names))
        return (f"{self.source_database}.document", *som)
