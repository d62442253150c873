# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""Makes self-organizing maps of text collections and stores them in MariaDB."""

__version__ = "0.1.0"
