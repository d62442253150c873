# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""Runs the sides of each question in turn and compares them."""
