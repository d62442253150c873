# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""The pictures of the questions that have several sizes."""

from importlib.util import find_spec
from pathlib import Path

import pytest

from bench.runner.measure import Line
from bench.runner.plots import curves, draw

LINES = [
    Line("select", "shown", "time", 100, 2.0, 1.0, 4.0),
    Line("select", "hidden", "time", 100, 1.5, 1.0, 4.0),
    Line("select", "shown", "time", 1000, 20.0, 10.0, None),
    Line("huge", "", "page", 1, 1.8),
]


def test_each_side_has_its_curve() -> None:
    assert curves(LINES[:3]) == {
        "module shown": ([100, 1000], [2.0, 20.0]),
        "module hidden": ([100], [1.5]),
        "limit": ([100, 1000], [1.0, 10.0]),
        "peer": ([100], [4.0]),
    }


@pytest.mark.skipif(find_spec("matplotlib") is None, reason="python3-matplotlib is not installed")
def test_a_question_of_several_sizes_has_a_picture(tmp_path: Path) -> None:
    draw(LINES, tmp_path)
    assert [path.name for path in tmp_path.iterdir()] == ["select-time.png"]
    assert (tmp_path / "select-time.png").read_bytes().startswith(b"\x89PNG")
