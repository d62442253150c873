// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

// Painting a node's documents in row colours. Arguments: database and table of the map, database of the
// documents, width and height of the page.

#include "CInterior.h"
#include "CModuleHost.h"
#include "rowcolors.h"
#include "settle.h"
#include "workerloop.h"

namespace {

std::vector<float> colorsOf(int iNumRows)
{
    std::vector<float> vfColors;
    for (int iRow = 0; iRow < iNumRows; iRow++)
        vfColors.insert(vfColors.end(), {rowcolors::hue(iRow), rowcolors::Saturation, rowcolors::Value});
    return vfColors;
}

} // namespace

int main(int /*iArguments*/, char** apcArguments)
{
    const CModuleHost oHost(apcArguments[1], apcArguments[3], apcArguments[2], CModuleHost::Window::Shown);
    const CInterior oInterior;
    const std::string sPages = std::string("pages ") + apcArguments[4] + ' ' + apcArguments[5];
    int iSelected = 0;
    std::vector<float> vfColors;
    workerloop::serve({}, [&](const workerloop::Words& vsWords) {
        const int iNode = std::stoi(vsWords.at(0));
        if (iSelected != iNode) {
            oHost.select(iNode);
            vfColors = colorsOf(oHost.numRows());
            oHost.setRowColors(vfColors.data());
            oHost.numRows();
        }
        iSelected = iNode;
        settle();
        CReport oReport(oInterior.ask(sPages));
        settle();
        return oReport;
    });
    return 0;
}
