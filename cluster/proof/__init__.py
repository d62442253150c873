# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""Compares clusters with one server, and shows what the window does when something of them fails."""
