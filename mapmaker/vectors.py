# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""From texts to vectors: words, TF-IDF weights, and a projection to a hundred dimensions."""

import re
from collections import Counter
from collections.abc import Iterable, Iterator
from typing import NamedTuple

import numpy as np
from scipy.sparse import csr_matrix
from sklearn.preprocessing import normalize

from mapmaker.points import Floats, Ints, Points, stored, to_grain
from mapmaker.projection import leading_axes
from mapmaker.spool import BATCH, Spool
from mapmaker.stopwords import STOP_WORDS

DIMENSIONS = 100
AXES_GRAIN = 2.0**-20
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
    counts: Spool[csr_matrix]  # batches (b, m) of all documents in their order, how often they say a word
    points: Points  # (n, d), of length 1, or 0 for documents without a known word


def words_of(text: str) -> Iterator[str]:
    """Words of a text in lower case: identifiers whole and in parts, without noise and stop words."""
    cleaned = NOISE.sub(" ", CVE.sub(" cve ", PEOPLE.sub(" ", text).lower()))
    for match in IDENTIFIER.finditer(cleaned):
        whole = match[0].strip("_")
        parts = PART.findall(whole)
        candidates = parts if parts == [whole] else [whole, *parts]
        yield from (word for word in candidates if len(word) >= LEAST_LETTERS and word not in STOP_WORDS)


class Counts(NamedTuple):
    """How often each document says each word."""

    words: list[str]  # m, sorted
    often: Ints  # (m,), documents that say a word
    documents: int  # n
    batches: Spool[csr_matrix]  # (b, m) each


def count_batch(texts: Iterable[str], numbers: dict[str, int]) -> csr_matrix:
    """Counts of the words of some texts; a new word gets the next number, which is its column."""
    columns: list[int] = []
    counts: list[int] = []
    ends = [0]
    for text in texts:
        said = Counter(words_of(text))
        columns += (numbers.setdefault(word, len(numbers)) for word in said)
        counts += said.values()
        ends.append(len(columns))
    return csr_matrix((counts, columns, ends), shape=(len(ends) - 1, len(numbers)), dtype=np.int32)


def count_words(texts: Iterable[Iterable[str]], least: int, share: float) -> Counts:
    """Words in at least `least` documents and at most the given share of them, and their counts.

    The texts come in batches and are read once. Raises ValueError when no word is left.
    """
    numbers: dict[str, int] = {}
    all_counts: Spool[csr_matrix] = Spool()
    often = np.zeros(0, dtype=np.int64)
    documents = 0
    for batch in texts:
        counts = count_batch(batch, numbers)
        all_counts.append(counts)
        known, often = often, np.bincount(counts.indices, minlength=len(numbers))
        often[: len(known)] += known
        documents += counts.shape[0]
    kept = (often >= least) & (often <= share * documents)
    words = sorted(word for word, number in numbers.items() if kept[number])
    if not words:
        raise ValueError("no word is common enough")
    columns = np.array([numbers[word] for word in words])
    return Counts(words, often[columns], documents, Spool(chosen_columns(all_counts, columns, len(numbers))))


def chosen_columns(batches: Iterable[csr_matrix], columns: Ints, width: int) -> Iterator[csr_matrix]:
    """Columns of counts whose batches may lack columns at the end; all together they have `width`."""
    for counts in batches:
        counts.resize((counts.shape[0], width))
        chosen = counts[:, columns].astype(np.float64)
        chosen.sort_indices()
        yield chosen


def weighted(counts: Counts) -> Iterator[csr_matrix]:
    """Sublinear TF-IDF weights (b, m) of the documents, batch by batch, each row of length 1."""
    idf = np.log((counts.documents + 1) / (counts.often + 1)) + 1
    for batch in counts.batches:
        batch.data = (np.log(batch.data) + 1) * idf[batch.indices]
        yield normalize(batch, copy=False)


def project(
    counts: Counts, rng: np.random.Generator, dimensions: int = DIMENSIONS, batch: int = BATCH
) -> Points:
    """Points (n, d) on the unit sphere: sublinear TF-IDF weights, then latent semantic analysis.

    Axes and points are rounded, so that the number of processor threads doesn't show in the result.
    """
    dimensions = min(dimensions, min(counts.documents, len(counts.words)) - 1)
    if dimensions < 2:
        raise ValueError("a map needs at least two dimensions")
    seed = int(rng.integers(2**31))
    axes = leading_axes(lambda: weighted(counts), len(counts.words), dimensions, seed)
    rounded_axes = to_grain(axes.T, AXES_GRAIN)
    rows = (unit_length(weights @ rounded_axes) for weights in weighted(counts))
    return stored(rows, (counts.documents, dimensions), batch)


def unit_length(rows: Floats) -> Floats:
    """Rows scaled to length 1; rows of zeros stay."""
    lengths = np.sqrt((rows**2).sum(axis=1, keepdims=True))
    scaled: Floats = rows / np.maximum(lengths, 1e-9)
    return scaled


def vectorize(
    texts: Iterable[Iterable[str]],
    rng: np.random.Generator,
    least: int = 5,
    share: float = 0.3,
    batch: int = BATCH,
) -> Vectors:
    """Words, counts and points of a collection; the texts come in batches and are read once.

    `batch` is the number of points that later steps take into memory at once.
    """
    counts = count_words(texts, least, share)
    return Vectors(counts.words, counts.batches, project(counts, rng, batch=batch))
