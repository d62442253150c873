// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "treehost.h"

#include "CAnalyst.h"

namespace treehost {

QByteArrayList deepTree()
{
    return {"1,2", "3,4", "7", "5", "", "6", "", ""};
}

void pass(CPlainHost& oHost, const QByteArrayList& lChildren)
{
    oHost.announceErrors({"Database is open. Commencing."});
    oHost.passHierarchy(lChildren);
}

void fill(CPlainHost& oHost, const QByteArrayList& lChildren, const QByteArray& oTable)
{
    oHost.load();
    oHost.call("setSOMTable", {"t:" + oTable});
    oHost.construct();
    pass(oHost, lChildren);
}

void startWithoutTable(CPlainHost& oHost)
{
    oHost.load();
    oHost.construct();
}

void show(CAnalyst& oAnalyst, const QByteArrayList& lChildren, const QByteArray& oTable)
{
    fill(oAnalyst.host(), lChildren, oTable);
    oAnalyst.showWindow();
}

QByteArray nodes(CAnalyst& oAnalyst)
{
    QByteArray oNodes;
    qsizetype iLevel = 0;
    for (const QByteArray& oLine : oAnalyst.tree()) {
        const QByteArray oItem = oLine.trimmed();
        const qsizetype iItsLevel = oLine.indexOf(oItem) / 2;
        if (iItsLevel > iLevel)
            oNodes += '(';
        else if (!oNodes.isEmpty())
            oNodes += QByteArray(iLevel - iItsLevel, ')') + ' ';
        oNodes += oItem.split(' ').value(1);
        iLevel = iItsLevel;
    }
    return oNodes + QByteArray(iLevel, ')');
}

QString documentsOf(int iNode)
{
    return QStringLiteral("SELECT node, dist, document.* FROM news_train, news.document "
                          "WHERE news.document.id=news_train.item AND node=%1 ORDER BY date")
        .arg(iNode);
}

} // namespace treehost
