# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""Error codes and the exception that carries them."""

from enum import IntEnum

from .library import library


class ErrorCode(IntEnum):
    """The codes of the C library; see kit/include/qtutils/errors.h."""

    OK = 0
    ARGUMENT = 1
    MEMORY = 2
    MODULE = 3
    ENVIRONMENT = 4
    WINDOW = 5
    NO_ANSWER = 6
    BUSY = 7
    DATE = 8
    NO_ROWS = 9
    ROWS = 10
    SPACE = 11
    CALLBACK = 12


class Error(Exception):
    """What the methods of NodeBrowser raise. Its text is that of the code, and the detail where there is one."""

    def __init__(self, code: ErrorCode, detail: str = "") -> None:
        text: bytes = library().qtutils_error_text(code)
        super().__init__(text.decode() + (f": {detail}" if detail else ""))
        self.code = code


def check(code: int) -> None:
    """Raises Error unless the code is OK."""
    if code != ErrorCode.OK:
        raise Error(ErrorCode(code))
