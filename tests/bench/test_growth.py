# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""What bench/grow calculates from a map that it measured, and the tables that it prints."""

import pytest

from bench.growth import Growth, calculated, duration, shown, table

MEASURED = Growth(
    documents=1_000_000,
    units=1680,
    nodes=1800,
    disk=3e9,
    disk_rest=5e7,
    selection=0.01,
    keywords=0.001,
    making=1000.0,
    training=700.0,
    memory=5e8,
)


def test_a_map_follows_from_itself() -> None:
    assert calculated(MEASURED, 1_000_000)._asdict() == pytest.approx(MEASURED._asdict(), rel=0.02)


def test_rows_grow_with_the_documents_and_nodes_with_their_root() -> None:
    large = calculated(MEASURED, 100_000_000)
    assert (large.disk, large.disk_rest) == (3e11, 5e9)
    assert large.units == pytest.approx(10 * MEASURED.units, rel=0.02)
    assert large.nodes == pytest.approx(10 * MEASURED.nodes, rel=0.02)
    for time in ("selection", "keywords"):
        assert getattr(large, time) == pytest.approx(10 * getattr(MEASURED, time), rel=0.02)


def test_training_grows_with_what_it_shows_times_the_units() -> None:
    assert (shown(1_000_000), shown(100_000_000)) == (13_000_000, 1_200_000_000)
    large = calculated(MEASURED, 100_000_000)
    assert large.training == pytest.approx(700 * 10 * 1200 / 13, rel=0.02)
    assert large.making - large.training == pytest.approx(300 * 100)
    assert large.memory == pytest.approx(
        5e8 + 24 * (large.units**2 - MEASURED.units**2) + 216 * 99_000_000
    )


def test_a_line_tells_where_its_figures_are_from() -> None:
    lines = list(table([MEASURED, calculated(MEASURED, 10_000_000)], 1))
    assert [line.split(" | ")[:2] for line in lines[2:]] == [
        ["| measured", "1,000,000"],
        ["| calculated", "10,000,000"],
    ]
    assert len({line.count("|") for line in lines}) == 1


@pytest.mark.parametrize(
    "seconds, text", [(5.4, "5 s"), (119, "119 s"), (120, "2 min"), (7200, "2 h"), (864_000, "10 days")]
)
def test_durations_have_few_digits(seconds: float, text: str) -> None:
    assert duration(seconds) == text
