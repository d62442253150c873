# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""A reader that asks for a node again and again while servers fail, and looks at every row that it gets."""

import threading
from collections import Counter
from collections.abc import Iterator
from contextlib import contextmanager

from cluster.proof.data import selection
from cluster.proof.statements import DIFFERENT, compare_by_date
from cluster.runner.client import Account, Address, Client, QueryError, Row

PAUSE = 0.05  # seconds between two statements, so that the servers have time for others
NODE = 2


class Watcher:
    """Runs in a thread of its own within a with block; connects anew after each error, as a new window would."""

    def __init__(self, address: Address, reader: Account, expected: list[Row]) -> None:
        self.right, self.wrong = 0, 0
        self.refused: Counter[int] = Counter()  # by the number of the error
        self._address, self._reader, self._expected = address, reader, expected
        self._ended = threading.Event()
        self._turn = threading.RLock()
        self._thread = threading.Thread(target=self._watch)

    def __enter__(self) -> "Watcher":
        self._thread.start()
        return self

    def __exit__(self, *_: object) -> None:
        self._ended.set()
        self._thread.join()

    @contextmanager
    def paused(self) -> Iterator[None]:
        """Asks nothing within a with block. Waits for an answer that is under way."""
        with self._turn:
            yield

    def text(self) -> str:
        errors = ", ".join(f"{number} with error {code}" for code, number in sorted(self.refused.items()))
        return f"answers: {self.right} right, {self.wrong} wrong; refused: {errors or 'none'}"

    def _watch(self) -> None:
        while not self._ended.wait(PAUSE):
            try:
                client = Client(self._address, self._reader)
            except QueryError as error:
                self.refused[error.code] += 1
                continue
            try:
                self._ask(client)
            finally:
                client.close()

    def _ask(self, client: Client) -> None:
        try:
            while not self._ended.wait(PAUSE):
                with self._turn:
                    rows = client.rows(selection(NODE, database="som."))
                self._judge(rows)
        except QueryError as error:
            self.refused[error.code] += 1

    def _judge(self, rows: list[Row]) -> None:
        if compare_by_date(self._expected, rows) == DIFFERENT:
            self.wrong += 1
        else:
            self.right += 1
