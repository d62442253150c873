# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""Every rule finds a bad sample's fault, and none in a good one."""

from pathlib import Path

import pytest
import rules

GOOD = "// " + rules.HEADER[0] + "\n// " + rules.HEADER[1] + "\n"
TESTS = {"tst_table": {"aRowHasAColor"}, "test_steps": {"test_a_step"}}


def test_the_licence_is_missed() -> None:
    assert rules.licence("a.cpp", GOOD) == []
    assert rules.licence("a.cpp", "// " + rules.HEADER[0] + "\n") == ["a.cpp: no licence"]
    assert rules.licence("a.cpp", "\n" * rules.HEADER_PLACE + GOOD) == ["a.cpp: no licence"]


@pytest.mark.parametrize(
    "name, most", [("a.h", 120), ("a.cpp", 300), ("a.c", 300), ("a.py", 300), ("d/check", 300)]
)
def test_a_long_file_is_found(name: str, most: int) -> None:
    assert rules.length(name, "x\n" * most) == []
    assert rules.length(name, "x\n" * (most + 1)) == [f"{name}: {most + 1} lines"]


def test_a_picture_may_be_long() -> None:
    assert rules.length("a.xpm", "x\n" * 1000) == []


@pytest.mark.parametrize("text", ["x", "x \n", "\tx\n", "x\r\n"])
def test_an_unclean_line_is_found(text: str) -> None:
    assert rules.cleanliness("a.cpp", "x\n") == []
    assert len(rules.cleanliness("a.cpp", text)) == 1


@pytest.mark.parametrize(
    "name, line",
    [
        ("a.cpp", "QTest::qWait(100);"),
        ("a.cpp", "QTest::qSleep(1); // to be sure"),
        ("a.cpp", "std::this_thread::sleep_for(1s);"),
        ("a.cpp", "QThread::msleep(5);"),
        ("a.c", "usleep(100);"),
        ("a.c", "    sleep(1);"),
        ("a.py", "    time.sleep(0.1)  # pause"),
        ("a.sh", "sleep 1"),
        ("check", "while true; do sleep 0.1; done"),
        ("a.cpp", "QTest::qWait(100); // wait-reason:"),
    ],
)
def test_a_fixed_wait_is_found(name: str, line: str) -> None:
    assert list(rules.waits(name, "first\n" + line + "\n")) == [f"{name}:2: {line.strip()}"]


@pytest.mark.parametrize(
    "name, line",
    [
        ("a.cpp", "QTRY_COMPARE(oSpy.size(), 1);"),
        ("a.cpp", "QTest::qWaitFor(shown);"),
        ("a.cpp", "QTest::qWait(100); // wait-reason: nothing may happen in this time"),
        ("a.py", "    time.sleep(0.1)  # wait-reason: pause between two looks"),
        ("a.cpp", "void sleep(double dSeconds);"),
        ("a.sh", "echo asleep now"),
    ],
)
def test_a_wait_for_a_condition_is_fine(name: str, line: str) -> None:
    assert list(rules.waits(name, line)) == []


def test_tests_are_found() -> None:
    cpp = "class T {\nprivate Q_SLOTS:\n    void aRowHasAColor()\n    {\n        void other();\n    }\n};\n"
    assert rules.tests_of("tests/unit/tst_table.cpp", cpp) == ("tst_table", {"aRowHasAColor"})
    python = "def helper():\n    pass\n\ndef test_a_step(x: int) -> None:\n    pass\n"
    assert rules.tests_of("tests/test_steps.py", python) == ("test_steps", {"test_a_step"})


@pytest.mark.parametrize(
    "text, fault",
    [
        ("// Deliberate: red.\nint i;\n", "names no test"),
        ("// Deliberate: red. Test: tst_table.\n", "names no test"),
        ("// Deliberate: red. Test: tst_table, aRowHasNone.\n", "no such test: tst_table, aRowHasNone"),
        ("// Deliberate: red. Test: tst_none, aRowHasAColor.\n", "no such test: tst_none, aRowHasAColor"),
    ],
)
def test_a_deliberate_oddity_without_its_test_is_found(text: str, fault: str) -> None:
    assert list(rules.deliberate("a.cpp", text, TESTS)) == [f"a.cpp:1: {fault}"]


@pytest.mark.parametrize(
    "text",
    [
        "// Deliberate: red. Test: tst_table, aRowHasAColor.\n",
        "    // Deliberate: red, because nobody can see the others. Test: tst_table,\n    // aRowHasAColor.\n",
        "# Deliberate: red. Test: test_steps,\n# test_a_step.\n",
        "// This is on purpose.\n",
    ],
)
def test_a_deliberate_oddity_with_its_test_is_fine(text: str) -> None:
    assert list(rules.deliberate("a.cpp", text, TESTS)) == []


def test_another_layout_is_found(tmp_path: Path) -> None:
    (tmp_path / ".clang-format").write_text((Path(__file__).parents[2] / ".clang-format").read_text())
    (tmp_path / "good.cpp").write_text("int f(int* piFlag)\n{\n    return *piFlag;\n}\n")
    (tmp_path / "bad.cpp").write_text("int f(int *piFlag)\n{\n    return *piFlag;\n}\n")
    faults = rules.layout(tmp_path, ["good.cpp", "bad.cpp"])
    assert {fault.split(":")[0] for fault in faults} == {"bad.cpp"}
