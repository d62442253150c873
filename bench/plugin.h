// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdlib>
#include <string>

/// Has CModuleHost load the module, or for "empty" a plug-in with an empty window.
inline void choosePlugin(const std::string& sWhich)
{
    if (sWhich == "empty")
        setenv("QTUTILS_MODULE", std::getenv("QTUTILS_BENCH_EMPTY"), 1);
}
