// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CListViewItem.h"

#include <QTreeWidget>

CListViewItem::CListViewItem(QTreeWidget* pParent, const QString& sNode, const QString& sKeywords)
    : QTreeWidgetItem(pParent, {sNode, sKeywords})
{
}

CListViewItem::CListViewItem(QTreeWidgetItem* pParent, const QString& sNode, const QString& sKeywords)
    : QTreeWidgetItem(pParent, {sNode, sKeywords})
{
}

bool CListViewItem::operator<(const QTreeWidgetItem& oOther) const
{
    const int iColumn = treeWidget() == nullptr ? 0 : treeWidget()->sortColumn();
    if (iColumn != 0)
        return QTreeWidgetItem::operator<(oOther);
    return text(0).toInt() < oOther.text(0).toInt();
}
