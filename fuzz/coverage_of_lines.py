# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""Which steps from line to line some files take, and about how often."""

import sys
from collections import Counter
from types import FrameType, TracebackType
from typing import Any, Self

BOUNDS = (1, 2, 3, 4, 8, 16, 32, 128)  # a step taken more often counts as new when it passes one of these


class Coverage:
    """Counts steps between lines of the given files while the context is entered."""

    def __init__(self, *files: str) -> None:
        self.files = frozenset(files)
        self.steps: Counter[tuple[str, int, int]] = Counter()

    def __enter__(self) -> Self:
        sys.settrace(self.called)
        return self

    def __exit__(
        self, kind: type[BaseException] | None, error: BaseException | None, trace: TracebackType | None
    ) -> None:
        sys.settrace(None)

    def called(self, frame: FrameType, event: str, argument: Any) -> Any:
        """Traces calls of functions of the files only."""
        if frame.f_code.co_filename not in self.files:
            return None
        before = frame.f_lineno

        def line(here: FrameType, event: str, argument: Any) -> Any:
            nonlocal before
            self.steps[here.f_code.co_filename, before, here.f_lineno] += 1
            before = here.f_lineno
            return line

        return line

    def reached(self) -> frozenset[int]:
        """One number for each step and each bound that its count has passed."""
        return frozenset(
            hash((step, bound)) for step, count in self.steps.items() for bound in BOUNDS if count >= bound
        )
