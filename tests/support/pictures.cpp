// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "pictures.h"

#include <QMenu>
#include <QTreeWidget>

namespace pictures {
namespace {

const QString Separator = QStringLiteral(" | ");

void addItem(QStringList& slLines, const QTreeWidget& oTree, const QTreeWidgetItem* pItem, int iLevel)
{
    QStringList slTexts;
    for (int i = 0; i < oTree.columnCount(); i++)
        slTexts << pItem->text(i);
    const char cBranch = pItem->isExpanded() ? 'v' : '>';
    const char cKind = pItem->childCount() == 0 ? '-' : cBranch;
    slLines << QString(2 * iLevel, QLatin1Char(' ')) + QLatin1Char(cKind) + QLatin1Char(' ')
            + slTexts.join(Separator) + (pItem == oTree.currentItem() ? QStringLiteral(" <") : QString());
    for (int i = 0; i < pItem->childCount(); i++)
        addItem(slLines, oTree, pItem->child(i), iLevel + 1);
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

QStringList tree(const QTreeWidget& oTree)
{
    QStringList slLines;
    for (int i = 0; i < oTree.topLevelItemCount(); i++)
        addItem(slLines, oTree, oTree.topLevelItem(i), 0);
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
