# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""Words, vectors and keywords."""

import numpy as np
import pytest
from scipy.sparse import csr_matrix

from mapmaker import keywords, quality, vectors
from mapmaker.hierarchy import Node, numbered
from mapmaker.points import GRAIN, Ints
from mapmaker.spool import batched


def as_reader(text: str) -> str:
    """What readers show of stored keywords."""
    places = [place for place, letter in enumerate(text) if letter == "\n"]
    if len(places) == 1:
        return text[: places[0]]
    return (text[: places[2]] if len(places) > 2 else text).replace("\n", ", ")


@pytest.mark.parametrize(
    "words, shown",
    [
        ([], ""),
        (["a"], "a"),
        (["a", "b"], "a, b"),
        (["a", "b", "c"], "a, b, c"),
        (["a", "b", "c", "d"], "a, b, c"),
        (list("abcdefgh"), "a, b, c"),
    ],
)
def test_readers_show_the_first_three_keywords(words: list[str], shown: str) -> None:
    assert as_reader(keywords.keywords_text(words)) == shown


@pytest.mark.parametrize(
    "text, words",
    [
        ("See https://x.org/kernel?q=1 or Ann@kernel.org", ["kernel"][:0]),
        ("[ Ann Kernel ]\nmutex", ["mutex"]),
        ("Closes: #123, LP: #44 mutex", ["mutex"]),
        ("CVE-2020-1234 CVE-2021-99999", ["cve", "cve"]),
        ("libssl-dev 1.2.3-4+deb12u1", ["libssl-dev", "libssl"]),
        ("Größe (Ann Kernel)", ["größe"]),
        ("Thanks to Ann Kernel. mutex", ["mutex"]),
        ("the package was updated", []),
        ("std_string m68k", ["std_string", "std", "string", "m68k"]),
    ],
)
def test_words_without_noise(text: str, words: list[str]) -> None:
    assert list(vectors.words_of(text)) == words


def test_points_have_length_one_or_zero() -> None:
    rng = np.random.default_rng(1)
    vocabulary = [f"word{letter}" for letter in "abcdefghijklmnopqrstuvwxyz"]
    texts = [" ".join(rng.choice(vocabulary, size=6)) for _ in range(80)] + ["of the"]
    made = vectors.vectorize(batched(texts, 30), rng)
    points = made.points[:]
    lengths = np.sqrt((points**2).sum(axis=1))
    assert lengths[:-1] == pytest.approx(1, abs=1e-3)
    assert lengths[-1] == 0
    assert (points / GRAIN == np.rint(points / GRAIN)).all()


@pytest.mark.parametrize(
    "first, second, same",
    [
        ("image", "images", True),
        ("boot", "bootloader", True),
        ("compile", "compiling", True),
        ("compile", "compare", False),
        ("gcc", "gdb", False),
    ],
)
def test_forms_and_compounds(first: str, second: str, same: bool) -> None:
    assert keywords.same_word(first, second) is same


def small_collection() -> tuple[list[str], list[csr_matrix], Ints]:
    """Two units of ten documents: bees and hives with honey, bread and ovens with honey."""
    words = ["bee", "bees", "bread", "hive", "honey", "oven"]
    first, second = [2, 1, 0, 1, 1, 0], [0, 0, 1, 0, 1, 1]
    counts = csr_matrix(np.array([first] * 10 + [second] * 10, dtype=float))
    return words, [counts[:7], counts[7:]], np.repeat([0, 1], 10)


def test_keywords_tell_the_nodes_apart() -> None:
    words, counts, units = small_collection()
    nodes = numbered(Node([0, 1], [Node([0]), Node([1])]))
    root, bees, bread = keywords.node_keywords(words, counts, units, nodes)
    assert bees == ["bee", "hive", "honey"]
    assert bread[:2] in (["bread", "oven"], ["oven", "bread"])
    assert len({root[0], bees[0], bread[0]}) == 3


def test_npmi_of_companions_strangers_and_the_independent() -> None:
    values = keywords.npmi(
        np.array([5.0, 0.0, 4.0]), np.array([5.0, 5.0, 8.0]), np.array([5.0, 5.0, 8.0]), 16
    )
    assert values == pytest.approx([1, -1, 0], abs=1e-9)


@pytest.mark.parametrize("most", [1, 7, 12, 1000])
def test_meetings_are_counted_right_however_many_words_go_together(
    monkeypatch: pytest.MonkeyPatch, most: int
) -> None:
    monkeypatch.setattr(keywords, "MOST_WORDS", most)
    rng = np.random.default_rng(1)
    said = rng.integers(0, 3, (50, 12))
    groups = [rng.permutation(12)[:size] for size in (5, 0, 4, 1, 5)]
    found = keywords.meetings([csr_matrix(said[:30]), csr_matrix(said[30:])], groups)
    assert len(found) == len(groups)
    for group, together in zip(groups, found):
        says = (said[:, group] > 0).astype(int)
        assert together.tolist() == (says.T @ says).tolist()
    assert keywords.meetings([csr_matrix(said)], []) == []


def test_coherence_ignores_copies_of_a_text() -> None:
    used = csr_matrix(np.array([[1, 1, 1, 0], [0, 0, 0, 1], [1, 0, 0, 1]] + [[1, 1, 1, 0]] * 50, dtype=float))
    words = ["a", "b", "c", "d"]
    few = quality.coherence(words, [used[:3]], [words])
    assert quality.coherence(words, [used[:20], used[20:]], [words]) == few
    assert quality.coherence(words, [used[:3]], [["a", "b"]]) == 0


def test_the_share_of_unique_first_keywords() -> None:
    assert quality.unique_first([["a", "x"], ["b"], ["a"], ["c"], []]) == pytest.approx(0.4)
