# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""The module's own window in a host process, as its host and its user meet it."""

import os
import subprocess
from collections.abc import Mapping
from pathlib import Path
from typing import NamedTuple

from cluster.proof.data import MAP
from cluster.runner.processes import ClusterError, wait_for

ANSWER = "=== "
WINDOW_CLASS = "plainhost"
DATABASES = ("t:som", "t:texts")


class Look(NamedTuple):
    """What there is after a node has been chosen: the answer to getNumRows, and the table's lines."""

    rows: str
    table: str


class Window:
    """A host (tests/module/plainhost.c) with the module, on this process's display. Ends with the with block."""

    def __init__(self, build: Path, variables: Mapping[str, str], nodes: int) -> None:
        self._nodes = nodes
        inherited = {name: value for name, value in os.environ.items() if not name.startswith("MYSQL_")}
        self._process = subprocess.Popen(
            ["setpriv", "--pdeathsig", "KILL", str(build / "tests" / "module" / "plainhost")],
            env={**inherited, **variables},
            stdin=subprocess.PIPE,
            stdout=subprocess.PIPE,
            stderr=subprocess.DEVNULL,
            text=True,
        )
        if (answer := self._command("load", str(build / "qtutils.so"))) != "loaded":
            raise ClusterError(f"the module can't be loaded: {answer}")

    def __enter__(self) -> "Window":
        return self

    def __exit__(self, *_: object) -> None:
        self._process.kill()
        self._process.wait()

    def open(self) -> list[str]:
        """Constructs the window, shows it and fills its tree; closes boxes that come up, and returns their texts."""
        self._command("start", "1", "call", "CNodeBrowser", *DATABASES)
        boxes: list[str] = []
        wait_for(
            "the window is made", lambda: self._command("finished", "1") == "yes" or self._close_box(boxes)
        )
        if (answer := self._command("join", "1")) != "window":
            raise ClusterError(f"no window: {answer}")
        self.call("setSOMTable", f"t:{MAP}_train")
        for node in range(self._nodes):
            children = ",".join(map(str, range(1, self._nodes))) if node == 0 else ""
            number = self._nodes - 1 if node == 0 else 0
            self.call("passNodeHierarchy", f"n:{children}", f"i:{number}", f"i:{node}", f"i:{self._nodes}")
        self.call("show")
        return boxes

    def close(self) -> None:
        """Takes the construction back, and waits until the window is gone."""
        self.call("FREE_CNodeBrowser")
        wait_for("the window is gone", lambda: not visible_windows())

    def call(self, method: str, *arguments: str) -> str:
        return self._command("call", method, *arguments)

    def choose(self, node: int) -> None:
        self.call("select", f"i:{node}")

    def rows(self) -> str:
        """What getNumRows gives, when all that was asked for before is done."""
        return self.call("getNumRows", "oi:1")

    def look(self, node: int) -> Look:
        """Chooses a node, and looks."""
        self.choose(node)
        rows = self.rows()
        return Look(rows, self.ask("table"))

    def first_date(self) -> str:
        return self.call("getFirstDateInSelection", "ot:40")

    def ask(self, question: str) -> str:
        """What a probe in the interface's thread sees."""
        return self._command("ask", question).replace("\v", "\n")

    def _close_box(self, boxes: list[str]) -> bool:
        if found := visible_windows():
            text = self.ask("dialog")
            boxes += [] if text in boxes else [text]
            subprocess.run(["xdotool", "key", "--window", found[0], "Return"], check=False)
        return False

    def _command(self, *fields: str) -> str:
        process = self._process
        assert process.stdin and process.stdout
        process.stdin.write("\t".join(fields) + "\n")
        process.stdin.flush()
        for line in process.stdout:
            if line.startswith(ANSWER):
                return line.removeprefix(ANSWER).rstrip("\n")
        raise ClusterError(f"the host has ended at {fields[0]} {fields[1:2]}")


def visible_windows() -> list[str]:
    """The numbers of the host's windows that can be seen."""
    command = ["xdotool", "search", "--onlyvisible", "--class", WINDOW_CLASS]
    return subprocess.run(command, capture_output=True, text=True, check=False).stdout.split()
