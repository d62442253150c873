// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "treeshape.h"
#include "workerloop.h"

#include <functional>

/// Rounds of selections of nodes without documents in a tree of the size that the runner wants. `fill` makes
/// the tree when the size changes, `select` chooses a node, `current` says which node is current at the end.
inline void serveItems(const std::function<void(int)>& fill, const std::function<void(int)>& select,
    const std::function<std::string()>& current)
{
    constexpr int Selections = 50;
    int iFilled = 0;
    workerloop::serve({}, [&](const workerloop::Words& vsWords) {
        const int iNumNodes = std::stoi(vsWords.at(0));
        if (iFilled != iNumNodes)
            fill(iNumNodes);
        iFilled = iNumNodes;
        CReport oReport;
        const double fSeconds = workerloop::seconds([&] {
            for (int i = 1; i <= Selections; i++)
                select(treeshape::someNode(i, iNumNodes));
        });
        oReport.figure("time", fSeconds / Selections);
        oReport.result("current", current());
        return oReport;
    });
}
