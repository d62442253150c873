# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""Drawing and judging of the topic signs; see make_icons.py."""
