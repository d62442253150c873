# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""What the programs take of the database driver."""

from collections.abc import Callable
from typing import Any

import pymysql  # type: ignore[import]

connect: Callable[..., Any] = pymysql.connect
ServerError: type[
    Exception
] = pymysql.MySQLError  # its first argument is the server's number, the last its text
