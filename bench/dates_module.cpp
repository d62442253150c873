// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

// The dates of a node's documents: fillDate, and a markRow that finds no row. Arguments: database and table
// of the map, database of the documents.

#include "CModuleHost.h"
#include "settle.h"
#include "textsum.h"
#include "workerloop.h"

int main(int /*iArguments*/, char** apcArguments)
{
    const CModuleHost oHost(apcArguments[1], apcArguments[3], apcArguments[2], CModuleHost::Window::Hidden);
    const std::string sNever = "2999-12-31 00:00:00";
    std::vector<float> vfColors;
    workerloop::serve({}, [&](const workerloop::Words& vsWords) {
        // Each round has a selection of its own, because nobody asks for the same dates twice.
        oHost.select(std::stoi(vsWords.at(0)));
        std::vector<int> viMinutes(std::size_t(oHost.numRows()));
        vfColors.assign(3 * viMinutes.size(), 0);
        settle();
        CReport oReport;
        oReport.figure("fill", workerloop::seconds([&] { oHost.fillDate(viMinutes.data()); }));
        oHost.setRowColors(vfColors.data());
        oHost.numRows();
        settle();
        oReport.figure("mark", workerloop::seconds([&] {
            oHost.markRow(sNever);
            oHost.numRows();
        }));
        oReport.result("rows", (long long)viMinutes.size());
        oReport.result("minutes", textsum::of(viMinutes));
        oReport.result("last", oHost.firstDateInFrame());
        return oReport;
    });
    return 0;
}
