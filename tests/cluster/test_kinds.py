# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""Each kind of private cluster offers a map to a reader who may do nothing else."""

import os
import subprocess
from collections.abc import Callable
from pathlib import Path

import pytest
from conftest import TOP, Up

from cluster.runner.client import Account, Address, Client, QueryError, connected

DENIED, READ_ONLY = 1142, 1290
KINDS = ("replicas", "galera", "head", "shards")
SMALL = ("--map", "sample --documents 300")


def address(variables: dict[str, str]) -> Address:
    if variables["MYSQL_HOST"] == "localhost":
        return Address(socket=variables["MYSQL_UNIX_PORT"])
    return Address(port=int(variables["MYSQL_TCP_PORT"]))


def refused(client: Client, statement: str) -> int:
    """The code with which a statement is refused."""
    with pytest.raises(QueryError) as error:
        client.rows(statement)
    return error.value.code


def check_reader(client: Client) -> None:
    """The reader reads a map's three tables and nothing else."""
    assert client.value("SELECT COUNT(*) FROM texts.document") == "300"
    assert int(client.value("SELECT COUNT(*) FROM sample_train WHERE node = 0")) > 1
    rows = client.rows("SELECT _assigned_topic, _keywords FROM sample_som ")
    assert len(rows) == int(client.value("SELECT COUNT(*) FROM sample_som"))
    assert refused(client, "DELETE FROM texts.document") in (DENIED, READ_ONLY)
    assert refused(client, "SELECT 1 FROM mysql.user") == DENIED
    grants = [(row[0] or b"").decode().split(" TO ")[0] for row in client.rows("SHOW GRANTS")]
    tables = ("`som`.`sample_som`", "`som`.`sample_train`", "`texts`.`document`")
    assert sorted(grants) == [*(f"GRANT SELECT ON {table}" for table in tables), "GRANT USAGE ON *.*"]


@pytest.mark.parametrize("kind", KINDS)
def test_a_reader_reads_and_no_more(up: Callable[..., Up], kind: str) -> None:
    cluster = up(*SMALL, kind)
    variables = cluster.wait_ready()
    assert cluster.variables.stat().st_mode & 0o777 == 0o600  # the password is in it
    account = Account(variables["MYSQL_USER"], variables["MYSQL_PWD"])
    with connected(address(variables), account, "som") as client:
        check_reader(client)
    with pytest.raises(QueryError):
        with connected(address(variables), account._replace(password="")):
            pass


def test_the_demo_finds_its_cluster(open_folder: Path, need_clusters: None) -> None:
    script = f"""set -euo pipefail; . {TOP}/tools/common.sh; . {TOP}/cluster/common.sh; cd {TOP}; finish
        start_cluster replicas "sample --documents 200 --script '{open_folder}/tree of it.qth'"
        mariadb --no-defaults -h "$MYSQL_HOST" -P "$MYSQL_TCP_PORT" -u "$MYSQL_USER" -NBe 'SELECT COUNT(*) FROM texts.document'
        echo "$PRIVATE" """
    result = subprocess.run(
        ["bash", "-c", script], env={**os.environ, "TMPDIR": str(open_folder)}, capture_output=True, text=True
    )
    assert result.returncode == 0, result.stderr
    documents, private = result.stdout.splitlines()
    assert (documents, Path(private).exists()) == ("200", False)
    assert (open_folder / "tree of it.qth").read_text().startswith("#")


def test_files_for_real_machines_are_explained() -> None:
    files = [file for file in (TOP / "cluster").rglob("*") if file.suffix in (".cnf", ".cfg", ".sql")]
    assert len(files) > 5
    for file in files:
        comments = [line for line in file.read_text().splitlines() if line.lstrip().startswith(("# ", "-- "))]
        assert len(comments) > 2, file
