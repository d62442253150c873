# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""Keywords: the words that tell a node's documents from the others.

A word scores high where a much larger share of the node's documents use it than of the whole collection.
That is TF-IDF with each node taken as one class (c-TF-IDF, Grootendorst 2022), on document frequencies, so
that one long text doesn't decide. Further words are chosen to occur together with the ones before.
"""

from collections.abc import Iterable, Iterator, Sequence
from typing import NamedTuple

import numpy as np
from numpy.typing import NDArray
from scipy.sparse import csr_matrix

from mapmaker.hierarchy import Node
from mapmaker.points import Floats, Ints

KEYWORDS = 8
CANDIDATES = 40
LEAST_SHARE = 0.1  # of a node's documents that use a keyword
RARE = 0.01  # factor for words below that share
# A first keyword may score this share of the node's best when the better ones are taken; so low that even a
# word just below the least share may stand in.
FAMILIAR = 0.001
TOGETHER = 4.0  # weight of co-occurrence in the choice of further keywords
STEM = 5  # letters that two forms of one word share
DIGITS = 9
MOST_WORDS = 1024  # whose pairs are counted at once, in 8 MB


class Usage(NamedTuple):
    """How many of the n documents use the m words."""

    by_unit: csr_matrix  # (u, m)
    sizes: Floats  # (u,), documents of each unit
    everywhere: Floats  # (m,)


def usage(counts: Iterable[csr_matrix], words: int, units: Ints) -> Usage:
    """Sums over counts of m words that come in batches (b, m); `units` (n) gives each document's unit."""
    start, count = 0, int(units.max()) + 1
    by_unit = csr_matrix((count, words))
    for batch in counts:
        own = units[start : start + batch.shape[0]]
        member = csr_matrix((np.ones(len(own)), (own, np.arange(len(own)))), shape=(count, len(own)))
        by_unit = by_unit + member @ used(batch)
        start += len(own)
    sizes = np.bincount(units, minlength=count).astype(np.float64)
    return Usage(by_unit, sizes, np.asarray(by_unit.sum(axis=0)).ravel())


def used(counts: csr_matrix) -> csr_matrix:
    """1 where a document uses a word."""
    return (counts > 0).astype(np.float64)


def word_scores(usage: Usage, units: Sequence[int]) -> Floats:
    """Scores (m) of the words for the documents of some units.

    Words in less than a tenth of the documents score next to nothing: they only fill up short lists.
    """
    everywhere, documents = usage.everywhere, usage.sizes.sum()
    share = np.asarray(usage.by_unit[units].sum(axis=0)).ravel() / max(1, usage.sizes[units].sum())
    idf = np.log(1 + documents / np.maximum(everywhere, 1))
    lift = np.log(1 + share / np.maximum(everywhere / documents, 1e-9))
    rare = np.where(share >= LEAST_SHARE, 1, RARE)
    scores: Floats = np.round(share * idf * lift * rare, DIGITS)
    return scores


def same_word(first: str, second: str) -> bool:
    """Whether one word is a form or a compound of the other."""
    short, long = sorted((first, second), key=len)
    if short in long:
        return True
    common = next((i for i, (a, b) in enumerate(zip(first, second)) if a != b), len(short))
    return common >= STEM and common >= len(short) - 2


def npmi(together: Floats, first: Floats, second: Floats, documents: int) -> Floats:
    """Normalized pointwise mutual information from numbers of documents (Bouma 2009), -1 to 1.

    Words that never meet have -1, words that always meet 1.
    """
    joint = np.maximum(together, 0.5) / documents
    information = np.log(joint * documents**2 / np.maximum(first * second, 1))
    value = np.where(joint < 1, information / -np.log(np.minimum(joint, 1 - 1e-12)), 1)
    result: Floats = np.where(together > 0, np.clip(value, -1, 1), -1)
    return result


def meetings(counts: Iterable[csr_matrix], groups: Sequence[Ints]) -> list[Floats]:
    """For groups of k columns each, in how many documents each pair of them meets, (k, k).

    The counts come in batches (b, m). The diagonal has the documents of each word.
    """
    together = [np.zeros((len(group), len(group))) for group in groups]
    bundles = list(bundled(groups))
    for batch in counts:
        columns = used(batch).tocsc()
        sums = iter(together)
        for words, members in bundles:
            chosen = columns[:, words]
            pairs = (chosen.T @ chosen).toarray()
            for group in members:
                places = np.searchsorted(words, group)
                total = next(sums)
                total += pairs[np.ix_(places, places)]
    return together


def bundled(groups: Sequence[Ints]) -> Iterator[tuple[Ints, list[Ints]]]:
    """Groups that are counted by one product, in their order, with the words of them all, ascending.

    The product has all pairs of these words, so their number is bounded.
    """
    words, members = np.empty(0, dtype=np.int64), list[Ints]()
    for group in groups:
        more = np.union1d(words, group)
        if members and len(more) > MOST_WORDS:
            yield words, members
            more, members = np.unique(group), []
        words = more
        members.append(group)
    yield words, members


def pair_npmi(together: Floats, documents: int) -> Floats:
    """NPMI of all pairs of words (k, k) from the numbers of documents in which they meet."""
    single = together.diagonal()
    return npmi(together, single[:, None], single[None, :], documents)


def choose(words: Sequence[str], values: Floats, bonds: Floats, taken: set[str]) -> list[str]:
    """Keywords of one node, the best first.

    Parameters: candidates (k) with their scores (k) in falling order, their NPMI (k, k), and the first
    keywords of other nodes. Those are passed over for the first place unless all good ones are taken.
    """
    if not words:
        return []
    good = [i for i, value in enumerate(values) if value >= FAMILIAR * values[0]]
    free = [i for i in good if words[i] not in taken]
    chosen = [free[0] if free else 0]
    while len(chosen) < KEYWORDS:
        rest = [i for i in range(len(words)) if not any(same_word(words[i], words[j]) for j in chosen)]
        if not rest:
            break
        merit = values[rest] * np.maximum(0.01, 1 + TOGETHER * bonds[np.ix_(rest, chosen[:3])].mean(axis=1))
        chosen.append(rest[int(np.round(merit, DIGITS).argmax())])
    return [words[i] for i in chosen]


def candidates(values: Floats) -> Ints:
    """Columns of the words with the best scores, falling."""
    best: Ints = np.argsort(-values, kind="stable")[:CANDIDATES]
    return best[values[best] > 0]


def node_keywords(
    words: Sequence[str], counts: Iterable[csr_matrix], units: Ints, nodes: Sequence[Node]
) -> list[list[str]]:
    """Keywords of all nodes (in their order) from words (m), counts and each document's unit (n).

    The counts come in batches (b, m) and are read twice.
    """
    whole = usage(counts, len(words), units)
    groups, scores = [], []
    for node in nodes:
        values = word_scores(whole, node.units)
        groups.append(candidates(values))
        scores.append(values[groups[-1]])
    taken: set[str] = set()
    result = []
    for values, group, together in zip(scores, groups, meetings(counts, groups)):
        bonds = np.round(pair_npmi(together, len(units)), DIGITS)
        chosen = choose([words[i] for i in group], values, bonds, taken)
        taken.update(chosen[:1])
        result.append(chosen)
    return result


def keywords_text(chosen: Iterable[str]) -> str:
    """Keywords as stored, for a reader who shows commas for line feeds.

    Readers cut the text before the third line feed, and show only the first line if there is exactly one
    line feed. So two keywords share a line, and three or more have a line each.
    """
    lines = list(chosen)
    return ", ".join(lines) if len(lines) <= 2 else "\n".join(lines)
