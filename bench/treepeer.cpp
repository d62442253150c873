// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "treepeer.h"

#include "treeshape.h"

#include <QHeaderView>
#include <QSqlQuery>
#include <QTreeWidget>
#include <QVariant>

namespace peer {
namespace {

constexpr int NumSigns = 21;
constexpr int ShownKeywords = 3;

std::vector<QIcon> signs()
{
    std::vector<QIcon> vSigns;
    vSigns.reserve(NumSigns);
    for (int i = 0; i < NumSigns; i++)
        vSigns.emplace_back(QPixmap(QStringLiteral("Images/%1.xpm").arg(i)));
    return vSigns;
}

QString firstKeywords(const QString& sKeywords)
{
    return sKeywords.split(QLatin1Char('\n')).first(ShownKeywords).join(QStringLiteral(", "));
}

// Parents come before their children.
std::vector<QTreeWidgetItem*> makeItems(int iNumNodes)
{
    std::vector<QTreeWidgetItem*> vItems(std::size_t(iNumNodes), nullptr);
    vItems[0] = new QTreeWidgetItem;
    for (int iNode = 0; iNode < iNumNodes; iNode++)
        for (const int iChild : treeshape::childrenOf(iNode, iNumNodes))
            vItems[std::size_t(iChild)] = new QTreeWidgetItem(vItems[std::size_t(iNode)]);
    return vItems;
}

} // namespace

void fillTree(QTreeWidget& oTree, const QSqlDatabase& oDatabase, int iNumNodes)
{
    oTree.clear();
    const std::vector<QTreeWidgetItem*> vItems = makeItems(iNumNodes);
    const std::vector<QIcon> vSigns = signs();
    QSqlQuery oQuery(oDatabase);
    oQuery.exec(QStringLiteral("SELECT _assigned_topic, _keywords FROM map%1_som ").arg(iNumNodes));
    for (int iNode = 0; oQuery.next(); iNode++) {
        QTreeWidgetItem* pItem = vItems[std::size_t(iNode)];
        pItem->setData(0, Qt::DisplayRole, iNode);
        pItem->setText(1, firstKeywords(oQuery.value(1).toString()));
        pItem->setIcon(0, vSigns[std::size_t(std::min(oQuery.value(0).toInt(), NumSigns - 1))]);
    }
    oTree.addTopLevelItem(vItems[0]);
    oTree.sortItems(0, Qt::AscendingOrder);
    vItems[0]->setExpanded(true);
    oTree.header()->setResizeContentsPrecision(-1); // all rows
    oTree.resizeColumnToContents(0);
    oTree.resizeColumnToContents(1);
}

} // namespace peer
