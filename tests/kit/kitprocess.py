# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""Runs Python programs that use the kit in a process of their own: library and module are loaded once in a process."""

import os
import subprocess
import sys
import textwrap
from pathlib import Path

TOP = Path(__file__).resolve().parents[2]
BUILD = Path(os.environ.get("QTUTILS_BUILD", TOP / "build-dev"))
FAKE = BUILD / "tests" / "kit" / "modules" / "fake.so"
LIMIT = 60  # seconds, for a hang only

# What programs for the fake module begin with: the fake's log, and its switches (fakemodule.h).
PREFACE = """
import ctypes, sys
from datetime import datetime, timezone
from qtutils import NO_DATE, Error, ErrorCode, NodeBrowser

class Fake(ctypes.Structure):
    _fields_ = [("bWindow", ctypes.c_int), ("bAnswers", ctypes.c_int), ("iRows", ctypes.c_int),
                ("aiRows", ctypes.c_int * 16), ("iNumAnswers", ctypes.c_int), ("bNoDateInRow1", ctypes.c_int),
                ("iFrameMinutes", ctypes.c_int), ("pcFirstDate", ctypes.c_char_p), ("iLive", ctypes.c_int),
                ("iHoldUps", ctypes.c_int), ("iSelects", ctypes.c_int),
                ("acLog", ctypes.c_char * 65536)]

FAKE = sys.argv[1]
fake = Fake.in_dll(ctypes.CDLL(FAKE), "fake")

def log():
    lines = fake.acLog.decode().splitlines()
    fake.acLog = b""
    return lines

def error_of(function):
    try:
        function()
    except Exception as error:
        return getattr(error, "code", None) or type(error).__name__
"""


def environment(**variables: str) -> dict[str, str]:
    """That of this process, with the kit's library and package."""
    return {
        **os.environ,
        "PYTHONPATH": str(TOP / "kit" / "python"),
        "PYTHONDONTWRITEBYTECODE": "1",
        "QTUTILS_NODEBROWSER": str(BUILD / "libqtutils-nodebrowser.so"),
        **variables,
    }


def run_python(program: str, before: str = "") -> str:
    """What a program prints; it must end well and say nothing on standard error. The line before comes first of all."""
    server = {"MYSQL_HOST": "there", "MYSQL_USER": "somebody", "MYSQL_PWD": "secret"}
    result = subprocess.run(
        [sys.executable, "-c", before + PREFACE + textwrap.dedent(program), str(FAKE)],
        env=environment(TZ="CET-1CEST,M3.5.0,M10.5.0/3", **server),
        capture_output=True,
        text=True,
        timeout=LIMIT,
        check=False,
    )
    assert (result.returncode, result.stderr) == (0, ""), result.stderr
    return result.stdout
