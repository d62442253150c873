# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""Looks at a database before a host uses it, reads only, and tells what a window would make of it."""
