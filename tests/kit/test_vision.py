# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""The recipes for row colours: whom they are for, and what they say. No window is needed."""

import colorsys
import itertools
import math
import os
import sys
from collections.abc import Callable, Sequence

import pytest
from kitprocess import BUILD, TOP

os.environ["QTUTILS_NODEBROWSER"] = str(BUILD / "libqtutils-nodebrowser.so")
sys.path[:0] = [str(TOP / "tools"), str(TOP / "kit" / "python")]

from icons.vision import VISIONS, color_distance, contrast, lab  # noqa: E402
from qtutils import NO_DATE, ColorCallback, Colors, recipes  # noqa: E402

Rgb = tuple[int, int, int]
BLACK, WHITE = (0, 0, 0), (255, 255, 255)
COLORED_VISIONS = [vision for vision in VISIONS if vision != "grey"]
READABLE = 4.5  # the least contrast of text by WCAG, level AA
STEPS = 101


def shown(colors: Colors) -> list[Rgb]:
    """The colours as the module paints them: it cuts off fractions."""

    def rgb(hue: float, saturation: float, value: float) -> Rgb:
        shares = colorsys.hsv_to_rgb(int(hue) / 360, int(saturation) / 255, int(value) / 255)
        red, green, blue = (round(255 * share) for share in shares)
        return red, green, blue

    return [rgb(*color) for color in colors]


def scale() -> list[Rgb]:
    return shown(recipes.by_date(list(range(STEPS))))


def groups() -> list[Rgb]:
    return shown(recipes.by_group(range(8))([0] * 8))


def hit() -> Rgb:
    return shown(recipes.by_hit([True])([0]))[0]


def least_distance(colors: Sequence[Rgb], vision: str) -> float:
    return min(color_distance(one, other, vision) for one, other in itertools.combinations(colors, 2))


def test_text_can_be_read_on_every_colour() -> None:
    contrasts = [contrast(BLACK, color) for color in [*scale(), *groups(), hit()]]
    assert len(contrasts) == STEPS + 9
    assert min(contrasts) >= READABLE


@pytest.mark.parametrize("vision", VISIONS)
def test_the_scale_grows_darker_in_every_vision(vision: str) -> None:
    lightness = [lab(color, vision)[0] for color in scale()[::10]]
    assert lightness == sorted(lightness, reverse=True)
    assert lightness[0] - lightness[-1] > 35
    assert min(one - other for one, other in zip(lightness, lightness[1:])) > 0.5


@pytest.mark.parametrize("vision", COLORED_VISIONS)
def test_five_steps_of_the_scale_are_told_apart(vision: str) -> None:
    assert least_distance([*scale()[::25], WHITE], vision) > 5
    assert least_distance(scale()[::25], vision) > 10


@pytest.mark.parametrize("vision", COLORED_VISIONS)
def test_groups_are_told_apart_and_from_none(vision: str) -> None:
    assert len(set(groups())) == 8
    assert least_distance([*groups(), WHITE], vision) > 15


@pytest.mark.parametrize("vision", VISIONS)
def test_hits_are_told_from_other_rows(vision: str) -> None:
    assert color_distance(hit(), WHITE, vision) > 15


def test_the_newest_date_is_strongest_and_none_is_white() -> None:
    colors = recipes.by_date([20, NO_DATE, 0, 10])
    assert [tuple(color) for color in colors] == [
        (208, 150, 180),
        recipes.WHITE,
        (48, 38, 255),
        (95, 115, 208),
    ]
    assert recipes.by_date([5, 5]) == [(208, 150, 180)] * 2
    assert recipes.by_date([]) == []


def test_the_least_distance_is_strongest() -> None:
    callback = recipes.by_distance([0.5, 1.5, math.nan, 1.0, math.inf])
    assert callback([0] * 5) == [
        (208, 150, 180),
        (48, 38, 255),
        recipes.WHITE,
        (95, 115, 208),
        recipes.WHITE,
    ]


def test_hits_and_groups_have_their_own_rows() -> None:
    assert [color != recipes.WHITE for color in recipes.by_hit([True, False, True])([0] * 3)] == [1, 0, 1]
    first, none, ninth, second = recipes.by_group([0, -7, 8, 1])([0] * 4)
    assert first == ninth != second
    assert none == recipes.WHITE


@pytest.mark.parametrize("recipe", [recipes.by_distance, recipes.by_hit, recipes.by_group])
def test_values_of_other_rows_are_refused(recipe: Callable[[list[int]], ColorCallback]) -> None:
    with pytest.raises(ValueError, match="^values for 2 rows, and there are 3$"):
        recipe([1, 2])([0, 1, 2])
