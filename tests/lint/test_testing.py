# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""docs/testing.md names a test for each case, and only tests that exist. Bad samples show that faults are found."""

from pathlib import Path

import pytest
import testpage

TOP = Path(__file__).resolve().parents[2]
PAGE = "docs/testing.md"
HEAD = "# Page\n\n| Case | Tests |\n|---|---|\n"
GOOD = "| A row has a colour | `tst_module_table::rowsHaveColors`, `tst_table::aRowHasAColor` |\n"
OTHER = "| Steps are named | `tests/tools/test_steps.py::test_a_step` |\n"
KNOWN = {
    "tst_module_table": testpage.Program("module", frozenset({"rowsHaveColors"})),
    "tst_table": testpage.Program("widget", frozenset({"aRowHasAColor"})),
    "tests/tools/test_steps.py": testpage.Program("tools", frozenset({"test_a_step"})),
}


def sources() -> dict[str, str]:
    """All test programs of the tree by their names below the top folder."""
    patterns = ("tests/*/tst_*.cpp", "tests/*/test_*.py", "mapmaker/tests/test_*.py")
    files = [file for pattern in patterns for file in TOP.glob(pattern)]
    return {file.relative_to(TOP).as_posix(): file.read_text(encoding="utf-8") for file in files}


def test_the_programs_tests_are_seen() -> None:
    known = testpage.programs(sources())
    assert {"unit", "widget", "module", "host", "tools"} <= {program.ring for program in known.values()}
    assert [name for name, program in known.items() if not program.tests] == []
    assert "fillDateGivesMinutesAfterTheFirstRow" in known["tst_table_dates"].tests
    assert "test_the_programs_tests_are_seen" in known["tests/lint/test_testing.py"].tests


def test_the_page_names_tests_that_exist() -> None:
    text = (TOP / PAGE).read_text(encoding="utf-8")
    assert len(list(testpage.rows(text))) > 200
    faults = "\n".join(f"{PAGE}:{fault}" for fault in testpage.faults(text, testpage.programs(sources())))
    if faults:
        pytest.fail(faults, pytrace=False)


def test_a_good_page_has_no_faults() -> None:
    assert testpage.faults(HEAD + GOOD + OTHER, KNOWN) == []


def test_a_table_of_other_things_is_passed_over() -> None:
    rings = "| Ring | Folder | What it sees |\n|---|---|---|\n| unit | `tests/unit` | a class |\n\n"
    assert testpage.faults(rings + HEAD + GOOD, KNOWN) == []


@pytest.mark.parametrize(
    "row, fault",
    [
        ("| A | `tst_made_up::aRowHasAColor` |", "no such program: tst_made_up"),
        ("| A | `tst_table::aRowHasNone` |", "no such test: tst_table::aRowHasNone"),
        ("| A | `tests/tools/test_none.py::test_a_step` |", "no such program: tests/tools/test_none.py"),
        (
            "| A | `tests/tools/test_steps.py::test_b` |",
            "no such test: tests/tools/test_steps.py::test_b",
        ),
        ("| A | |", "no test"),
        ("|  | `tst_table::aRowHasAColor` |", "no case"),
        ("| A | later |", "no list of tests: later"),
        ("| A | tst_table::aRowHasAColor |", "no list of tests: tst_table::aRowHasAColor"),
        ("| A | `tst_table` |", "no list of tests: `tst_table`"),
        (
            "| A | `tst_table::aRowHasAColor` and more |",
            "no list of tests: `tst_table::aRowHasAColor` and more",
        ),
        ("| A |", "1 cells"),
        ("| A | `tst_table::aRowHasAColor` | B |", "3 cells"),
        ("| A | `tst_table::aRowHasAColor`, `tst_table::aRowHasAColor` |", "a test stands there twice"),
        (
            "| A | `tst_table::aRowHasAColor`, `tst_module_table::rowsHaveColors` |",
            "the outermost ring comes first: widget, module",
        ),
        (
            "| a row has a colour. | `tst_table::aRowHasAColor` |",
            "the case of line 5 again: a row has a colour.",
        ),
    ],
)
def test_a_bad_row_is_found(row: str, fault: str) -> None:
    assert testpage.faults(f"{HEAD}{GOOD}{row}\n", KNOWN) == [f"6: {fault}"]


@pytest.mark.parametrize("table", ["| Case | Test |\n|---|---|\n| A | |\n", "| Case | Tests |\n|---|---|\n"])
def test_another_table_is_found(table: str) -> None:
    assert testpage.faults(HEAD + GOOD + "\n" + table, KNOWN) == ["7: no table of cases"]


def test_a_program_without_a_case_is_found() -> None:
    assert testpage.faults(HEAD + OTHER, KNOWN) == [
        "no case names tst_module_table",
        "no case names tst_table",
    ]


def test_a_bar_behind_a_backslash_is_text() -> None:
    assert testpage.cells(r"| a \| b | `c` |") == [r"a \| b", "`c`"]


def test_only_slots_that_test_are_tests() -> None:
    text = (
        "class T {\n    void before() {}\nprivate Q_SLOTS:\n    void init() {}\n    void aRow_data() {}\n"
        "    void aRow()\n    {\n        void inside();\n    }\n    // void gone() {}\nprivate:\n"
        "    void helper() {}\n};\nvoid outside() {}\n"
    )
    assert testpage.programs({"tests/unit/tst_t.cpp": text}) == {
        "tst_t": testpage.Program("unit", frozenset({"aRow"}))
    }
