# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""All questions, with the goals that the module is held to."""

from bench.runner.data import SOM, Data
from bench.runner.faults import BOTH, FAULTS, Samplers
from bench.runner.question import LIMIT, MODULE, PEER, Fresh, Question, Side
from bench.runner.worker import Answer, Worker

REPETITIONS = 2  # of a selection whose memory is measured
TEXT_SIZES = (100, 1_000, 10_000, 100_000)
TEXT_LENGTH = 2000
DATE_SIZES = (100, 1_000, 10_000, 100_000, 1_000_000)
DATE_LENGTH = 20
CALLS = 5_000
TREE_SIZES = (1_000, 10_000, 100_000)
LARGE_TREE = 1_000_000
FAULT_GOAL = 1.0  # seconds
PAGE = ("800", "440")  # pixels
PAGE_SIZES = (1_000, 10_000, 100_000)


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


def prepare_dates(data: Data) -> None:
    data.documents("dates", DATE_SIZES, DATE_LENGTH)


def prepare_few(data: Data) -> None:
    data.documents("few", (100,), DATE_LENGTH)


def prepare_maps(data: Data) -> None:
    prepare_few(data)
    data.bare_map()
    data.maps(TREE_SIZES)


def prepare_large_map(data: Data) -> None:
    prepare_maps(data)
    data.maps((LARGE_TREE,))


def memory_of_tree(worker: Worker, size: int) -> Answer:
    """What a filled tree adds to the process."""
    before = worker.ready.figures["own"]
    answer = worker.go(str(size))
    return Answer({"memory": answer.figures["own"] - before}, answer.results)


TEXTS = documents("texts")
SELECT = (
    Side(MODULE, "select_module", (*TEXTS, "hidden"), "hidden"),
    Side(MODULE, "select_module", (*TEXTS, "shown"), "shown"),
    Side(LIMIT, "select_limit", TEXTS),
    Side(PEER, "select_peer", (*TEXTS, "shown")),
)
DATES = documents("dates")
DATE_GOALS = {1_000: 2.5, **same((10_000, 100_000, 1_000_000), 1.5)}
FEW = "bench_few"
HUGE = documents("huge")
TREE = (
    Side(MODULE, "tree_module", (SOM, "map", FEW)),
    Side(LIMIT, "tree_limit", (SOM, "map")),
    Side(PEER, "tree_peer", (SOM,)),
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
        {1_000: 3, 10_000: 3, 100_000: 2},
        prepare_texts,
        figures=("first", "repeated", "peak"),
        sampler=Fresh(memory_of_selections),
        of_limit={figure: same((10_000, 100_000), 1.05) for figure in ("first", "repeated", "peak")},
        grows=("first",),
    ),
    Question(
        "dates",
        "fillDate, and markRow that finds no row",
        (
            Side(MODULE, "dates_module", DATES),
            Side(LIMIT, "dates_limit", DATES),
            Side(PEER, "dates_peer", DATES),
        ),
        {1_000: 15, 10_000: 9, 100_000: 7, 1_000_000: 3},
        prepare_dates,
        figures=("fill", "mark"),
        of_limit={"fill": DATE_GOALS, "mark": DATE_GOALS},
        grows=("fill", "mark"),
    ),
    Question(
        "calls",
        "an answered call, getNumRows, all threads on one core",
        (
            Side(MODULE, "calls_module", (*DATES, "100")),
            Side(LIMIT, "calls_limit", ("100",)),
            Side(PEER, "calls_peer", ("100",)),
        ),
        {CALLS: 15},
        prepare_dates,
        figures=("median", "p99"),
        of_limit={"median": {CALLS: 1.15}, "p99": {CALLS: 1.3}},
    ),
    Question(
        "tree",
        "from the hierarchy to the filled tree with keywords, window shown",
        TREE,
        {1_000: 15, 10_000: 9, 100_000: 5},
        prepare_maps,
        of_limit={"time": {1_000: 2.0, 10_000: 1.4, 100_000: 1.4}},
        grows=("time",),
    ),
    Question(
        "bare-tree",
        "the same without a keyword table",
        (Side(MODULE, "tree_module", (SOM, "bare", FEW)), Side(LIMIT, "tree_limit", (SOM, "bare"))),
        {1_000: 15, 10_000: 9, 100_000: 5},
        prepare_maps,
        of_limit={"time": same(TREE_SIZES, 3)},
        grows=("time",),
    ),
    Question(
        "tree-memory",
        "memory that a filled tree adds",
        TREE[:2],
        {100_000: 2, LARGE_TREE: 2},
        prepare_large_map,
        figures=("memory",),
        sampler=Fresh(memory_of_tree),
        of_limit={"memory": {LARGE_TREE: 1.4}},
    ),
    Question(
        "items",
        "the host selects a node without documents: the tree's item becomes current",
        (
            Side(MODULE, "items_module", (SOM, FEW)),
            Side(LIMIT, "items_limit", (SOM, FEW)),
            Side(PEER, "items_peer", (SOM, FEW)),
        ),
        {1_000: 9, 10_000: 7, 100_000: 5},
        prepare_maps,
        of_limit={"time": same(TREE_SIZES, 2.5)},
        grows=("time",),
    ),
    Question(
        "open-tree",
        "open all nodes of the tree",
        (
            Side(MODULE, "opentree_module", (SOM, FEW)),
            Side(LIMIT, "opentree_limit"),
            Side(PEER, "opentree_peer", (SOM,)),
        ),
        {1_000: 9, 10_000: 7, 100_000: 5},
        prepare_maps,
        of_limit={"time": same(TREE_SIZES, 1.3)},
        grows=("time",),
    ),
    Question(
        "pages",
        "a page of coloured rows: repainted, and 1,000 pages across all rows",
        (
            Side(MODULE, "pages_module", (*DATES, *PAGE)),
            Side(LIMIT, "pages_limit", (*DATES, *PAGE)),
            Side(PEER, "pages_peer", (*DATES, *PAGE)),
        ),
        dict.fromkeys(PAGE_SIZES, 3),
        prepare_dates,
        figures=("page", "scroll"),
        of_limit={"page": same(PAGE_SIZES, 2.0), "scroll": same(PAGE_SIZES, 2.5)},
        of_peer={figure: same(PAGE_SIZES, 1.0) for figure in ("page", "scroll")},
        flat={figure: (100_000, 1_000, 1.1) for figure in ("page", "scroll")},
    ),
    Question(
        "huge",
        "1,000 documents (1), and one more with a text of 64 MB in a cell in sight (2)",
        (Side(MODULE, "huge_module", HUGE), Side(LIMIT, "select_limit", HUGE)),
        {1: 9, 2: 5},
        Data.huge_text,
        figures=("time", "page"),
        of_limit={"time": {1: 1.15, 2: 1.15}},
        flat={"page": (2, 1, 1.1)},
    ),
    Question(
        "load",
        "load and construct; from the process's start to the window; memory of both",
        (Side(MODULE, "load", ("module", SOM, FEW)), Side(LIMIT, "load", ("empty", SOM, FEW))),
        {1: 15},
        prepare_few,
        figures=("construct", "window", "memory"),
        sampler=Fresh(lambda worker, size: worker.ready),
        of_limit={"construct": {1: 1.35}, "window": {1: 1.25}, "memory": {1: 1.3}},
    ),
    Question(
        "idle",
        "wake-ups in ten seconds of nothing, window filled and shown",
        (
            Side(MODULE, "idle", ("module", SOM, "few_train", FEW)),
            Side(LIMIT, "idle", ("empty", SOM, "few_train", FEW)),
        ),
        {100: 1},
        prepare_few,
        figures=("wakeups",),
        sampler=Fresh(lambda worker, size: worker.go(str(size))),
        absolute={"wakeups": {100: 0}},
    ),
    Question(
        "faults",
        "from a fault, or its end, to the answers of the host's questions; from free to a new window's",
        tuple(Side(MODULE, "faults_module", (name,), name, FAULTS[name].figures) for name in FAULTS),
        {1: 7},
        lambda data: None,
        figures=BOTH,
        sampler=Samplers(),
        absolute={figure: {1: FAULT_GOAL} for figure in BOTH},
    ),
)
