// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

// A text of 64 MB in a cell: selecting its node, and painting its row. Arguments: database and table of the
// map, database of the documents.

#include "CInterior.h"
#include "CModuleHost.h"
#include "settle.h"
#include "workerloop.h"

int main(int /*iArguments*/, char** apcArguments)
{
    const CModuleHost oHost(apcArguments[1], apcArguments[3], apcArguments[2], CModuleHost::Window::Shown);
    const CInterior oInterior;
    workerloop::serve({}, [&](const workerloop::Words& vsWords) {
        int iRows = 0;
        CReport oReport;
        oReport.figure("time", workerloop::seconds([&] {
            oHost.select(std::stoi(vsWords.at(0)));
            iRows = oHost.numRows();
        }));
        settle();
        oReport.figure("page", oInterior.number("repaint"));
        oReport.result("rows", iRows);
        oReport.result("first", oHost.firstDate());
        return oReport;
    });
    return 0;
}
