// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "pictures.h"

#include <QMenu>
#include <QTreeView>

namespace pictures {
namespace {

const QString Separator = QStringLiteral(" | ");

QString line(const QTreeView& oTree, const QModelIndex& oItem, int iLevel)
{
    QStringList slTexts;
    for (int i = 0; i < oTree.model()->columnCount(); i++)
        slTexts << oItem.siblingAtColumn(i).data().toString();
    const char cBranch = oTree.isExpanded(oItem) ? 'v' : '>';
    const char cKind = oTree.model()->hasChildren(oItem) ? cBranch : '-';
    const bool bCurrent = oItem == oTree.currentIndex().siblingAtColumn(0);
    return QString(2 * iLevel, QLatin1Char(' ')) + QLatin1Char(cKind) + QLatin1Char(' ')
        + slTexts.join(Separator) + (bCurrent ? QStringLiteral(" <") : QString());
}

} // namespace

QStringList table(const QAbstractItemModel& oModel)
{
    QStringList slLines;
    for (int iRow = -1; iRow < oModel.rowCount(); iRow++) {
        QStringList slCells;
        for (int iColumn = 0; iColumn < oModel.columnCount(); iColumn++)
            slCells << (iRow < 0 ? oModel.headerData(iColumn, Qt::Horizontal)
                                 : oModel.index(iRow, iColumn).data())
                           .toString();
        slLines << slCells.join(Separator);
    }
    return slLines;
}

QStringList tree(const QTreeView& oTree)
{
    QStringList slLines;
    std::vector<std::pair<QModelIndex, int>> vWaiting{{QModelIndex(), -1}}; // with their levels
    while (!vWaiting.empty()) {
        const auto [oItem, iLevel] = vWaiting.back();
        vWaiting.pop_back();
        if (oItem.isValid())
            slLines << line(oTree, oItem, iLevel);
        for (int iRow = oTree.model()->rowCount(oItem) - 1; iRow >= 0; iRow--)
            vWaiting.emplace_back(oTree.model()->index(iRow, 0, oItem), iLevel + 1);
    }
    return slLines;
}

QStringList menu(const QMenu& oMenu)
{
    QStringList slLines;
    for (const QAction* pAction : oMenu.actions()) {
        const QString sMark = pAction->isChecked() ? QStringLiteral("[x] ") : QStringLiteral("[ ] ");
        slLines << (pAction->isCheckable() ? sMark : QString()) + pAction->text();
    }
    return slLines;
}

} // namespace pictures
