# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""tools/common.sh: whatever ends a script, its server and display end too."""

import os
import pty
import shutil
import signal
import subprocess
import time
from collections.abc import Callable, Iterator
from pathlib import Path

import pytest
from shellscript import COMMON, run_script

START = f'{COMMON}; start_server; start_display; echo "$PRIVATE"'
LIMIT = 60.0


def default_signals() -> None:
    """Undoes what a caller may have set to be ignored: bash can't trap what was ignored when it started."""
    for number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
        signal.signal(number, signal.SIG_DFL)


def start_script(text: str, **options: object) -> "subprocess.Popen[str]":
    return subprocess.Popen(  # type: ignore[call-overload,no-any-return]
        ["bash", "-c", text], stdout=subprocess.PIPE, text=True, preexec_fn=default_signals, **options
    )


def read(path: Path) -> bytes:
    try:
        return path.read_bytes()
    except OSError:
        return b""


def processes_of(folder: str) -> list[str]:
    """The command lines of processes that name the folder in their command line or environment."""
    found = []
    for process in Path("/proc").glob("[0-9]*"):
        command = read(process / "cmdline")
        if command and folder.encode() in command + read(process / "environ"):
            found.append(command.decode(errors="replace").replace("\0", " "))
    return found


def wait_for(condition: Callable[[], bool]) -> bool:
    end = time.monotonic() + LIMIT
    while not condition():
        if time.monotonic() > end:
            return False
        time.sleep(0.02)  # wait-reason: pause between two looks at the condition
    return True


@pytest.fixture
def temporary(tmp_path: Path, monkeypatch: pytest.MonkeyPatch) -> Iterator[Path]:
    """A temporary folder, in an environment without display and server."""
    for name in ("DISPLAY", "XAUTHORITY", "MYSQL_HOST", "MYSQL_UNIX_PORT", "MYSQL_USER", "MYSQL_PWD"):
        monkeypatch.delenv(name, raising=False)
    yield tmp_path


def read_folder(script: "subprocess.Popen[str]") -> str:
    assert script.stdout
    folder = script.stdout.readline().strip()
    assert folder, "the script ended early"
    return folder


@pytest.mark.parametrize(
    "ending, code", [("exit 0", 0), ("exit 3", 3), ("false", 1), ("echo $UNSET_NAME", 1)]
)
def test_a_script_that_ends_by_itself_leaves_nothing(temporary: Path, ending: str, code: int) -> None:
    script = start_script(f"{START}; {ending}", stderr=subprocess.DEVNULL)
    folder = read_folder(script)
    assert script.wait(LIMIT) == code
    assert processes_of(folder) == []
    assert not Path(folder).exists()


@pytest.mark.parametrize(
    "number, code", [(signal.SIGINT, 130), (signal.SIGTERM, 143), (signal.SIGHUP, 129), (signal.SIGKILL, -9)]
)
def test_a_script_ended_by_a_signal_leaves_no_process(temporary: Path, number: int, code: int) -> None:
    script = start_script(f'{START}; guarded bash -c \'tail -f "$0"; :\' "$PRIVATE/server.log"')
    folder = read_folder(script)
    assert wait_for(lambda: len(processes_of(folder)) >= 6), "server, Xvfb, openbox, guard, bash and tail"
    script.send_signal(number)
    assert script.wait(LIMIT) == code
    assert wait_for(lambda: processes_of(folder) == [])
    assert number == signal.SIGKILL or not Path(folder).exists()
    shutil.rmtree(folder, ignore_errors=True)


def test_a_script_whose_terminal_is_closed_leaves_nothing(temporary: Path) -> None:
    process, terminal = pty.fork()
    if process == 0:
        default_signals()
        os.execvp("bash", ["bash", "-c", f"{START}; while :; do guarded tail -f $PRIVATE/server.log; done"])
    with os.fdopen(terminal, "rb") as screen:
        folder = screen.readline().decode().strip()
        assert wait_for(lambda: len(processes_of(folder)) >= 4)
    os.waitpid(process, 0)
    assert processes_of(folder) == []
    assert not Path(folder).exists()


@pytest.mark.parametrize("number", [signal.SIGTERM, signal.SIGKILL])
def test_a_script_killed_while_it_makes_the_database_leaves_no_process(temporary: Path, number: int) -> None:
    script = start_script(f'{COMMON}; private_folder; echo "$PRIVATE"; start_server')
    folder = read_folder(script)
    assert wait_for(lambda: any("--bootstrap" in command for command in processes_of(folder)))
    script.send_signal(number)
    script.wait(LIMIT)
    assert wait_for(lambda: processes_of(folder) == [])
    shutil.rmtree(folder, ignore_errors=True)


def test_a_process_of_somebody_else_is_not_ended() -> None:
    """The number of a child that has ended may belong to another process by then."""
    stranger = subprocess.Popen(["sleep", "1000"])
    try:
        assert run_script(f"{COMMON}; CHILDREN+=({stranger.pid})").returncode == 0
        assert stranger.poll() is None
    finally:
        stranger.kill()
        stranger.wait()


def test_the_server_answers_on_a_private_socket_only(temporary: Path) -> None:
    ask = (
        "mariadb --no-defaults -u \"$MYSQL_USER\" -N -e 'SELECT CURRENT_USER(), @@skip_networking, @@tmpdir'"
    )
    result = run_script(
        f'{COMMON}; start_server; stat -c %a "$PRIVATE"; echo "$PRIVATE" "$MYSQL_HOST"; {ask}'
    )
    rights, place, answer = result.stdout.splitlines()
    folder, host = place.split()
    assert rights == "700" and host == "localhost"
    assert answer.split() == ["qtutils@localhost", "1", folder]


def test_the_server_refuses_callers_without_the_password(temporary: Path) -> None:
    ask = "MYSQL_PWD= mariadb --no-defaults -u root -e 'SELECT 1'"
    result = run_script(f"{COMMON}; start_server; {ask}")
    assert result.returncode == 1 and "Access denied" in result.stderr


def test_the_server_is_found_with_the_path_of_a_user(temporary: Path) -> None:
    assert run_script(f"{COMMON}; start_server", {"PATH": "/usr/local/bin:/usr/bin:/bin"}).returncode == 0


def test_data_kept_in_a_folder_is_there_again_at_the_next_start(temporary: Path) -> None:
    data = temporary / "data"
    ask = 'mariadb --no-defaults -u "$MYSQL_USER" -N -e'
    assert run_script(f"{COMMON}; start_server {data}; {ask} 'CREATE DATABASE kept'").returncode == 0
    result = run_script(f"{COMMON}; start_server {data}; {ask} 'SHOW DATABASES LIKE \"kept\"'")
    assert (result.returncode, result.stdout) == (0, "kept\n")


def test_a_half_made_database_is_made_anew(temporary: Path) -> None:
    data = temporary / "data"
    (temporary / "data.new").mkdir()
    (temporary / "data.new" / "rubbish").touch()
    result = run_script(f"{COMMON}; start_server {data}")
    assert result.returncode == 0
    assert not (data / "rubbish").exists()


def test_a_long_temporary_path_still_gives_a_usable_socket(temporary: Path) -> None:
    deep = temporary / ("d" * 90)
    deep.mkdir()
    result = run_script(f'{COMMON}; start_server; echo "${{#MYSQL_UNIX_PORT}}"', {"TMPDIR": str(deep)})
    assert result.returncode == 0 and int(result.stdout) <= 107


def test_a_server_that_can_t_start_is_reported(temporary: Path) -> None:
    (temporary / "mysql").mkdir()
    (temporary / "ibdata1").write_text("not a data file")
    result = run_script(f"{COMMON}; start_server {temporary}")
    assert result.returncode == 1
    assert result.stderr.splitlines()[-1] == "bash: the database server didn't start"


def test_the_display_is_closed_to_callers_without_the_cookie(temporary: Path) -> None:
    look = "xprop -root _NET_SUPPORTING_WM_CHECK"
    result = run_script(f"{COMMON}; start_display; {look}; XAUTHORITY=/dev/null {look}")
    assert "window id" in result.stdout
    assert result.returncode == 1 and "unable to open display" in result.stderr


def test_a_step_tells_its_time_and_hands_on_the_exit_code() -> None:
    result = run_script(f"{COMMON}; step 'Say yes' echo yes; step 'Fail' bash -c 'exit 7'")
    lines = result.stdout.splitlines()
    assert lines[:2] == ["-- Say yes", "yes"]
    assert lines[2].startswith("-- Say yes: done after ") and lines[2].endswith(" s")
    assert lines[3:] == ["-- Fail", lines[4]] and lines[4].startswith("-- Fail: failed after ")
    assert result.returncode == 7
