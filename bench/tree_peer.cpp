// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

// What one would otherwise take: the toolkit's tree of items. Arguments as those of tree_module.cpp.

#include "memory.h"
#include "peer.h"
#include "treepeer.h"
#include "views.h"
#include "workerloop.h"

#include <QApplication>
#include <QTreeWidget>

int main(int iArguments, char** apcArguments)
{
    QApplication oApplication(iArguments, apcArguments);
    const QSqlDatabase oDatabase = peer::connection(apcArguments[1]);
    QTreeWidget oTree;
    oTree.setColumnCount(2);
    oTree.show();
    QApplication::processEvents();
    CReport oReady;
    oReady.figure("own", double(memory::own()));
    workerloop::serve(oReady, [&](const workerloop::Words& vsWords) {
        CReport oReport;
        oReport.figure(
            "time", workerloop::seconds([&] { peer::fillTree(oTree, oDatabase, std::stoi(vsWords.at(0))); }));
        QApplication::processEvents();
        oReport.figure("own", double(memory::own()));
        oReport.result("nodes", views::sumOf(*oTree.model()));
        return oReport;
    });
    return 0;
}
