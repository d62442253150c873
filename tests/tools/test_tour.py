# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""The tour's eyes and hands, its talk with the host, and how it ends."""

import subprocess
import sys
from collections.abc import Iterator
from pathlib import Path

import pytest

TOP = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(TOP / "tools"))

import browserwindow  # noqa: E402
import screen  # noqa: E402
from browserwindow import BrowserWindow, run  # noqa: E402
from hostprocess import HostProcess  # noqa: E402
from pngfile import png  # noqa: E402
from screen import Box, Picture, TourError  # noqa: E402

WHITE, BLACK = b"\xff\xff\xff", b"\0\0\0"
COLORFUL = Picture(tuple(bytes(3 * row + 7 * place & 255 for place in range(300)) for row in range(100)))

# Answers each statement with what it says; "bad" ends it as an error does.
HOST = """#!/bin/sh
while read -r word rest; do
    case $word in
        .echo) echo "$rest" ;;
        bad) echo "standard input:1: unknown"; exit 2 ;;
        *) echo "CNodeBrowser: called"; echo "piNumRows = $rest" ;;
    esac
done
exit 5
"""


def plain(width: int, height: int) -> Picture:
    return Picture((WHITE * width,) * height)


@pytest.fixture
def host(tmp_path: Path) -> Iterator[HostProcess]:
    program = tmp_path / "host"
    program.write_text(HOST)
    program.chmod(0o755)
    with HostProcess(program, Path("module.so")) as process:
        yield process


def test_a_picture_of_one_colour_is_blank() -> None:
    assert plain(100, 100).is_blank()


def test_a_picture_with_a_black_line_is_blank() -> None:
    assert Picture((BLACK * 100, *plain(100, 99).rows)).is_blank()


def test_a_picture_of_many_colours_is_not_blank() -> None:
    assert not COLORFUL.is_blank()


def test_the_difference_is_the_share_of_changed_pixels() -> None:
    assert plain(10, 4).difference(plain(10, 4)) == 0
    assert plain(10, 4).difference(Picture((BLACK * 10, *plain(10, 3).rows))) == 0.25
    assert plain(10, 4).difference(plain(10, 5)) == 1


def test_a_cut_has_the_pixels_of_the_box() -> None:
    picture = Picture((WHITE * 3, WHITE + BLACK * 2, WHITE + BLACK * 2))
    assert picture.cut(Box(1, 1, 2, 2)) == Picture((BLACK * 2, BLACK * 2))


def test_boxes_have_parts_and_a_frame_around_two() -> None:
    assert Box(10, 20, 200, 100).part(0.5, 0.25, 1, 0.75) == Box(110, 45, 100, 50)
    assert Box(0, 5, 10, 10).with_other(Box(20, 0, 5, 5)) == Box(0, 0, 25, 15)


def test_a_written_picture_is_read_the_same_by_others(tmp_path: Path) -> None:
    path = tmp_path / "picture.png"
    path.write_bytes(png(COLORFUL.rows))
    command = ["identify-im6.q16", "-format", "%w %h %m", str(path)]
    assert subprocess.run(command, capture_output=True, text=True, check=True).stdout == "100 100 PNG"


def test_a_picture_is_taken_when_it_stays_the_same(monkeypatch: pytest.MonkeyPatch) -> None:
    shots = iter([plain(9, 9), COLORFUL, plain(8, 8), plain(8, 8), COLORFUL, COLORFUL])
    monkeypatch.setattr(screen, "capture", lambda: next(shots))
    monkeypatch.setattr(screen, "PAUSE", 0)
    picture = screen.still_picture(Box(0, 0, 100, 100), lambda now: not now.is_blank())
    assert picture == COLORFUL
    assert list(shots) == []


def test_a_condition_that_never_holds_is_reported(monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.setattr(screen, "LIMIT", 0.1)
    with pytest.raises(TourError, match="in vain: the sky falls"):
        screen.wait_for("the sky falls", lambda: None)


def test_answers_of_the_host_are_read(host: HostProcess) -> None:
    assert host.ask("getNumRows 12") == ["CNodeBrowser: called", "piNumRows = 12"]
    assert host.number("getNumRows 13") == 13


def test_an_answer_without_a_number_is_reported(host: HostProcess) -> None:
    with pytest.raises(TourError, match="no number in the answer to: getNumRows many"):
        host.number("getNumRows many")


def test_a_host_that_ends_is_reported_with_its_last_words(host: HostProcess) -> None:
    with pytest.raises(TourError, match="it said last: standard input:1: unknown"):
        host.ask("bad")


def test_the_exit_code_of_the_host_is_handed_on(host: HostProcess) -> None:
    assert host.close() == 5


@pytest.fixture
def calls(tmp_path: Path, monkeypatch: pytest.MonkeyPatch) -> Path:
    """A fake xdotool writes down how it is called."""
    path = tmp_path / "calls"
    program = tmp_path / "xdotool"
    program.write_text(f'#!/bin/sh\necho "$*" >> {path}\necho 42\n')
    program.chmod(0o755)
    monkeypatch.setenv("PATH", str(tmp_path), prepend=":")
    return path


def test_hands_click_press_and_type(calls: Path) -> None:
    screen.click("7", 10, 20)
    screen.click("7", 10, 20, times=2)
    screen.click("7", 10, 20, button=3)
    screen.press("Down", "Return")
    screen.type_text("a word")
    assert screen.active_window() == "42"
    assert calls.read_text().splitlines() == [
        "mousemove --sync --window 7 10 20 click --repeat 1 1",
        "mousemove --sync --window 7 10 20 click --repeat 2 1",
        "mousemove --sync --window 7 10 20 click --repeat 1 3",
        "key Down Return",
        "type a word",
        "getactivewindow",
    ]


BAD_HOST = """#!/bin/sh
while read -r word rest; do [ "$word" != .echo ] || echo "$rest"; done
exit 5
"""


def run_with(take: browserwindow.Take, folder: Path, monkeypatch: pytest.MonkeyPatch) -> int:
    program = folder / "host"
    program.write_text(BAD_HOST)
    program.chmod(0o755)
    places = ["--host", str(program), "--module", "m.so", "--hierarchy", "h", "--output", str(folder / "new")]
    monkeypatch.setattr(sys, "argv", ["tools/tour.py", *places])
    monkeypatch.setattr(browserwindow, "capture", lambda: Picture((WHITE * 4,) * 4))
    return run("Takes pictures.", take)


def test_a_failed_check_is_one_line_and_a_picture(
    tmp_path: Path, monkeypatch: pytest.MonkeyPatch, capsys: pytest.CaptureFixture[str]
) -> None:
    def take(window: BrowserWindow, hierarchy: Path) -> None:
        raise TourError("the sky falls")

    assert run_with(take, tmp_path, monkeypatch) == 1
    picture = tmp_path / "new/failed.png"
    assert capsys.readouterr().err == f"tour: the sky falls; see {picture}\n"
    assert picture.read_bytes().startswith(b"\x89PNG")


def test_a_host_that_ends_badly_is_reported(
    tmp_path: Path, monkeypatch: pytest.MonkeyPatch, capsys: pytest.CaptureFixture[str]
) -> None:
    assert run_with(lambda window, hierarchy: None, tmp_path, monkeypatch) == 1
    assert capsys.readouterr().err == "tour: the host ended with 5\n"
