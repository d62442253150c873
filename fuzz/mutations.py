# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""New inputs from old ones: bytes, pieces and words of changelogs changed at random."""

import random
from collections.abc import Callable, Sequence

WORDS = [
    b"foo (1.0-1) unstable; urgency=low\n",
    b" -- Ann Author <ann@x.org>  Mon, 06 Jan 2020 23:30:00 -0900\n",
    b"binary-only=yes",
    b"urgency=",
    b" -- ",
    b" <",
    b">  ",
    b" (",
    b");",
    b"\n  * ",
    b"\t",
    b"\r\n",
    b"\n\n",
    b"29 Feb 2021 24:60:60",
    b"1989",
    b"\0",
    b"\x1b[2J",
    b"\xc2\x85",
    b"\xe2\x80\xa8",
    b"\xef\xbb\xbf",
    b"\xd9\xa3",
    b"\xff\xfe",
]
LONGEST = 40_000  # bytes of an input
MOST_CHANGES = 5


def place(rng: random.Random, content: bytes) -> int:
    return rng.randrange(len(content) + 1)


def piece(rng: random.Random, content: bytes) -> tuple[int, int]:
    """Bounds of a piece, most often a short one."""
    start = place(rng, content)
    length = rng.choice((1, 4, 30, 200, len(content)))
    return start, min(len(content), start + rng.randrange(length + 1))


def changed_byte(rng: random.Random, content: bytes, other: bytes) -> bytes:
    start = place(rng, content)
    return content[:start] + bytes([rng.randrange(256)]) + content[start + 1 :]


def removed(rng: random.Random, content: bytes, other: bytes) -> bytes:
    start, end = piece(rng, content)
    return content[:start] + content[end:]


def repeated(rng: random.Random, content: bytes, other: bytes) -> bytes:
    """A piece once more, or as often as it fits: that finds work that grows faster than the input."""
    start, end = piece(rng, content)
    room = LONGEST // max(1, end - start)
    copies = room if rng.random() < 0.02 else min(room, rng.choice((1, 1, 1, 2, 10)))
    return content[:end] + content[start:end] * copies + content[end:]


def with_word(rng: random.Random, content: bytes, other: bytes) -> bytes:
    start = place(rng, content)
    return content[:start] + rng.choice(WORDS) + content[start:]


def crossed(rng: random.Random, content: bytes, other: bytes) -> bytes:
    """A piece of another input takes the place of one of this."""
    start, end = piece(rng, content)
    first, last = piece(rng, other)
    return content[:start] + other[first:last] + content[end:]


CHANGES: Sequence[Callable[[random.Random, bytes, bytes], bytes]] = (
    changed_byte,
    removed,
    repeated,
    with_word,
    crossed,
)


def mutated(rng: random.Random, pool: Sequence[bytes]) -> bytes:
    """One of the inputs, the newer ones more often, with a few changes."""
    newest = rng.random() < 0.5
    content = rng.choice(pool[-10:] if newest else pool)
    for _ in range(rng.randint(1, MOST_CHANGES)):
        content = rng.choice(CHANGES)(rng, content, rng.choice(pool))[:LONGEST]
    return content
