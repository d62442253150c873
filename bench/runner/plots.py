# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""A picture of each question that has several sizes: values over sizes, in logarithms."""

from collections.abc import Sequence
from pathlib import Path

from bench.runner.measure import Line

Curve = tuple[list[int], list[float]]


def curves(lines: Sequence[Line]) -> dict[str, Curve]:
    """The values of the module's sides, of the limit and of the peer."""
    found: dict[str, Curve] = {}
    for line in lines:
        sides = {f"module {line.label}".strip(): line.module, "limit": line.limit, "peer": line.peer}
        for name, value in sides.items():
            sizes, values = found.setdefault(name, ([], []))
            if value and line.size not in sizes:
                sizes.append(line.size)
                values.append(value)
    return {name: curve for name, curve in found.items() if curve[0]}


def draw(lines: Sequence[Line], folder: Path) -> None:
    """Writes <question>-<figure>.png into a folder. Needs python3-matplotlib."""
    import matplotlib

    matplotlib.use("Agg")
    from matplotlib import pyplot as plt

    groups: dict[tuple[str, str], list[Line]] = {}
    for line in lines:
        groups.setdefault((line.question, line.figure), []).append(line)
    for (question, figure), group in groups.items():
        if len({line.size for line in group}) < 2:
            continue
        picture, axes = plt.subplots()
        for name, (sizes, values) in curves(group).items():
            axes.loglog(sizes, values, marker="o", label=name)
        axes.set(title=f"{question}: {figure}", xlabel="size", ylabel="seconds or kilobytes")
        axes.legend()
        picture.savefig(folder / f"{question}-{figure}.png")
        plt.close(picture)
