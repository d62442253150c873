# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

"""``python3 -m mapmaker``: see the command line's help."""

import sys

from mapmaker.cli import main

sys.exit(main(sys.argv[1:]))
