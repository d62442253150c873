# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""The topic signs are what the script draws, and no two can be mistaken for each other."""

import itertools
import subprocess
import sys
from collections.abc import Callable
from pathlib import Path

import pytest

TOP = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(TOP / "tools"))

from icons.picture import CONTOUR_COLOR, FILL, divisor_at, draw, rgb, scaled  # noqa: E402
from icons.shapes import SIGNS, Sign  # noqa: E402
from icons.vision import (  # noqa: E402
    GROUNDS,
    VISIONS,
    color_difference,
    contrast,
    inside_difference,
    picture_difference,
    silhouette_difference,
)

SMALLEST_ROW = 13
SMALL = {sign.name: scaled(draw(sign.shape), divisor_at(SMALLEST_ROW)) for sign in SIGNS}


def closest_pair(difference: Callable[[Sign, Sign], float]) -> tuple[float, str, str]:
    return min((difference(a, b), a.name, b.name) for a, b in itertools.combinations(SIGNS, 2))


def make_icons(*arguments: str) -> "subprocess.CompletedProcess[str]":
    command = [sys.executable, str(TOP / "tools/make_icons.py"), *arguments]
    return subprocess.run(command, capture_output=True, text=True, check=False)


def test_committed_signs_are_what_the_script_draws() -> None:
    result = make_icons("--check")
    assert (result.returncode, result.stderr) == (0, "")


def test_a_changed_sign_is_reported(tmp_path: Path) -> None:
    assert make_icons("--output", str(tmp_path)).returncode == 0
    (tmp_path / "7.xpm").write_text("/* XPM */")
    result = make_icons("--check", "--output", str(tmp_path))
    assert result.returncode == 1
    assert result.stderr == f"make_icons: {tmp_path}/7.xpm is not what the script draws\n"


def test_a_missing_folder_gets_one_error_line(tmp_path: Path) -> None:
    result = make_icons("--output", str(tmp_path / "absent"))
    assert result.returncode == 1
    assert len(result.stderr.splitlines()) == 1


def test_there_are_21_signs() -> None:
    files = sorted(path.name for path in (TOP / "Images").glob("*.xpm"))
    assert len(SIGNS) == 21
    assert files == sorted(f"{index}.xpm" for index in range(21))


@pytest.mark.parametrize("row", range(9, 85))
def test_no_row_height_makes_signs_vanish_or_twice_as_high(row: int) -> None:
    size = len(scaled(["." * 84] * 84, divisor_at(row)))
    assert row - 1 < size < 2 * row


def test_contours_are_closed_at_divisors_up_to_a_unit() -> None:
    for sign, divisor in itertools.product(SIGNS, range(1, 7)):
        rows = scaled(draw(sign.shape), divisor)
        size = len(rows)
        for y, x in itertools.product(range(size), range(size)):
            if rows[y][x] == FILL:
                around = [
                    rows[v][u]
                    for v, u in ((y - 1, x), (y + 1, x), (y, x - 1), (y, x + 1))
                    if v < size and u < size
                ]
                assert 0 < x < size - 1 and 0 < y < size - 1 and "." not in around, (sign.name, divisor)


def test_insides_stand_out_from_the_contour_and_so_from_dark_grounds() -> None:
    assert min(contrast(rgb(sign.color), rgb(CONTOUR_COLOR)) for sign in SIGNS) >= 3


@pytest.mark.parametrize("ground", ["white", "highlight"])
def test_contours_stand_out_from_light_grounds(ground: str) -> None:
    assert contrast(rgb(CONTOUR_COLOR), GROUNDS[ground]) >= 4.5


def test_silhouettes_differ() -> None:
    share, *pair = closest_pair(lambda a, b: silhouette_difference(SMALL[a.name], SMALL[b.name]))
    assert share >= 0.22, pair


def test_insides_differ() -> None:
    share, *pair = closest_pair(lambda a, b: inside_difference(SMALL[a.name], SMALL[b.name]))
    assert share >= 0.22, pair


@pytest.mark.parametrize(
    "vision, smallest", [("normal", 24), ("protanopia", 9), ("deuteranopia", 10), ("tritanopia", 9.5)]
)
def test_colours_differ(vision: str, smallest: float) -> None:
    distance, *pair = closest_pair(lambda a, b: color_difference(a.color, b.color, vision))
    assert distance >= smallest, pair


@pytest.mark.parametrize("ground", GROUNDS)
@pytest.mark.parametrize("vision", VISIONS)
def test_pictures_differ(vision: str, ground: str) -> None:
    def difference(a: Sign, b: Sign) -> float:
        return picture_difference((SMALL[a.name], a.color), (SMALL[b.name], b.color), vision, ground)

    distance, *pair = closest_pair(difference)
    assert distance >= 12, pair
