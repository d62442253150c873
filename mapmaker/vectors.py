# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""From texts to vectors: words, TF-IDF weights, and a projection to a hundred dimensions."""

import re
from collections.abc import Iterable, Iterator
from typing import NamedTuple

import numpy as np
from numpy.typing import NDArray
from scipy.sparse import csr_matrix
from sklearn.feature_extraction.text import CountVectorizer, TfidfTransformer
from sklearn.utils.extmath import randomized_svd

from mapmaker.stopwords import STOP_WORDS

Floats = NDArray[np.float64]

DIMENSIONS = 100
GRAIN = 2.0**-14  # vectors are multiples of it, so that dot products of the map are exact
LEAST_LETTERS = 3

NOISE = re.compile(
    r"\b[a-z][a-z0-9+.]*://\S+"  # addresses
    r"|\S+@\S+"  # mail
    r"|^\s*\[ .*? \]\s*$"  # contributors
    r"|\(?\blp:?\s*#\d+\)?"
    r"|#\s*\d+"  # bug numbers
    r"|(?<![\w-])\d[\w.+~:-]*",  # versions and other numbers
    re.MULTILINE,
)
# People stand in parentheses or after a word of thanks; they tell nothing about the subject.
PERSON = r"(?:[^\W\d_a-z][\w'.-]+ ){1,2}[^\W\d_a-z][\w'-]+"
PEOPLE = re.compile(rf"\({PERSON}\)|\b(?:[Tt]hanks|[Rr]eported by|[Pp]atch by)(?:,? to)?[,:]?\s+{PERSON}")
CVE = re.compile(r"\bc(?:ve|an)-\d{4}-[\dx]+")
IDENTIFIER = re.compile(r"[^\W\d_]\w*(?:[-._+]\w+)*")
PART = re.compile(r"[^\W\d_][^\W_]*")


class Vectors(NamedTuple):
    """A collection as numbers: n documents, m words, d dimensions."""

    words: list[str]  # m
    counts: csr_matrix  # (n, m), how often a document says a word
    points: Floats  # (n, d), rows of length 1, or 0 for documents without a known word


def words_of(text: str) -> Iterator[str]:
    """Words of a text in lower case: identifiers whole and in parts, without noise and stop words."""
    cleaned = NOISE.sub(" ", CVE.sub(" cve ", PEOPLE.sub(" ", text).lower()))
    for match in IDENTIFIER.finditer(cleaned):
        whole = match[0].strip("_")
        parts = PART.findall(whole)
        candidates = parts if parts == [whole] else [whole, *parts]
        yield from (word for word in candidates if len(word) >= LEAST_LETTERS and word not in STOP_WORDS)


def count_words(texts: Iterable[str], least: int, share: float) -> tuple[list[str], csr_matrix]:
    """Words in at least `least` documents and at most the given share of them, and their counts (n, m)."""
    counter = CountVectorizer(analyzer=lambda text: list(words_of(text)), min_df=least, max_df=share)
    counts = counter.fit_transform(texts).astype(np.float64)
    return list(counter.get_feature_names_out()), counts


def to_grain(values: Floats, grain: float) -> Floats:
    """Values rounded to multiples of a power of two; sums of their products don't depend on the order."""
    rounded: Floats = np.rint(values / grain) * grain
    return rounded


def project(counts: csr_matrix, rng: np.random.Generator, dimensions: int = DIMENSIONS) -> Floats:
    """Points (n, d) on the unit sphere: sublinear TF-IDF weights, then latent semantic analysis.

    The axes are the leading right singular vectors of the weights (Deerwester et al. 1990), found with a
    random projection (Halko et al. 2011). Axes and points are rounded, so that the number of processor
    threads doesn't show in the result.
    """
    weights = TfidfTransformer(sublinear_tf=True).fit_transform(counts)
    dimensions = min(dimensions, min(weights.shape) - 1)
    if dimensions < 2:
        raise ValueError("a map needs at least two dimensions")
    seed = int(rng.integers(2**31))
    axes = randomized_svd(weights, dimensions, n_iter=7, random_state=seed)[2]
    points = weights @ to_grain(axes.T, 2.0**-20)
    lengths = np.sqrt((points**2).sum(axis=1, keepdims=True))
    return to_grain(points / np.maximum(lengths, 1e-9), GRAIN)


def vectorize(texts: Iterable[str], rng: np.random.Generator, least: int = 5, share: float = 0.3) -> Vectors:
    """Words, counts and points of a collection; the texts are read once."""
    words, counts = count_words(texts, least, share)
    return Vectors(words, counts, project(counts, rng))
