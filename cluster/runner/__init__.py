# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""Starts and ends private clusters."""
