// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

// A node's documents: from the call of select to the answer of getNumRows. Arguments: database and table of
// the map, database of the documents, "shown" or "hidden".

#include "CModuleHost.h"
#include "memory.h"
#include "settle.h"
#include "workerloop.h"

int main(int /*iArguments*/, char** apcArguments)
{
    const CModuleHost oHost(apcArguments[1], apcArguments[3], apcArguments[2], windowOf(apcArguments[4]));
    CReport oReady;
    oReady.figure("own", double(memory::own()));
    oReady.figure("resident", double(memory::resident()));
    workerloop::serve(oReady, [&](const workerloop::Words& vsWords) {
        const int iNode = std::stoi(vsWords.at(0));
        int iRows = 0;
        memory::resetPeak();
        CReport oReport;
        oReport.figure("time", workerloop::seconds([&] {
            oHost.select(iNode);
            iRows = oHost.numRows();
        }));
        oReport.figure("peak", double(memory::peak()));
        settle();
        oReport.figure("own", double(memory::own()));
        oReport.result("rows", iRows);
        oReport.result("first", oHost.firstDate());
        return oReport;
    });
    return 0;
}
