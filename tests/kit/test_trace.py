# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""The tracer: a host's calls are recorded and passed on, and can be made again."""

import json
import os
import re
import subprocess
import sys
import textwrap
from pathlib import Path
from typing import Any

import pytest
from kitprocess import BUILD, FAKE, LIMIT, TOP

HOST, TRACER, MODULE = BUILD / "qtutils-host", BUILD / "qtutils-trace.so", BUILD / "qtutils.so"
TOUR = "host/scripts/tour.qth"
KEPT = "tests/kit/recordings/news.jsonl"
SERVER = {"MYSQL_HOST": "there", "MYSQL_USER": "somebody", "MYSQL_PWD": "secret"}
CALLS = (
    'CNodeBrowser "som" Köln; setSOMTable null; passNodeHierarchy [1 2 9] 2 0 3; markRow "2005-03-01 13:00:00" 24;'
    " getNumRows int[1]; fillDate int[3]; setRowColors [0 80.5 255 1 2 3 1e9 5 6 7]; getFirstDateInFrame int[1];"
    " select 5; getFirstDateInSelection char[20]"
)
Line = dict[str, Any]


def run(
    command: list[str | Path], variables: dict[str, str], around: str = ""
) -> "subprocess.CompletedProcess[str]":
    """Runs a program to its end in the top folder, if asked for with a shell's commands around it."""
    words = [str(word) for word in command]
    if around:
        words = ["sh", "-c", around, "sh", *words]
    environment = {**os.environ, **variables}
    return subprocess.run(
        words, env=environment, cwd=TOP, capture_output=True, text=True, timeout=LIMIT, check=False
    )


def traced(file: Path | str, module: Path | str = FAKE) -> dict[str, str]:
    return {**SERVER, "QTUTILS_TRACE_FILE": str(file), "QTUTILS_TRACE_MODULE": str(module)}


def read(file: Path) -> list[Line]:
    return [json.loads(line) for line in file.read_text(encoding="utf-8").splitlines()]


def python(program: str, variables: dict[str, str]) -> "subprocess.CompletedProcess[str]":
    """Runs a program that calls functions of the tracer in its variable "module"."""
    beginning = f"import ctypes, os, sys\nmodule = ctypes.CDLL({str(TRACER)!r})\n"
    return run([sys.executable, "-c", beginning + textwrap.dedent(program)], variables)


def test_calls_are_written_with_arguments_and_answers(tmp_path: Path) -> None:
    file = tmp_path / "calls.jsonl"
    result = run([HOST, TRACER, "--command", CALLS], traced(file))
    assert (result.returncode, result.stderr) == (0, "")
    assert file.stat().st_mode & 0o777 == 0o600
    head, *lines = read(file)
    assert (head["qtutils-trace"], head["module"], head["TZ"]) == (1, str(FAKE), os.environ.get("TZ"))
    assert re.fullmatch(r"\d{4}-\d\d-\d\dT\d\d:\d\d:\d\dZ", head["started"]) and head["process"] > 1
    handle = lines[1]["handle"]
    assert re.fullmatch("0x[0-9a-f]+", handle) and lines[0]["handle"] is None
    assert [(line["function"].removeprefix("nodeBrowser_"), line["arguments"]) for line in lines[::2]] == [
        ("CNodeBrowser", ["som", "Köln"]),
        ("setSOMTable", [None]),
        ("passNodeHierarchy", [[1, 2], 2, 0, 3]),
        ("markRow", ["2005-03-01 13:00:00", 24]),
        ("getNumRows", [{}]),
        ("fillDate", [{}]),
        ("setRowColors", [[0, 80.5, 255, 1, 2, 3, 1e9, 5, 6]]),  # three rows
        ("getFirstDateInFrame", [{}]),
        ("select", [5]),
        ("getFirstDateInSelection", [{}]),
        ("FREE_CNodeBrowser", []),
    ]
    assert [line["call"] for line in lines[::2]] == [line["answer"] for line in lines[1::2]]
    assert {line["handle"] for line in lines[2::2]} == {handle}
    assert {line["thread"] for line in lines[::2]} == {1}
    times = [line["at"] for line in lines[::2]]
    assert times == sorted(times) and all(line["took"] >= 0 for line in lines[1::2])
    assert [line["results"] for line in lines if "results" in line] == [
        [{"before": [0], "after": [3]}],
        [{"before": [0, 0, 0], "after": [0, 10, 20]}],
        [{"before": [0], "after": [0]}],
        [{"before": "", "after": ""}],
    ]


def test_without_the_number_of_rows_dates_tell_it(tmp_path: Path) -> None:
    file = tmp_path / "calls.jsonl"
    calls = "CNodeBrowser a b; select 1; fillDate repeat(9, [-5]) ; setRowColors repeat(9, [1 2 3])"
    assert run([HOST, TRACER, "--command", calls], traced(file)).returncode == 0
    lines = {line.get("function"): line for line in read(file)}
    assert lines["nodeBrowser_setRowColors"]["arguments"] == [[1, 2, 3] * 3]


def test_the_tour_is_the_same_with_the_tracer(surroundings: dict[str, str], tmp_path: Path) -> None:
    file = tmp_path / "calls.jsonl"
    drafts = (TOP / "tests/data/drafts.sql").read_bytes()
    client = ["mariadb", "--no-defaults", f"--user={surroundings['MYSQL_USER']}"]
    subprocess.run([*client, "--default-character-set=utf8mb4"], input=drafts, env=surroundings, check=True)
    variables = {**surroundings, "TZ": "Europe/Berlin", "QTUTILS_TRACE_FILE": str(file)}
    # when: the module is found beside the tracer
    result = run([HOST, TRACER, "--check", TOUR], variables)
    # then
    assert (result.returncode, result.stderr) == (0, "")
    assert result.stdout.startswith(f"{TOUR}: answers as written")
    # when
    calls = sum("call" in line for line in read(file))
    again = run([HOST, MODULE, "--replay", file], variables)
    # then
    assert calls > 40
    assert again.stdout.endswith(f"{file}: answers as recorded, calls: {calls}\n"), again.stderr
    assert again.returncode == 0


def test_a_kept_recording_has_the_same_answers(surroundings: dict[str, str]) -> None:
    result = run([HOST, MODULE, "--replay", KEPT], surroundings)
    assert result.stdout.endswith(f"{KEPT}: answers as recorded, calls: 34\n"), result.stderr
    assert result.returncode == 0


def test_another_answer_in_a_kept_recording_is_found(surroundings: dict[str, str], tmp_path: Path) -> None:
    copy = tmp_path / "copy.jsonl"
    lines = (TOP / KEPT).read_text(encoding="utf-8").splitlines()
    (place,) = [number for number, line in enumerate(lines) if '"after":[0,2010,2220,3376,4320]' in line]
    lines[place] = lines[place].replace("3376,4320]", "3377,4320]")
    copy.write_text("\n".join(lines) + "\n", encoding="utf-8")
    result = run([HOST, MODULE, "--replay", copy], surroundings)
    assert result.returncode == 1
    assert f"{copy}:{place + 1}: nodeBrowser_fillDate: piDate[3]: recorded 3377, got 3376\n" in result.stderr


@pytest.mark.parametrize(
    "file, around, cause",
    [
        ("", "", "QTUTILS_TRACE_FILE names no file"),
        ("/nonexistent/calls", "", "/nonexistent/calls: No such file or directory"),
        ("/dev/full", "", "No space left on device"),
        ("calls", 'ulimit -f 1; exec "$@"', "File too large"),
        ("calls", 'exec "$@" <&- ', ""),
    ],
)
def test_what_prevents_recording_is_one_line(file: str, around: str, cause: str, tmp_path: Path) -> None:
    path = str(tmp_path / file) if file == "calls" else file
    result = run([HOST, TRACER, "--command", f"{CALLS}; {CALLS}"], traced(path), around)
    assert result.returncode == 0
    assert result.stdout.count("piNumRows = 3") == 2
    assert result.stderr == (f"qtutils-trace: calls are not recorded: {cause}\n" if cause else "")


@pytest.mark.parametrize(
    "module, cause",
    [
        ("/nonexistent.so", "/nonexistent.so: cannot open shared object file: No such file or directory"),
        (str(TRACER), f"{TRACER} is the tracer itself; name the module with QTUTILS_TRACE_MODULE"),
        (str(FAKE.with_name("other.so")), f"{FAKE.with_name('other.so')} is not a qtutils module"),
    ],
)
def test_a_module_that_is_none_is_one_line(module: str, cause: str, tmp_path: Path) -> None:
    program = "assert module.nodeBrowser_CNodeBrowser(None, None) == 0\nmodule.nodeBrowser_show(None, None)"
    result = python(program, traced(tmp_path / "calls", module))
    assert (result.returncode, result.stderr) == (0, f"qtutils-trace: no calls are passed on: {cause}\n")


def test_memory_that_cannot_be_read_harms_nobody(tmp_path: Path) -> None:
    program = """
    number = ctypes.c_int(20_000_000)
    one = ctypes.c_int(1)
    refer = lambda *slots: (ctypes.c_void_p * len(slots))(*slots)
    module.nodeBrowser_markRow(None, refer(16, None))
    module.nodeBrowser_setSOMTable(None, refer(None))
    many, few = ctypes.addressof(number), ctypes.addressof(one)
    module.nodeBrowser_passNodeHierarchy(None, refer(16, many, few, few))
    module.nodeBrowser_select(None, None)
    """
    result = python(program, traced(tmp_path / "calls", MODULE))
    assert result.returncode == 0
    assert [line["arguments"] for line in read(tmp_path / "calls")[1::2]] == [
        [{"unreadable": True}, None],
        [None],
        [[], 20_000_000, 1, 1],  # refused by the module without a look
        None,
    ]


def test_threads_write_whole_lines(tmp_path: Path) -> None:
    program = """
    import threading
    def ask():
        minutes = ctypes.c_int()
        slots = (ctypes.c_void_p * 2)(ctypes.cast(b"2005-03-01 13:00:00", ctypes.c_void_p), ctypes.addressof(minutes))
        for _ in range(200):
            module.nodeBrowser_dateToInt(None, slots)
    threads = [threading.Thread(target=ask) for _ in range(8)]
    for thread in threads: thread.start()
    for thread in threads: thread.join()
    """
    assert python(program, traced(tmp_path / "calls", MODULE)).returncode == 0
    lines = read(tmp_path / "calls")[1:]
    calls = [line for line in lines if "call" in line]
    assert sorted(line["call"] for line in calls) == list(range(1, 1601))
    assert sorted(line["answer"] for line in lines if "answer" in line) == list(range(1, 1601))
    assert {line["thread"] for line in calls} == set(range(1, 9))


def test_children_and_closed_files_are_left_alone(tmp_path: Path) -> None:
    program = """
    date = (ctypes.c_void_p * 1)()
    child = os.fork()
    module.nodeBrowser_show(None, None)
    if child == 0:
        os._exit(0)
    assert os.waitpid(child, 0)[1] == 0
    (trace,) = [name for name in os.listdir("/proc/self/fd") if os.path.realpath(f"/proc/self/fd/{name}") == sys.argv[1]]
    own = os.open(sys.argv[2], os.O_WRONLY | os.O_CREAT)
    os.dup2(own, int(trace))
    module.nodeBrowser_show(None, None)
    """
    file, own = tmp_path / "calls", tmp_path / "own"
    program = textwrap.dedent(program).replace("sys.argv[1]", repr(str(file)))
    result = python(program.replace("sys.argv[2]", repr(str(own))), traced(file, MODULE))
    assert result.returncode == 0, result.stderr
    assert result.stderr == "qtutils-trace: calls are not recorded: the host has closed the file\n"
    assert len(read(file)) == 3  # the parent's first call
    assert own.read_bytes() == b""


def test_the_tracer_can_be_unloaded_like_the_module(tmp_path: Path) -> None:
    program = """
    import _ctypes
    module.nodeBrowser_show(None, None)
    first = module._handle
    assert _ctypes.dlclose(first) is None
    again = ctypes.CDLL(module._name)
    again.nodeBrowser_show(None, None)
    """
    result = python(program, traced(tmp_path / "calls", MODULE))
    assert (result.returncode, result.stderr) == (0, "")
    assert [line["call"] for line in read(tmp_path / "calls")[1::2]] == [1, 2]


def test_a_call_without_end_is_seen(surroundings: dict[str, str], tmp_path: Path) -> None:
    # given: a host that forgets its colours
    file = tmp_path / "calls.jsonl"
    calls = "CNodeBrowser som news; setSOMTable news_train; select 1; fillDate int[5]; getNumRows int[1]"
    variables = {**surroundings, "QTUTILS_TRACE_FILE": str(file)}
    with subprocess.Popen([HOST, TRACER, "--command", calls], env={**os.environ, **variables}) as host:
        while not file.exists() or "getNumRows" not in file.read_text():
            assert host.poll() is None
        host.kill()
    # then: it waits in the replay, too
    assert read(file)[-1]["function"] == "nodeBrowser_getNumRows"
    again = run([HOST, MODULE, "--replay", file, "--wait", "0.2"], variables)
    assert (again.returncode, again.stdout) == (0, f"{file}: answers as recorded, calls: 5\n"), again.stderr


def test_the_tracer_exports_what_the_module_exports() -> None:
    def symbols(file: Path) -> list[str]:
        listed = run(["nm", "-D", "--defined-only", file], {}).stdout.splitlines()
        places = {line.split()[2]: int(line.split()[0], 16) for line in listed}
        tables = sorted((place, name) for name, place in places.items() if not name.startswith("node"))
        return [name for _, name in tables] + sorted(name for name in places if name.startswith("node"))

    assert len(symbols(MODULE)) == 18
    assert symbols(TRACER) == symbols(MODULE)
