# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""A seeded collection of invented texts, for machines whose packages come without release notes."""

from collections.abc import Iterator
from datetime import datetime, timedelta

import numpy as np

from mapmaker.sources.document import Document, folder_address
from mapmaker.sources.vocabulary import Subject, subjects

FIRST_DAY = datetime(2004, 3, 1)
YEARS = 20
GERMAN_SHARE = 0.4
URGENCIES = ("low", "medium", "high")
SENTENCES = (4, 9)  # fewest and most in a text

ENGLISH_TITLES = (
    "A day with {a} and {b}",
    "Notes on {subject}",
    "Why {a} beat {b}",
    "More about {subject}: {a}",
)
GERMAN_TITLES = ("Schöne {a} für {b}", "Notizen über {subject}", "Ärger durch {a}", "Früher {a}, künftig {b}")

ENGLISH_SENTENCES = (
    "In spring we compare {a} with {b}.",
    "Many readers ask how {a} differ from {b}.",
    "Old {a} can be found next to {b}, if one looks closely.",
    "Our neighbours keep {a} and speak of {b} all evening.",
    "Good {subject} begin with {a}.",
    "On Sunday the {a} came first, the {b} later.",
    "Whoever knows {a} will soon love {b}.",
    "After the rain there were {a} everywhere, but few {b}.",
)
GERMAN_SENTENCES = (
    "Im Frühjahr vergleichen wir {a} und {b}.",
    "Viele Leserinnen fragen, wie sich {a} und {b} unterscheiden.",
    "Alte {a} liegen oft neben {b}, wenn man genau hinschaut.",
    "Unsere Nachbarn lieben {a} und erzählen abends über {b}.",
    "Für gute {subject} braucht man {a}.",
    "Am Sonntag kamen zuerst {a}, später {b}.",
    "Wer {a} kennt, mag bald auch {b}.",
    "Nach dem Regen gab es überall {a}, aber kaum {b}.",
)


def fill_in(patterns: tuple[str, ...], name: str, nouns: list[str], rng: np.random.Generator) -> str:
    """One of the patterns with two different nouns set in."""
    first, second = rng.choice(len(nouns), size=2, replace=False)
    pattern = patterns[int(rng.integers(len(patterns)))]
    return pattern.format(a=nouns[first], b=nouns[second], subject=name)


def sentence_case(text: str) -> str:
    """The text with its first letter as a capital."""
    return text[:1].upper() + text[1:]


def write(subject: Subject, date: datetime, url: str, rng: np.random.Generator) -> Document:
    """One text about a subject in one of the two languages."""
    german = rng.random() < GERMAN_SHARE
    name, nouns = (
        (subject.german, subject.german_nouns) if german else (subject.english, subject.english_nouns)
    )
    titles, sentences = (GERMAN_TITLES, GERMAN_SENTENCES) if german else (ENGLISH_TITLES, ENGLISH_SENTENCES)
    length = int(rng.integers(SENTENCES[0], SENTENCES[1] + 1))
    return Document(
        date=date,
        title=sentence_case(fill_in(titles, name, nouns, rng)),
        url=url,
        text="\n".join(fill_in(sentences, name, nouns, rng) for _ in range(length)),
        author=f"Redaktion {subject.german}" if german else f"{sentence_case(subject.english)} desk",
        urgency=URGENCIES[int(rng.choice(len(URGENCIES), p=(0.7, 0.25, 0.05)))],
        package=subject.topic,
    )


def make(documents: int, rng: np.random.Generator, folder: str) -> Iterator[Document]:
    """A collection in order of date; the texts have no address of their own, so all lead to the folder."""
    known = subjects()
    url = folder_address(folder)
    for minute in np.sort(rng.integers(YEARS * 365 * 24 * 60, size=documents)):
        subject = known[int(rng.integers(len(known)))]
        yield write(subject, FIRST_DAY + timedelta(minutes=int(minute)), url, rng)
