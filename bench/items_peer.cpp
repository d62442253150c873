// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

// What one would otherwise take: the toolkit's tree searches for the item. Arguments as those of
// items_module.cpp.

#include "itemrounds.h"
#include "peer.h"
#include "treehost.h"
#include "treepeer.h"

#include <QApplication>
#include <QSqlQuery>
#include <QTreeWidget>

int main(int iArguments, char** apcArguments)
{
    QApplication oApplication(iArguments, apcArguments);
    const QSqlDatabase oDatabase = peer::connection(apcArguments[1]);
    QSqlQuery oQuery(oDatabase);
    QTreeWidget oTree;
    oTree.setColumnCount(2);
    std::string sTable;
    serveItems(
        [&](int iNumNodes) {
            sTable = treeTable("map", iNumNodes);
            peer::fillTree(oTree, oDatabase, iNumNodes);
        },
        [&](int iNode) {
            oQuery.exec(peer::documentsOf(sTable.c_str(), apcArguments[2], std::to_string(iNode)));
            QTreeWidgetItem* pItem =
                oTree.findItems(QString::number(iNode), Qt::MatchExactly | Qt::MatchRecursive, 0).value(0);
            oTree.setCurrentItem(pItem);
            oTree.scrollToItem(pItem);
        },
        [&] { return oTree.currentItem()->text(0).toStdString(); });
    return 0;
}
