# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
