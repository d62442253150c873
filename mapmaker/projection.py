# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""Latent semantic analysis of a collection that is read again and again, batch by batch.

The axes are the leading right singular vectors of the document-word weights A (Deerwester et al. 1990), found
with a random projection and power iterations (Halko et al. 2011). Only the products A'A Z are needed, which are
sums over the documents; so memory is bounded by the number of words, whatever the number of documents.
"""

from collections.abc import Callable, Iterator

import numpy as np
from scipy import linalg
from scipy.sparse import csr_matrix, hstack, identity

from mapmaker.points import Floats

Read = Callable[
    [], Iterator[csr_matrix]
]  # starts to read the rows of A from the first one, in batches (b, m)

SPARE = 10  # directions more than are wanted
ITERATIONS = 7
NOTHING = 1e-14  # relative to the largest: what is below is rounding, not variance


def gram_product(read: Read, directions: Floats) -> Floats:
    """A'A Z for directions Z (m, k).

    Each sum is continued document by document, so that not even the last bit depends on the size of the batches.
    """
    words = len(directions)
    total: Floats = np.zeros_like(directions)
    for rows in read():
        further = hstack([identity(words), rows.T], format="csr")
        total = further @ np.vstack([total, rows @ directions])
    return total


def signs(read: Read, axes: Floats) -> Floats:
    """+1 or -1 for each axis (k, m), so that the document farthest along it lies on its positive side."""
    farthest = np.zeros(len(axes))
    for rows in read():
        places = rows @ axes.T
        batch_farthest = places[np.abs(places).argmax(axis=0), np.arange(len(axes))]
        farthest = np.where(np.abs(batch_farthest) > np.abs(farthest), batch_farthest, farthest)
    return np.where(farthest < 0, -1.0, 1.0)


def leading_axes(read: Read, words: int, dimensions: int, seed: int) -> Floats:
    """Right singular vectors (k, m) of the weights for their k = `dimensions` largest singular values."""
    size = dimensions + SPARE
    directions = np.random.RandomState(seed).normal(size=(words, size))
    for _ in range(ITERATIONS):
        directions = linalg.qr(gram_product(read, directions), mode="economic")[0]
    product = gram_product(read, directions)
    variances, rotation = linalg.eigh(directions.T @ product)
    known = variances > NOTHING * variances[-1]
    scale = np.where(known, 1 / np.sqrt(np.where(known, variances, 1)), 0)
    axes: Floats = linalg.svd((product @ (rotation * scale)).T, full_matrices=False)[2][:dimensions]
    return axes * signs(read, axes)[:, None]
