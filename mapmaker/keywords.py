# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""Keywords: the words that tell a node's documents from the others.

A word scores high where a much larger share of the node's documents use it than of the whole collection.
That is TF-IDF with each node taken as one class (c-TF-IDF, Grootendorst 2022), on document frequencies, so
that one long text doesn't decide. Further words are chosen to occur together with the ones before.
"""

from collections.abc import Iterable, Sequence

import numpy as np
from numpy.typing import NDArray
from scipy.sparse import csr_matrix

from mapmaker.hierarchy import Node, members
from mapmaker.som import Ints
from mapmaker.vectors import Floats

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


def word_scores(used: csr_matrix, documents: Ints, everywhere: Floats) -> Floats:
    """Scores (m) of the words for some documents; `everywhere` (m) counts documents of the collection.

    Words in less than a tenth of the documents score next to nothing: they only fill up short lists.
    """
    share = np.asarray(used[documents].sum(axis=0)).ravel() / max(1, len(documents))
    idf = np.log(1 + used.shape[0] / np.maximum(everywhere, 1))
    lift = np.log(1 + share / np.maximum(everywhere / used.shape[0], 1e-9))
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


def pair_npmi(used: csr_matrix) -> Floats:
    """NPMI of all pairs of the columns of a document-word matrix (n, k); shape (k, k)."""
    together = np.asarray((used.T @ used).todense())
    single = together.diagonal()
    return npmi(together, single[:, None], single[None, :], used.shape[0])


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


def node_keywords(
    words: Sequence[str], counts: csr_matrix, units: Ints, nodes: Sequence[Node]
) -> list[list[str]]:
    """Keywords of all nodes (in their order) from words (m), counts (n, m) and each document's unit (n)."""
    used = (counts > 0).astype(np.float64).tocsr()
    columns = used.tocsc()
    everywhere = np.asarray(used.sum(axis=0)).ravel()
    taken: set[str] = set()
    result = []
    for node in nodes:
        values = word_scores(used, members(node, units), everywhere)
        best = np.argsort(-values, kind="stable")[:CANDIDATES]
        best = best[values[best] > 0]
        bonds = np.round(pair_npmi(columns[:, best]), DIGITS)
        chosen = choose([words[i] for i in best], values[best], bonds, taken)
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
