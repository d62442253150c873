// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

// The least that opening all nodes takes in the toolkit's tree view: its own "expand all" over flat vectors.

#include "CFlatModel.h"
#include "views.h"
#include "workerloop.h"

#include <QApplication>
#include <QTreeView>

#include <memory>

int main(int iArguments, char** apcArguments)
{
    QApplication oApplication(iArguments, apcArguments);
    std::unique_ptr<CFlatModel> pModel;
    QTreeView oTree;
    oTree.setUniformRowHeights(true);
    oTree.show();
    int iFilled = 0;
    workerloop::serve({}, [&](const workerloop::Words& vsWords) {
        const int iNumNodes = std::stoi(vsWords.at(0));
        if (iFilled != iNumNodes) {
            auto pNewModel = std::make_unique<CFlatModel>(iNumNodes);
            oTree.setModel(pNewModel.get());
            pModel = std::move(pNewModel);
        }
        iFilled = iNumNodes;
        QApplication::processEvents();
        CReport oReport;
        oReport.figure("time", views::secondsToOpen(oTree, [&] { oTree.expandAll(); }));
        QApplication::processEvents();
        oReport.result("open", views::numOpen(oTree));
        return oReport;
    });
    return 0;
}
