# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""What a screen reader sees of a program: a tree of parts, over the bus for accessibility. Knows nothing of the module."""

from __future__ import annotations

from collections.abc import Callable, Iterator
from typing import Any

import gi
import screen

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, Gio, GLib  # noqa: E402

Gone = GLib.Error  # what is raised for a part that is no longer there
WAITING = 10_000  # milliseconds that an answer may take


class Part:
    """A window, a widget, a cell, an entry of a menu."""

    def __init__(self, accessible: Any) -> None:
        self._accessible = accessible

    @property
    def name(self) -> str:
        return str(self._accessible.get_name())

    @property
    def role(self) -> str:
        return str(self._accessible.get_role_name())

    @property
    def description(self) -> str:
        return str(self._accessible.get_description())

    @property
    def states(self) -> set[str]:
        return {str(state.value_nick) for state in self._accessible.get_state_set().get_states()}

    @property
    def children(self) -> list[Part]:
        found = (self._accessible.get_child_at_index(i) for i in range(self._accessible.get_child_count()))
        return [Part(child) for child in found if child is not None]

    @property
    def labels(self) -> list[str]:
        """Names of the parts that label this one."""
        relations = [
            relation
            for relation in self._accessible.get_relation_set()
            if relation.get_relation_type() == Atspi.RelationType.LABELLED_BY
        ]
        return [
            relation.get_target(i).get_name()
            for relation in relations
            for i in range(relation.get_n_targets())
        ]

    @property
    def text(self) -> str:
        return str(Atspi.Text.get_text(self._accessible, 0, -1))

    def write(self, text: str) -> None:
        """Puts another text into a field."""
        assert Atspi.EditableText.set_text_contents(self._accessible, text)

    @property
    def box(self) -> screen.Box:
        """Where it is on the screen."""
        extents = Atspi.Component.get_extents(self._accessible, Atspi.CoordType.SCREEN)
        return screen.Box(extents.x, extents.y, extents.width, extents.height)

    @property
    def table(self) -> Any:
        """Rows, columns and headers, of a tree, too."""
        return self._accessible

    def rows(self) -> list[list[str]]:
        """The names of all cells."""
        table = self.table
        return [
            [table.get_accessible_at(row, column).get_name() for column in range(table.get_n_columns())]
            for row in range(table.get_n_rows())
        ]

    def cell(self, row: int, column: int) -> Part:
        return Part(self.table.get_accessible_at(row, column))

    def place_of(self, cell: Part) -> tuple[int, int]:
        """Row and column of a cell, as its place among the children tells."""
        index = cell._accessible.get_index_in_parent()
        return self.table.get_row_at_index(index), self.table.get_column_at_index(index)

    def actions(self) -> list[str]:
        number = Atspi.Action.get_n_actions(self._accessible)
        return [Atspi.Action.get_action_name(self._accessible, i) for i in range(number)]

    def do(self, action: str) -> None:
        assert Atspi.Action.do_action(self._accessible, self.actions().index(action))

    def ask_without_waiting(self) -> None:
        """Asks for the role; nobody waits for the answer."""
        session = Gio.bus_get_sync(Gio.BusType.SESSION)
        where = ("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress")
        address = session.call_sync(*where, None, None, Gio.DBusCallFlags.NONE, WAITING, None).unpack()[0]
        kind = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
        bus = Gio.DBusConnection.new_for_address_sync(address, kind)
        question = ("org.a11y.atspi.Accessible", "GetRoleName", None, None, Gio.DBusCallFlags.NONE, -1)
        bus.call(self._accessible.app.bus_name, self._accessible.path, *question, None, None)
        bus.flush_sync()

    def all(self) -> Iterator[Part]:
        """This part and all below."""
        yield self
        for child in self.children:
            yield from child.all()

    def find(self, role: str, name: str | None = None) -> Part:
        """The only part below of a role, with a name if that is given."""
        found = [part for part in self.all() if part.role == role and name in (None, part.name)]
        assert len(found) == 1, [part.name for part in found]
        return found[0]


def program(name: str) -> Part:
    """A program that is on the bus and has a window."""
    Atspi.set_timeout(WAITING, WAITING)

    def look() -> Part | None:
        programs = [part for part in Part(Atspi.get_desktop(0)).children if part.name == name]
        return next((part for part in programs if part.children), None)

    return screen.wait_for(f"{name} is on the bus", look)


def listen(hear: Callable[[Any], None]) -> Any:
    """Has a function called for each event of all programs while settle() runs. The result must be kept."""
    listener = Atspi.EventListener.new(hear)
    for kind in ("object", "window", "focus"):
        assert listener.register(kind)
    return listener


def settle() -> None:
    """Handles the events that are there."""
    while GLib.MainContext.default().iteration(False):
        pass
