# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""The window's data on more than one server: private clusters to try it with, and files for real machines."""
