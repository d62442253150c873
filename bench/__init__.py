# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""What the module adds to what the server takes."""
