# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""Texts that look like real ones and are the same in every run: words of syllables, the short ones frequent."""

import random
from datetime import datetime, timedelta

SYLLABLES = "ka lo mi ser ten bur gla no dri ven ta pos ul re shi mon fa ber qui zan er st ing ly".split()
UMLAUTS = ("Größe", "Übersicht", "für", "café", "naïve")  # a few titles are not plain ASCII
NUM_WORDS = 3000
POOL = 1_000_000  # characters
FIRST_DATE = datetime(2004, 1, 1, 0, 0, 30)
MINUTES = 1_000_003  # a prime number: nearly two years
STEP = 7919  # minutes from one document to the next, so that their numbers are in no order of time


def words(rng: random.Random) -> list[str]:
    """Different words of one to four syllables, the short ones first."""
    found = dict.fromkeys(SYLLABLES, "")
    while len(found) < NUM_WORDS:
        found["".join(rng.choices(SYLLABLES, k=rng.randint(2, 4)))] = ""
    return sorted(found, key=len)


class Texts:
    """Texts by the number of a document."""

    def __init__(self) -> None:
        rng = random.Random(20)
        vocabulary = words(rng)
        weights = [1 / (place + 3) for place in range(len(vocabulary))]
        chosen = rng.choices(vocabulary, weights, k=POOL // 5)
        lines = [" ".join(chosen[place : place + 12]) for place in range(0, len(chosen), 12)]
        self._pool = "\\n".join(lines)  # a line feed as the server's file format has it
        self._titles = " ".join(chosen)
        self._vocabulary = vocabulary

    def text(self, number: int, length: int) -> str:
        """About so many characters."""
        place = number * 4099 % (len(self._pool) - length - 1)
        return self._pool[place : place + length].strip("\\n")

    def title(self, number: int) -> str:
        """20 to 90 characters; one in fifty has letters that are not plain ASCII."""
        length = 20 + number * 37 % 70
        place = number * 6151 % (len(self._titles) - 100)
        title = self._titles[place : place + length].strip().capitalize()
        return f"{UMLAUTS[number % 5]} {title}" if number % 50 == 0 else title

    def keywords(self, number: int) -> str:
        """Six words, one a line."""
        size = len(self._vocabulary)
        return "\\n".join(self._vocabulary[(number * 31 + place * 977) % size] for place in range(6))


def date(number: int) -> str:
    """A minute of its own for each document; the seconds vary."""
    moment = FIRST_DATE + timedelta(minutes=number * STEP % MINUTES, seconds=number % 29)
    return moment.isoformat(" ")
