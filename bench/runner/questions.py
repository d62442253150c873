# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""All questions, with the goals that the module is held to."""

from bench.runner.data import SOM, Data
from bench.runner.question import LIMIT, MODULE, PEER, Fresh, Question, Side
from bench.runner.worker import Answer, Worker

REPETITIONS = 4  # of a selection whose memory is measured
TEXT_SIZES = (100, 1_000, 10_000, 100_000)
TEXT_LENGTH = 2000


def same(sizes: tuple[int, ...], goal: float) -> dict[int, float]:
    return dict.fromkeys(sizes, goal)


def documents(name: str) -> tuple[str, str, str]:
    """Database and table of the map, database of the documents."""
    return (SOM, f"{name}_train", f"bench_{name}")


def prepare_texts(data: Data) -> None:
    data.documents("texts", TEXT_SIZES, TEXT_LENGTH)


def memory_of_selections(worker: Worker, size: int) -> Answer:
    """What a first selection adds to the process, what is added after further ones, and the most meanwhile."""
    before = worker.ready.figures
    answers = [worker.go(str(size)) for _ in range(1 + REPETITIONS)]
    own = [answer.figures["own"] - before["own"] for answer in answers]
    peak = max(answer.figures["peak"] for answer in answers) - before["resident"]
    return Answer({"first": own[0], "repeated": own[-1], "peak": peak}, answers[-1].results)


TEXTS = documents("texts")
SELECT = (
    Side(MODULE, "select_module", (*TEXTS, "hidden"), "hidden"),
    Side(MODULE, "select_module", (*TEXTS, "shown"), "shown"),
    Side(LIMIT, "select_limit", TEXTS),
    Side(PEER, "select_peer", (*TEXTS, "shown")),
)

QUESTIONS = (
    Question(
        "select",
        "from select to the answer of getNumRows, documents of 2 KB",
        SELECT,
        {100: 25, 1_000: 15, 10_000: 7, 100_000: 5},
        prepare_texts,
        of_limit={"time": {100: 1.35, 1_000: 1.15, 10_000: 1.10, 100_000: 1.06}},
        of_peer={"time": {100: 0.5, 1_000: 0.5, 10_000: 0.5, 100_000: 0.65}},
        grows=("time",),
    ),
    Question(
        "memory",
        "memory that a selection adds",
        SELECT[1:],
        {1_000: 3, 10_000: 3, 100_000: 3},
        prepare_texts,
        figures=("first", "repeated", "peak"),
        sampler=Fresh(memory_of_selections),
        of_limit={figure: same((10_000, 100_000), 1.05) for figure in ("first", "repeated", "peak")},
        grows=("first",),
    ),
)
