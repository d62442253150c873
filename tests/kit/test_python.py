# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""The Python package: what the module gets, what comes back, what is raised."""

import subprocess
import sys

import pytest
from kitprocess import environment, run_python

# With NumPy, and in a process that finds none.
KINDS = {"arrays": "", "lists": "import sys; sys.modules['numpy'] = None"}
WITH = "with NodeBrowser('som', 'texts', FAKE) as browser:\n    "


def test_a_with_block_is_a_construction() -> None:
    program = """
        with NodeBrowser("som", "texts", FAKE) as browser:
            other = NodeBrowser("a", "b", module=FAKE)
            print(fake.iLive)
            other.close()
            other.close()
            print(fake.iLive)
        print(fake.iLive, log())
    """
    assert run_python(program).splitlines() == [
        "2",
        "1",
        "0 ['CNodeBrowser som texts', 'CNodeBrowser a b', 'FREE_CNodeBrowser handle', 'FREE_CNodeBrowser handle']",
    ]


def test_a_forgotten_browser_is_closed() -> None:
    assert run_python("NodeBrowser('som', 'texts', FAKE)\nprint(fake.iLive)") == "0\n"


def test_an_open_browser_doesn_t_hinder_the_end() -> None:
    assert run_python("browser = NodeBrowser('som', 'texts', FAKE)\nprint(fake.iLive)") == "1\n"


def test_a_failed_opening_raises_code_and_detail() -> None:
    program = """
        try:
            NodeBrowser("som", "texts", "none.so")
        except Error as error:
            print(repr(error.code), error, sep="\\n")
        fake.bWindow = 0
        print(error_of(lambda: NodeBrowser("som", "texts", FAKE)), fake.iLive)
    """
    assert run_python(program).splitlines() == [
        "<ErrorCode.MODULE: 3>",
        "the module can't be loaded: none.so: cannot open shared object file: No such file or directory",
        "5 0",
    ]


def test_without_the_c_library_there_is_an_os_error() -> None:
    program = (
        "import qtutils\ntry:\n    qtutils.NodeBrowser('a', 'b')\nexcept OSError as error:\n    print(error)"
    )
    command = [sys.executable, "-c", program]
    variables = environment(QTUTILS_NODEBROWSER="")
    result = subprocess.run(command, env=variables, capture_output=True, text=True, check=True)
    assert result.stdout.startswith("libqtutils-nodebrowser.so.0: cannot open")


def test_commands_pass_their_arguments() -> None:
    program = """
        with NodeBrowser("som", "texts", FAKE) as browser:
            log()
            browser.set_som_table("news_train")
            browser.pass_hierarchy([[2, 1], [], ()])
            browser.show()
            browser.hide_table()
            browser.select(7)
            print(*log(), sep="\\n")
    """
    assert run_python(program).splitlines() == [
        "setSOMTable news_train",
        "passNodeHierarchy 0 of 3: 2 1",
        "passNodeHierarchy 1 of 3:",
        "passNodeHierarchy 2 of 3:",
        "show",
        "hideTable",
        "select 7",
    ]


def test_questions_give_the_answers() -> None:
    program = """
        fake.iFrameMinutes, fake.pcFirstDate = 90, b"2005-03-01T13:00:00"
        with NodeBrowser("som", "texts", FAKE) as browser:
            print(browser.num_rows, browser.first_date_in_frame, browser.first_date_in_selection)
            print(browser.date_to_int(datetime(2005, 3, 1)))
    """
    assert run_python(program).splitlines() == ["3 1970-01-01 02:30:00 2005-03-01T13:00:00", "19"]


def test_marks_are_written_in_local_time() -> None:
    program = """
        with NodeBrowser("som", "texts", FAKE) as browser:
            log()
            browser.mark_row(datetime(2005, 3, 1, 13), 2)
            browser.mark_row(datetime(2005, 7, 1, 12, 0, 5, tzinfo=timezone.utc))
            browser.num_rows
            print(log())
    """
    marks = "['markRow 2', 'markRow 0', 'marked 2005-03-01 13:00:00', 'marked 2005-07-01 14:00:05']"
    assert run_python(program) == marks + "\n"


@pytest.mark.parametrize("kind", KINDS)
def test_dates_become_colors(kind: str) -> None:
    program = """
    def colors(minutes):
        print(type(minutes).__name__, minutes[1] == NO_DATE, minutes[2])
        return [(i, 80, 200) for i in range(len(minutes))]

    fake.bNoDateInRow1 = 1
    with NodeBrowser("som", "texts", FAKE) as browser:
        log()
        browser.color_rows(colors)
        print(log())
        fake.iRows = 0
        browser.color_rows(lambda minutes: [])
    """
    assert run_python(program, KINDS[kind]).splitlines() == [
        "ndarray True 20" if kind == "arrays" else "list True 20",
        "['fillDate', 'setRowColors', 'row 0: 0 80 200', 'row 1: 1 80 200', 'row 2: 2 80 200']",
    ]


def test_colors_may_be_an_array_of_any_kind() -> None:
    program = """
        import numpy
        with NodeBrowser("som", "texts", FAKE) as browser:
            log()
            browser.set_row_colors(numpy.arange(18, dtype=numpy.int64).reshape(3, 6)[:, ::2])
            print(log())
    """
    assert run_python(program) == "['setRowColors', 'row 0: 0 2 4', 'row 1: 6 8 10', 'row 2: 12 14 16']\n"


@pytest.mark.parametrize("kind", KINDS)
@pytest.mark.parametrize("colors", ["[(1, 2, 3)]", "[(1, 2)] * 3", "[]", "[(1, 2), (1, 2, 3, 4), (1, 2, 3)]"])
def test_colors_of_another_shape_are_refused(kind: str, colors: str) -> None:
    program = f"""{WITH}log()
    print(error_of(lambda: browser.color_rows(lambda minutes: {colors})))
    print(log()[:3], browser.num_rows)
    """
    assert run_python(program, KINDS[kind]).splitlines() == [
        "ValueError",
        "['fillDate', 'setRowColors', 'row 0: 0 0 255'] 3",
    ]


def test_a_node_is_selected_with_its_colors() -> None:
    program = f"""{WITH}log()
    browser.select_colored(5, lambda minutes: [(1, 2, 3)] * 3)
    print(log()[6:])
    print(error_of(lambda: browser.select_colored(-1, len)), error_of(lambda: browser.select_colored(5, len)))
    print(log().count("select 5"))
    """
    assert run_python(program).splitlines() == [
        "['select 5', 'setRowColors', 'before 3', 'row 0: 1 2 3', 'row 1: 1 2 3', 'row 2: 1 2 3']",
        "1 ValueError",
        "1",
    ]


def test_what_the_callback_raises_comes_through() -> None:
    program = f"""{WITH}log()
    try:
        browser.color_rows(lambda minutes: sys.exit(5))
    except SystemExit as error:
        print(error.code, log()[1:3], browser.num_rows)
    """
    assert run_python(program) == "5 ['setRowColors', 'row 0: 0 0 255'] 3\n"


def test_a_callback_can_t_call_back() -> None:
    program = f"""{WITH}print(error_of(lambda: browser.color_rows(lambda minutes: browser.select(1))))"""
    assert run_python(program) == "7\n"


def test_rows_that_change_are_asked_again() -> None:
    program = f"""{WITH}fake.aiRows[0], fake.aiRows[1], fake.iNumAnswers = 3, 5, 2
    seen = []
    browser.color_rows(lambda minutes: seen.append(len(minutes)) or [(0, 0, 0)] * len(minutes))
    print(seen)
    """
    assert run_python(program) == "[3, 5]\n"


def test_bad_arguments_are_refused() -> None:
    program = f"""{WITH}log()
    for call in (lambda: browser.select(-1), lambda: browser.select(2**32 + 1), lambda: browser.set_som_table("a\\0b"),
                 lambda: browser.pass_hierarchy([[2**32], []]), lambda: browser.set_row_colors([(1, 2, 3)]),
                 lambda: browser.first_date_in_selection, lambda: NodeBrowser("a\\0", "b", FAKE)):
        print(error_of(call))
    print(log())
    browser.close()
    print(error_of(browser.show))
    """
    assert run_python(program).split("\n") == [
        "1",
        "OverflowError",
        "ValueError",
        "OverflowError",
        "10",
        "9",
        "ValueError",
        "[]",
        "1",
        "",
    ]


def test_codes_are_those_of_the_c_library() -> None:
    program = """
        from qtutils.library import library
        codes = [code for code in range(100) if library().qtutils_error_text(code) != b"unknown error"]
        print(codes == list(ErrorCode), len(codes))
    """
    assert run_python(program) == "True 13\n"
