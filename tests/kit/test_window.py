# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""All of the Python package, and so of the C library, with the real module."""

import subprocess
import sys

from kitprocess import LIMIT, TOP

BEGINNING = """
from datetime import datetime
from qtutils import Error, NodeBrowser

def attempt(call):
    try:
        call()
    except Error as error:
        print(error.code.name)

with NodeBrowser("som", "news") as browser:
    browser.set_som_table("news_train")
    browser.pass_hierarchy([[1, 2, 3], [], [], []])
    browser.select(1)
"""


def run(program: str, environment: dict[str, str]) -> list[str]:
    """The lines that a program prints after the common beginning; it must end well."""
    result = subprocess.run(
        [sys.executable, "-c", BEGINNING + program],
        env=environment,
        cwd=TOP,
        capture_output=True,
        text=True,
        timeout=LIMIT,
        check=False,
    )
    assert result.returncode == 0, result.stderr
    return result.stdout.splitlines()


def test_every_question_is_answered(surroundings: dict[str, str]) -> None:
    program = """
    browser.show()
    browser.color_rows(lambda minutes: print(list(minutes)) or [(0, 0, 255)] * len(minutes))
    browser.set_row_colors([(0, 90, 255)] * browser.num_rows)
    browser.mark_row(datetime(2005, 3, 2), 12)
    print(browser.first_date_in_frame, browser.first_date_in_selection)
    print(60 * browser.date_to_int(datetime(2005, 3, 1, 13)) == datetime(2005, 3, 1, 13).timestamp())
    browser.hide_table()
    print(browser.num_rows)
    """
    assert run(program, surroundings) == [
        "[0, 2010, 2220, 3376, 4320]",
        "2005-03-01 13:00:00 2005-02-27T23:59:59",
        "True",
        "5",
    ]


def test_an_empty_node_has_no_first_date(surroundings: dict[str, str]) -> None:
    program = """
    browser.select(3)
    browser.color_rows(lambda minutes: print(len(minutes)) or [])
    attempt(lambda: browser.first_date_in_selection)
    attempt(lambda: browser.set_row_colors([(0, 0, 0)]))
    """
    assert run(program, surroundings) == ["0", "NO_ROWS", "ROWS"]


def test_a_failed_callback_blocks_nothing(surroundings: dict[str, str]) -> None:
    program = """
    for _ in range(3):
        try:
            browser.color_rows(lambda minutes: 1 / 0)
        except ZeroDivisionError:
            print(browser.num_rows)
    """
    assert run(program, surroundings) == ["5", "5", "5"]


def test_windows_follow_each_other(surroundings: dict[str, str]) -> None:
    program = """
    browser.color_rows(lambda minutes: [(0, 0, 255)] * 5)
for node in (2, 1):
    with NodeBrowser("som", "news") as other:
        other.set_som_table("news_train")
        other.select(node)
        other.color_rows(lambda minutes: print(list(minutes)) or [(0, 0, 255)] * len(minutes))
    """
    assert run(program, surroundings) == ["[0, 1440]", "[0, 2010, 2220, 3376, 4320]"]


def test_marks_in_great_numbers_are_carried_out(surroundings: dict[str, str]) -> None:
    program = """
    for day in [1, 2] * 500 + [3]:
        browser.mark_row(datetime(2005, 3, day), 1)
    print(browser.first_date_in_frame)
    """
    assert run(program, surroundings) == ["2005-03-03 00:00:00"]
