# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""Shows the map of this machine's release notes, rows coloured by age: notes.py HIERARCHY, then node numbers."""

import sys

from qtutils import NodeBrowser, read_hierarchy, recipes

with NodeBrowser("som", "texts") as browser:
    browser.set_som_table("changelogs_train")
    browser.pass_hierarchy(read_hierarchy(sys.argv[1]))
    browser.show()
    for node in map(int, sys.stdin):
        browser.select_colored(node, recipes.by_date)
        print(browser.num_rows, "release notes since", browser.first_date_in_selection, flush=True)
