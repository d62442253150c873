// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

// Opening all nodes of the tree, the window shown. Arguments: database of the map, database of the documents.

#include "CInterior.h"
#include "settle.h"
#include "treehost.h"
#include "workerloop.h"

int main(int /*iArguments*/, char** apcArguments)
{
    const CModuleHost oHost(apcArguments[1], apcArguments[2], "bare_train", CModuleHost::Window::Shown);
    const CInterior oInterior;
    int iFilled = 0;
    workerloop::serve({}, [&](const workerloop::Words& vsWords) {
        const int iNumNodes = std::stoi(vsWords.at(0));
        if (iFilled != iNumNodes) {
            oHost.setSOMTable(treeTable("map", iNumNodes));
            fillTree(oHost, iNumNodes);
        }
        iFilled = iNumNodes;
        settle();
        CReport oReport;
        oReport.figure("time", oInterior.number("open tree"));
        settle();
        oReport.result("open", oInterior.ask("open nodes"));
        return oReport;
    });
    return 0;
}
