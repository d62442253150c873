# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""The doctor on the server and its users, its command line, and that it writes nothing."""

import json
import re
import socket
from types import SimpleNamespace
from typing import Any

import pytest

from mapmaker import cli, store
from mapmaker.doctor import patient
from mapmaker.doctor import server as server_checks
from mapmaker.doctor.finding import Severity, exit_code
from mapmaker.hostnames import HostNames
from mapmaker.tests.doctorbase import READER, codes, findings, global_setting, reader, run


def test_quotes_as_names_are_an_error(server: dict[str, str], admin: Any) -> None:
    with global_setting(admin, "sql_mode", "ANSI_QUOTES,NO_BACKSLASH_ESCAPES"):
        found = findings(reader(server))
    assert [(finding.code, finding.severity) for finding in found] == [("server.ansi_quotes", Severity.ERROR)]


def test_a_short_patience_of_the_server_is_found(server: dict[str, str], admin: Any) -> None:
    with global_setting(admin, "wait_timeout", 600):
        assert codes(findings(reader(server))) == ["server.wait_timeout"]


def test_a_line_beyond_this_machine_must_be_encrypted(server: dict[str, str], admin: Any) -> None:
    assert codes(findings(reader(server), host="db.example.org")) == ["server.encryption"]


def test_a_tunnel_to_another_machine_is_noted(
    server: dict[str, str], admin: Any, monkeypatch: pytest.MonkeyPatch
) -> None:
    monkeypatch.setattr(socket, "gethostname", lambda: "nowhere")
    (found,) = findings(reader(server))
    assert (found.code, found.severity) == ("server.elsewhere", Severity.NOTE)
    assert found.fault.startswith("localhost leads to another machine, ")


@pytest.mark.parametrize("verified, expected", [(True, []), (False, ["server.certificate"])])
def test_an_encrypted_line_is_good_if_the_other_end_is_known(verified: bool, expected: list[str]) -> None:
    class Encrypted:
        """A database at the other end of such a line."""

        host = "db.example.org"
        link = SimpleNamespace(ctx=SimpleNamespace(check_hostname=verified))

        def rows(self, query: str) -> list[tuple[str, str]]:
            assert query == "SHOW SESSION STATUS LIKE 'Ssl_cipher'"
            return [("Ssl_cipher", "TLS_AES_256_GCM_SHA384")]

    assert codes(list(server_checks.encryption(Encrypted()))) == expected  # type: ignore[arg-type]


@pytest.mark.parametrize(
    "host, here",
    [
        ("localhost", True),
        ("127.0.0.1", True),
        ("127.1.2.3", True),
        ("::1", True),
        ("10.0.0.1", False),
        ("a.b", False),
    ],
)
def test_this_machine_is_known(host: str, here: bool) -> None:
    assert server_checks.is_this_machine(host) is here


def test_missing_rights_are_found(server: dict[str, str], admin: Any) -> None:
    run(admin, f"REVOKE SELECT ON ill_texts.document FROM {READER}@localhost")
    assert codes(findings(reader(server))) == ["rights.read"]
    run(admin, f"GRANT SELECT (id, date, title, URL) ON ill_texts.document TO {READER}@localhost")
    assert "rights.read" in codes(findings(reader(server)))


def test_a_user_without_any_right_is_found(server: dict[str, str], admin: Any) -> None:
    run(admin, f"REVOKE ALL PRIVILEGES, GRANT OPTION FROM {READER}@localhost")
    assert codes(findings(reader(server))) == ["rights.read"] * 3 + ["rights.database"]


def test_a_user_who_may_write_is_noted(server: dict[str, str], admin: Any) -> None:
    run(admin, f"GRANT INSERT (id, title), SELECT (id), UPDATE ON ill_texts.document TO {READER}@localhost")
    (found,) = findings(reader(server))
    assert (found.code, found.fault) == ("rights.more", "the user may do more than read: INSERT, UPDATE")
    assert exit_code([found]) == 0


def test_missing_tables_are_named_to_a_user_who_may_see_all(server: dict[str, str], admin: Any) -> None:
    run(admin, "DROP TABLE ill_texts.document;\nDROP TABLE ill_map.t_som")
    found = [finding for finding in findings(server) if finding.severity is Severity.ERROR]
    assert [(finding.code, finding.place) for finding in found] == [
        ("columns.no_table", "ill_map.t_som"),
        ("columns.no_table", "ill_texts.document"),
    ]


@pytest.fixture
def as_reader(server: dict[str, str], admin: Any, monkeypatch: pytest.MonkeyPatch) -> list[str]:
    """The command line of a look by the user who may only read."""
    for name, value in reader(server).items():
        monkeypatch.setenv(name, value)
    return ["doctor", "t_train", "--som-database", "ill_map", "--source-database", "ill_texts"]


def test_the_exit_code_tells_the_worst(
    admin: Any, as_reader: list[str], capsys: pytest.CaptureFixture[str]
) -> None:
    assert cli.main(as_reader) == 0
    assert capsys.readouterr().out == "errors: 0, warnings: 0, notes: 0\n"
    run(admin, "UPDATE ill_map.t_som SET _assigned_topic = 21 WHERE node = 3")
    assert cli.main(as_reader) == 1
    run(admin, "ALTER TABLE ill_texts.document DROP COLUMN date")
    assert cli.main(as_reader) == 3
    lines = capsys.readouterr().out.splitlines()[-7:]
    assert lines[0] == "error: ill_texts.document: there is no column date [columns.missing]"
    assert lines[1].startswith("  effect: ") and lines[2].startswith("  remedy: ")
    assert lines[3].startswith("warning: ill_map.t_som: 1 rows have a topic that is not 0 to 20 ")
    assert lines[6] == "errors: 1, warnings: 1, notes: 0"
    assert cli.main([*as_reader[:1], "a b", *as_reader[2:]]) == 2
    assert capsys.readouterr().err.startswith("mapmaker: bad name 'a b'")


def test_findings_come_as_json(admin: Any, as_reader: list[str], capsys: pytest.CaptureFixture[str]) -> None:
    assert cli.main([*as_reader, "--json"]) == 0
    assert json.loads(capsys.readouterr().out) == []
    run(admin, "ALTER TABLE ill_texts.document DROP COLUMN title")
    assert cli.main([*as_reader, "--json"]) == 1
    (found,) = json.loads(capsys.readouterr().out)
    assert list(found) == ["severity", "code", "place", "fault", "effect", "remedy"]
    assert (found["severity"], found["code"]) == ("warning", "columns.absent")
    assert all(found.values()) and "\n" not in "".join(found.values())


def test_only_reading_statements_reach_the_server(admin: Any, as_reader: list[str]) -> None:
    run(admin, "UPDATE ill_texts.document SET URL = '-x', text = REPEAT('x', 65535)")
    run(admin, "TRUNCATE mysql.general_log")
    with global_setting(admin, "log_output", "TABLE"), global_setting(admin, "general_log", 1):
        assert cli.main(as_reader) == 3
    with admin.cursor() as cursor:
        cursor.execute(
            "SELECT command_type, CONVERT(argument USING utf8mb4) FROM mysql.general_log"
            " WHERE user_host LIKE %s ORDER BY event_time",
            (f"%{READER}%",),
        )
        log = cursor.fetchall()
    statements = [text for kind, text in log if kind == "Query"]
    assert len(statements) > 20
    assert {kind for kind, _ in log} <= {"Connect", "Init DB", "Query", "Quit"}
    reading = re.compile(
        r"(EXPLAIN )?SELECT (?!.*\b(INTO|FOR UPDATE|LOCK)\b)|SHOW |SET NAMES |SET SESSION TRANSACTION READ ONLY$"
    )
    assert [text for text in statements if not reading.match(text)] == []


def test_a_look_could_not_write_even_with_all_rights(server: dict[str, str], admin: Any) -> None:
    with store.connection(server, autocommit=None) as link:
        looked_at = patient.Patient(link, "localhost", HostNames("ill_map", "ill_texts", "t_train"))
        link.rollback()
        with pytest.raises(Exception, match="READ ONLY transaction"):
            looked_at.rows("DELETE FROM ill_map.t_som")
