# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""Where documents come from: one module per kind of collection."""
