# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""The hierarchy of a map from the script that mapmaker writes for qtutils-host."""

from __future__ import annotations

import os
import re
from pathlib import Path

LINE = re.compile(r"passNodeHierarchy \[([\d ]*)\] (\d+) (\d+) (\d+)\s*")


def read_hierarchy(script: str | os.PathLike[str]) -> list[list[int]]:
    """The children of each node, for NodeBrowser.pass_hierarchy.

    The script has a line for each node, from 0 upwards: "passNodeHierarchy [1 2 3] 3 0 254", with the children, their
    number, the node and the number of nodes. Raises OSError, or ValueError that names file and line.
    """
    children: list[list[int]] = []
    total = 0
    for number, line in enumerate(Path(script).read_text(encoding="utf-8").splitlines(), 1):
        if not line.strip() or line.startswith("#"):
            continue
        match = LINE.fullmatch(line)
        nodes = [int(node) for node in match[1].split()] if match else []
        if not match or (int(match[2]), int(match[3])) != (len(nodes), len(children)):
            raise ValueError(f"{os.fspath(script)}:{number}: not the hierarchy of node {len(children)}")
        children.append(nodes)
        total = int(match[4])
    if total != len(children):
        raise ValueError(f"{os.fspath(script)}: {len(children)} nodes of {total}")
    return children
