# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""Accounts without a password, as proxies use to see whether a server answers."""

from collections.abc import Iterator

from mapmaker.doctor.finding import Finding, Severity
from mapmaker.doctor.patient import Patient
from mapmaker.driver import ServerError

OPEN = (
    "SELECT user, host FROM mysql.global_priv WHERE COALESCE(JSON_VALUE(priv, '$.authentication_string'), '') = ''"
    " AND COALESCE(JSON_VALUE(priv, '$.plugin'), '') IN ('', 'mysql_native_password')"
    " AND NOT COALESCE(JSON_VALUE(priv, '$.account_locked'), 0)"
    " AND NOT COALESCE(JSON_VALUE(priv, '$.is_role'), 0) ORDER BY user, host"
)
KINDS = ("USER", "SCHEMA", "TABLE", "COLUMN")


def check(patient: Patient) -> Iterator[Finding]:
    """Those that may do something; only users who may read the server's own tables see them."""
    try:
        accounts = patient.rows(OPEN)
    except ServerError:
        return
    lists = " UNION ".join(
        f"SELECT privilege_type FROM information_schema.{kind}_PRIVILEGES WHERE grantee = %s"
        for kind in KINDS
    )
    for user, host in accounts:
        name = f"'{user}'@'{host}'"
        rights = sorted(right for (right,) in patient.rows(lists, *[name] * len(KINDS)) if right != "USAGE")
        if rights:
            yield Finding(
                Severity.WARNING,
                "accounts.open",
                "server",
                f"{name} has no password and may {', '.join(rights)}",
                "whoever reaches the server, also by a proxy, may do that",
                "give it a password; a proxy's checks need no right at all",
            )
