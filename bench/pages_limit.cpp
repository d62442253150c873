// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

// The least that paints rows in colours (CPage). Arguments as those of pages_module.cpp.

#include "CPage.h"
#include "pages.h"
#include "workerloop.h"

#include <QApplication>

int main(int iArguments, char** apcArguments)
{
    QApplication oApplication(iArguments, apcArguments);
    CClient oClient(apcArguments[1]);
    CPage oPage({std::stoi(apcArguments[4]), std::stoi(apcArguments[5])});
    int iSelected = 0;
    workerloop::serve({}, [&](const workerloop::Words& vsWords) {
        const int iNode = std::stoi(vsWords.at(0));
        if (iSelected != iNode)
            oPage.setResult(oClient.store(documentsOf(apcArguments[2], apcArguments[3], iNode)));
        iSelected = iNode;
        pages::waitUntilSeen(oPage);
        return pages::reportOf(
            {oPage, oPage.bar(), [&](int iRow, int iColumn) { return oPage.textOf(iRow, iColumn); }});
    });
    return 0;
}
