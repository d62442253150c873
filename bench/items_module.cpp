// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

// The host selects nodes without documents, and the tree's item becomes current. Arguments: database of the
// map, database of the documents.

#include "CInterior.h"
#include "itemrounds.h"
#include "settle.h"
#include "treehost.h"

int main(int /*iArguments*/, char** apcArguments)
{
    const CModuleHost oHost(apcArguments[1], apcArguments[2], "bare_train", CModuleHost::Window::Hidden);
    serveItems(
        [&](int iNumNodes) {
            oHost.setSOMTable(treeTable("map", iNumNodes));
            fillTree(oHost, iNumNodes);
            settle();
        },
        [&](int iNode) {
            oHost.select(iNode);
            oHost.numRows();
        },
        [] { return CInterior().ask("tree current"); });
    return 0;
}
