# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""MYSQL_HOST as readers of the map understand it: a host, or options with semicolons between them."""

from typing import Any

TLS_FILES = {"ssl-ca": "ssl_ca", "ssl-cert": "ssl_cert", "ssl-key": "ssl_key"}
PLACES = {"host": "host", "port": "port", "socket": "unix_socket"}


def parameters(text: str) -> dict[str, Any]:
    """Parameters of a connection from the value of MYSQL_HOST, such as "host=db;ssl-ca=/a;ssl-verify-server-cert=1".

    Options that only other clients know are passed over. Raises ValueError for a port that is no number.
    """
    if ";" not in text:
        return {"host": text}
    options = dict(part.strip().partition("=")[::2] for part in text.split(";") if "=" in part)
    found: dict[str, Any] = {"host": "localhost"}
    for names in (PLACES, TLS_FILES):
        found.update({names[option]: value for option, value in options.items() if option in names})
    if "port" in found:
        found["port"] = int(found["port"])
    if options.get("ssl-verify-server-cert") == "1":
        found.update({"ssl_verify_cert": True, "ssl_verify_identity": True})
    return found
