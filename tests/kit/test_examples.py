# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""The examples with the real module, a private server and a private display."""

import subprocess
import sys
import threading
from collections import Counter
from collections.abc import Iterator
from contextlib import contextmanager
from pathlib import Path

import pytest
from conftest import XVFB, started
from kitprocess import BUILD, LIMIT, TOP, environment

sys.path.insert(0, str(TOP / "tools"))

import screen  # noqa: E402

EXAMPLES = BUILD / "kit" / "examples"
TIMELINES = {
    "c": [str(EXAMPLES / "kit_timeline_c")],
    "cpp": [str(EXAMPLES / "kit_timeline_cpp")],
    "python": [sys.executable, str(TOP / "kit" / "examples" / "python" / "timeline.py")],
}
OUTPUT = [
    "node 3: no documents",
    "node 2: 2 documents from 2006-05-10T12:00:00",
    "node 1: 5 documents from 2005-02-27T23:59:59",
    "node 0: 1 documents from 2005-03-01T13:00:00",
]
READY = "the map is shown until standard input ends"
MESSAGES = [
    "CNodeBrowser: Changed Table to news_train",
    "Database is open. Commencing.",
    "Terminating QApplication",
]
FIRST, LAST = bytes((255, 165, 165)), bytes((165, 165, 255))  # hues 0 and 240, saturation 90
BESIDE = EXAMPLES / "kit_beside_sdl"


@contextmanager
def running(command: list[str], environment: dict[str, str]) -> "Iterator[subprocess.Popen[str]]":
    """A program in the top folder; it is ended when the block is left, and when it hangs."""
    pipe = subprocess.PIPE
    with subprocess.Popen(
        command, env=environment, cwd=TOP, stdin=pipe, stdout=pipe, stderr=pipe, text=True
    ) as process:
        end = threading.Timer(2 * LIMIT, process.kill)
        end.start()
        try:
            yield process
        finally:
            end.cancel()
            process.kill()


def lines(process: "subprocess.Popen[str]", last: str) -> list[str]:
    """What a program prints, up to a last line, which is left out, or to its end."""
    assert process.stdout
    printed: list[str] = []
    for line in process.stdout:
        if line.rstrip("\n") == last:
            break
        printed.append(line.rstrip("\n"))
    return printed


def timeline(kind: str, table: str, hierarchy: Path) -> list[str]:
    return [*TIMELINES[kind], "som", "news", table, str(hierarchy)]


def has_colors(*colors: bytes) -> bool:
    """Whether each colour fills an area of the screen as large as a cell."""
    pixels = Counter(screen.capture().pixels())
    return all(pixels[color] > 500 for color in colors)


@pytest.mark.parametrize("kind", TIMELINES)
def test_the_map_is_shown_and_its_dates_printed(
    kind: str, surroundings: dict[str, str], hierarchy: Path
) -> None:
    with running(timeline(kind, "news_train", hierarchy), surroundings) as process:
        printed = lines(process, READY)
        assert printed == OUTPUT
        assert screen.wait_for("the window is shown", lambda: screen.windows("Ombrel"))
        rest, errors = process.communicate(timeout=LIMIT)
    assert (process.returncode, rest, errors.splitlines()) == (0, "", MESSAGES)


@pytest.mark.parametrize("kind", TIMELINES)
def test_rows_are_colored_by_date(kind: str, surroundings: dict[str, str], tmp_path: Path) -> None:
    # given: the node with five documents is the last one that is chosen
    (tmp_path / "two.txt").write_text("1\n\n")
    with running(timeline(kind, "news_swapped", tmp_path / "two.txt"), surroundings) as process:
        assert lines(process, READY)[-1] == "node 0: 5 documents from 2005-02-27T23:59:59"
        screen.wait_for("first and last row have their colours", lambda: has_colors(FIRST, LAST))
        process.communicate(timeout=LIMIT)
    assert process.returncode == 0


@pytest.mark.parametrize("kind", TIMELINES)
def test_a_missing_variable_is_named(kind: str, surroundings: dict[str, str], hierarchy: Path) -> None:
    del surroundings["MYSQL_PWD"]
    with running(timeline(kind, "news_train", hierarchy), surroundings) as process:
        printed, errors = process.communicate(timeout=LIMIT)
    assert (process.returncode, printed) == (1, "")
    assert errors.startswith("timeline: a variable for the database server is unset")
    assert errors.endswith("MYSQL_PWD is unset\n")


@pytest.mark.parametrize("kind", TIMELINES)
def test_a_missing_hierarchy_is_named(kind: str, surroundings: dict[str, str], tmp_path: Path) -> None:
    with running(timeline(kind, "news_train", tmp_path / "none"), surroundings) as process:
        _, errors = process.communicate(timeout=LIMIT)
    assert process.returncode == 1
    assert errors.startswith("timeline: ") and str(tmp_path / "none") in errors


@pytest.mark.parametrize("kind", TIMELINES)
def test_wrong_arguments_get_the_usage(kind: str) -> None:
    result = subprocess.run(
        [*TIMELINES[kind], "som"], env=environment(), capture_output=True, text=True, check=False
    )
    assert result.returncode != 0
    assert result.stderr.startswith("usage: timeline")
    assert len(result.stderr.splitlines()) == 1


def row_of_tree(window: str, row: int) -> None:
    """Clicks an item of the tree, counted from 0."""
    screen.click(window, 60, 45 + 20 * row)


@pytest.mark.skipif(not BESIDE.exists(), reason="libsdl2-dev is not installed")
def test_a_window_of_the_host_lives_beside(surroundings: dict[str, str]) -> None:
    surroundings["SDL_VIDEODRIVER"] = "x11"
    with running([str(BESIDE), "som", "news", "news_train"], surroundings) as process:
        assert lines(process, "1 rows") == []
        (browser,) = screen.wait_for("the browser is shown", lambda: screen.windows("Ombrel"))
        (own,) = screen.wait_for("the host's window is shown", lambda: screen.windows("beside"))
        # when: a key in the host's window
        screen.output_of("xdotool", "windowactivate", "--sync", own)
        screen.press("1")
        # then: the browser chooses the node, the host's window draws its rows
        assert lines(process, "5 rows") == []
        screen.wait_for("bars are drawn", lambda: has_bars(own, 5))
        # when: a click in the browser
        screen.output_of("xdotool", "windowactivate", "--sync", browser)
        row_of_tree(browser, 0)
        # then
        assert lines(process, "1 rows") == []
        screen.wait_for("one bar is drawn", lambda: has_bars(own, 1))
        # when
        screen.output_of("xdotool", "windowactivate", "--sync", own)
        screen.press("alt+F4")
        _, errors = process.communicate(timeout=LIMIT)
    assert (process.returncode, errors.splitlines()) == (0, MESSAGES)


def has_bars(window: str, bars: int) -> bool:
    """Whether the host's window has this number of bars."""
    box = screen.box_of(window)
    row = screen.capture().cut(box).rows[box.height // 2]
    bar = bytes((200, 0, 100))
    return row.count(bar * 10) == bars and row.count(bar) == 10 * bars


def test_python_is_told_of_a_lost_display(surroundings: dict[str, str]) -> None:
    # given: a display that can be taken away
    program = """
import sys
from qtutils import Error, NodeBrowser

with NodeBrowser("som", "news") as browser:
    print("open", flush=True)
    sys.stdin.readline()
    try:
        while browser.num_rows == 0:  # until the window has noticed
            pass
    except Error as error:
        print(error.code.name, flush=True)
        """
    with started(XVFB, surroundings) as display:
        assert display.stdout
        surroundings["DISPLAY"] = f":{display.stdout.readline().strip()}"
        with running([sys.executable, "-c", program], surroundings) as process:
            assert lines(process, "open") == []
            # when
            display.kill()
            display.wait()
            printed, _ = process.communicate("\n", timeout=LIMIT)
    # then: and the host lives on to its end
    assert (process.returncode, printed) == (0, "NO_ANSWER\n")
