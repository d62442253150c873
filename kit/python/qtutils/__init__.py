# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT
"""The browser window over a map of documents, for programs in Python.

    with NodeBrowser("som", "texts") as browser:
        browser.set_som_table("news_train")
        browser.show()

Loads the kit's C library: the file that the environment variable QTUTILS_NODEBROWSER names, or else the one that
is installed with this package, or else "libqtutils-nodebrowser.so.0" as the dynamic linker finds it.
"""

from . import recipes
from .browser import NodeBrowser
from .errors import Error, ErrorCode
from .hierarchy import read_hierarchy
from .rows import NO_DATE, ColorCallback, Colors, Minutes

__all__ = [
    "NO_DATE",
    "ColorCallback",
    "Colors",
    "Error",
    "ErrorCode",
    "Minutes",
    "NodeBrowser",
    "read_hierarchy",
    "recipes",
]
__version__ = "0.1.0"
