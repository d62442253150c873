// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

// From the first node of the hierarchy to the filled tree, the window shown. Arguments: database of the map,
// "map" or "bare" (without keywords), database of the documents.

#include "CInterior.h"
#include "memory.h"
#include "settle.h"
#include "treehost.h"
#include "workerloop.h"

int main(int /*iArguments*/, char** apcArguments)
{
    const CModuleHost oHost(apcArguments[1], apcArguments[3], "bare_train", CModuleHost::Window::Shown);
    CReport oReady;
    oReady.figure("own", double(memory::own()));
    workerloop::serve(oReady, [&](const workerloop::Words& vsWords) {
        const int iNumNodes = std::stoi(vsWords.at(0));
        oHost.setSOMTable(treeTable(apcArguments[2], iNumNodes));
        oHost.numRows();
        settle();
        CReport oReport;
        oReport.figure("time", workerloop::seconds([&] { fillTree(oHost, iNumNodes); }));
        settle();
        oReport.figure("own", double(memory::own()));
        oReport.result("nodes", CInterior().ask("tree sum"));
        return oReport;
    });
    return 0;
}
