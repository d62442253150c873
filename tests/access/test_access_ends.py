# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""Windows come and go, and hosts end, while a screen reader looks and listens."""

import os
import subprocess
from typing import Any

import part
import pytest
import screen
from host import Host

MESSAGES = ["CNodeBrowser: Changed Table to news_train", "Database is open. Commencing."]
ENDING = "Terminating QApplication"
MANY = 100_000
LARGE = f"""
INSERT INTO news.document (id, date, title) SELECT 1000 + seq, '2005-03-01', 'one of many' FROM som.seq_1_to_{MANY};
CREATE TABLE som.large_train AS SELECT 1 AS node, 0.0 AS dist, 1000 + seq AS item FROM som.seq_1_to_{MANY};
"""


class Reader:
    """Hears all events, and asks for the name of what each is about."""

    def __init__(self) -> None:
        self.heard = 0
        self._asks = True
        self._listener = part.listen(self._hear)

    def _hear(self, event: Any) -> None:
        self.heard += 1
        try:
            if self._asks:
                event.source.get_name()
        except part.Gone:
            self._asks = False  # without a window nobody answers, and each question would wait in vain

    def settle(self) -> None:
        """Handles all events of what the program has done so far."""
        assert part.program("Ombrel").role == "application"  # its answer comes behind them
        part.settle()

    def look(self) -> int:
        """Reads all that is there; returns the number of parts."""
        self._asks = True
        parts = sum(1 for each in part.program("Ombrel").all() if each.name is not None)
        part.settle()
        return parts


@pytest.fixture
def reader(host: Host) -> Reader:
    reader = Reader()
    assert reader.look() > 60
    return reader


@pytest.mark.parametrize("last", ["", "FREE_CNodeBrowser", "hideTable", "fillDate int[5]"])
def test_a_host_ends_with_its_window_read(host: Host, reader: Reader, last: str) -> None:
    host.ask(last or ".echo")
    part.settle()
    assert host.end() == (0, [*MESSAGES, ENDING])


def test_windows_follow_each_other_while_they_are_read(host: Host, reader: Reader) -> None:
    for _ in range(3):
        host.ask("FREE_CNodeBrowser; CNodeBrowser som news; setSOMTable news_train; show; select 2")
        assert host.ask("getNumRows int[1]") == ["piNumRows = 2"]
        assert reader.look() > 40
    assert host.end() == (0, [*MESSAGES, *[ENDING, MESSAGES[0]] * 3, ENDING])


def test_a_question_about_a_window_that_is_gone_is_no_line(host: Host) -> None:
    node = part.program("Ombrel").find("tree").cell(1, 0)
    host.ask("FREE_CNodeBrowser")
    screen.wait_for("the window is gone", lambda: not screen.windows("Ombrel"))
    node.ask_without_waiting()
    host.ask("CNodeBrowser som news; show; getNumRows int[1]")
    assert part.program("Ombrel").role == "application"  # answered behind the question
    assert host.end() == (0, [*MESSAGES, ENDING, ENDING])


def test_a_large_node_makes_no_more_events_than_a_small_one(
    host: Host, reader: Reader, map_server: dict[str, str]
) -> None:
    # given
    table = part.program("Ombrel").find("table").table
    command = ["mariadb", "--no-defaults", f"--user={map_server['MYSQL_USER']}"]
    subprocess.run(command, input=LARGE, env={**os.environ, **map_server}, text=True, check=True)
    host.ask("setSOMTable large_train; select 2; getNumRows int[1]")
    reader.settle()
    reader.heard = 0
    # when
    assert host.ask("select 1; getNumRows int[1]") == [f"piNumRows = {MANY}"]
    reader.settle()
    # then
    assert reader.heard < 50
    assert table.get_n_rows() == MANY
    assert table.get_accessible_at(MANY - 1, 1).get_name() == "one of many"
