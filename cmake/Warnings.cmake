# SPDX-FileCopyrightText: The qtutils developers
# SPDX-License-Identifier: MIT

# Interface target with the warnings and the Qt definitions that every target of ours uses.
add_library(qtutils_warnings INTERFACE)
target_compile_options(qtutils_warnings INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Woverloaded-virtual)
if(QTUTILS_WERROR)
    target_compile_options(qtutils_warnings INTERFACE -Werror)
endif()
target_compile_definitions(qtutils_warnings INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH QT_NO_KEYWORDS)
