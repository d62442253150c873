# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""The window as screen readers see it: names, roles and places of its parts, tree, table, text, menus, full texts."""

import part
import pytest
import screen
from host import Host
from part import Part

KEYWORDS = ["alles, viel, mehr", "red, green, blue", "warm", "leer, nichts, keiner"]


@pytest.fixture
def window(host: Host) -> Part:
    return part.program("Ombrel").find("frame", "Map of documents")


def click(box: screen.Box, times: int) -> None:
    place = (str(box.x + box.width // 2), str(box.y + box.height // 2))
    screen.output_of("xdotool", "mousemove", *place, "click", "--repeat", str(times), "1")


def windows() -> list[Part]:
    return part.program("Ombrel").children


def test_every_part_that_takes_keys_has_a_name(window: Part) -> None:
    parts = {(p.role, p.name) for p in window.all() if {"focusable", "showing"} <= p.states}
    assert {entry for entry in parts if "cell" not in entry[0]} == {
        ("tree", "Nodes"),
        ("table", "Documents"),
        ("text", "Text of the document"),
        ("check box", "select by date"),
        ("spin button", "Date"),
    }
    assert [p.role for p in window.all() if "focusable" in p.states and not p.name] == []


def test_the_tree_is_walked(window: Part) -> None:
    # given
    tree = window.find("tree")
    headers = [tree.table.get_column_header(column).get_name() for column in (0, 1)]
    assert headers == ["Nodes", "Keywords"]
    # then
    assert tree.rows() == [["0", KEYWORDS[0]], ["1", KEYWORDS[1]], ["2", KEYWORDS[2]]]
    places = [tree.cell(row, 0).description for row in range(3)]
    assert places == ["level 1, 1 of 1", "level 2, 1 of 2", "level 2, 2 of 2"]
    assert {"expandable", "expanded"} <= tree.cell(0, 0).states
    assert {"expandable", "expanded"} & tree.cell(1, 0).states == {"expandable"}
    assert "expandable" not in tree.cell(2, 0).states
    assert "selected" in tree.cell(1, 0).states
    # when: a branch is opened with the keyboard
    click(tree.cell(1, 0).box, 1)
    screen.press("Right")
    screen.wait_for("the branch is open", lambda: len(tree.rows()) == 4)
    # then
    assert [row[0] for row in tree.rows()] == ["0", "1", "3", "2"]
    assert tree.cell(2, 0).description == "level 3, 1 of 1"
    assert [tree.place_of(tree.cell(row, 1)) for row in range(4)] == [(row, 1) for row in range(4)]


def test_the_table_is_read(window: Part) -> None:
    table = window.find("table")
    headers = [table.table.get_column_header(column).get_name() for column in (0, 1)]
    assert headers == ["date", "title"]
    assert table.rows() == [
        ["27.02.05 23:59", "Zug entgleist"],
        ["01.03.05 09:30", "Neue Brücke"],
        ["01.03.05 13:00", "Schnee im März"],
        ["02.03.05 08:15", "Wahl in Köln"],
        ["03.03.05 00:00", "Äpfel werden teurer"],
    ]
    assert table.table.get_row_header(4).get_name() == "5"
    assert table.place_of(table.cell(3, 1)) == (3, 1)


def test_another_node_is_another_table(window: Part, host: Host) -> None:
    table = window.find("table")
    assert table.table.get_n_rows() == 5
    host.ask("select 2; getNumRows int[1]")
    assert [row[1] for row in table.rows()] == ["Sommer", "Herbst"]


def test_the_text_of_a_row_is_read(window: Part) -> None:
    text = window.find("text")
    click(window.find("table").cell(2, 1).box, 1)
    screen.wait_for("the text is shown", lambda: text.text == "Es schneit in Zürich.")
    assert {"read-only", "multi-line"} <= text.states


def test_the_date_filter_is_used(window: Part, host: Host) -> None:
    box, field = window.find("check box"), window.find("spin button")
    assert (box.labels, field.labels) == (["Date Selection"], ["Date Selection"])
    assert "checked" not in box.states
    # when
    box.do("Toggle")
    # then
    assert "checked" in box.states
    # when
    field.write("01.03.2005 00:00:00")
    # then
    assert field.text == "01.03.2005 00:00:00"
    assert host.ask("getNumRows int[1]") == ["piNumRows = 2"]


def test_menus_tell_what_is_marked(window: Part) -> None:
    bar = window.find("menu bar")
    assert [entry.name for entry in bar.children] == ["File", "Show", "Sort"]
    for menu, marked in (("Show", ["date", "title"]), ("Sort", ["date"])):
        entries = bar.find("menu item", menu).find("popup menu").children
        assert [entry.name for entry in entries] == ("node dist id date title URL text author rate".split())
        assert [entry.name for entry in entries if "checked" in entry.states] == marked


def test_a_full_text_is_read_and_searched(window: Part) -> None:
    # given
    click(window.find("table").cell(0, 1).box, 2)
    (_, viewer) = screen.wait_for("the full text opens", lambda: windows() if len(windows()) == 2 else None)
    # then
    assert viewer.find("text", "Text of the document").text == "Niemand wurde verletzt."
    assert viewer.find("push button").name == "Exit"
    # when
    screen.wait_for("it is active", lambda: "active" in viewer.states)
    screen.press("ctrl+f")
    dialog = screen.wait_for("a dialog opens", lambda: windows()[2] if len(windows()) == 3 else None)
    # then
    assert (dialog.role, dialog.name) == ("dialog", "Find")
    assert dialog.find("text").labels == ["Find what:"]
    # when
    screen.type_text("nowhere")
    screen.press("Return")
    box = screen.wait_for("a box opens", lambda: next((w for w in windows() if w.role == "alert"), None))
    # then
    assert "Nothing found" in [p.name for p in box.all()]
    # when: everything is closed by its buttons
    box.find("push button", "OK").do("Press")
    screen.wait_for("the box closes", lambda: len([w for w in windows() if "showing" in w.states]) == 2)
    viewer.find("push button").do("Press")
    screen.wait_for("the full text closes", lambda: "showing" not in viewer.states)
