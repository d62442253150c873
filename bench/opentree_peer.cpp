// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

// What one would otherwise take: every item of the toolkit's tree is opened by itself, from the inside.
// Arguments as those of opentree_module.cpp.

#include "peer.h"
#include "treepeer.h"
#include "views.h"
#include "workerloop.h"

#include <QApplication>
#include <QTreeWidget>

namespace {

void open(QTreeWidgetItem* pItem)
{
    for (int i = 0; i < pItem->childCount(); i++)
        open(pItem->child(i));
    pItem->setExpanded(true);
}

} // namespace

int main(int iArguments, char** apcArguments)
{
    QApplication oApplication(iArguments, apcArguments);
    const QSqlDatabase oDatabase = peer::connection(apcArguments[1]);
    QTreeWidget oTree;
    oTree.setColumnCount(2);
    oTree.show();
    int iFilled = 0;
    workerloop::serve({}, [&](const workerloop::Words& vsWords) {
        const int iNumNodes = std::stoi(vsWords.at(0));
        if (iFilled != iNumNodes)
            peer::fillTree(oTree, oDatabase, iNumNodes);
        iFilled = iNumNodes;
        QApplication::processEvents();
        CReport oReport;
        oReport.figure("time", views::secondsToOpen(oTree, [&] { open(oTree.topLevelItem(0)); }));
        QApplication::processEvents();
        oReport.result("open", views::numOpen(oTree));
        return oReport;
    });
    return 0;
}
