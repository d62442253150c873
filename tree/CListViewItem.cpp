// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CListViewItem.h"

CListViewItem::CListViewItem(int iItsNode, QString sItsKeywords)
    : iNode(iItsNode)
    , sKeywords(std::move(sItsKeywords))
{
}

QString CListViewItem::text(int iColumn) const
{
    return iColumn == NodeColumn ? QString::number(iNode) : sKeywords;
}

int CListViewItem::compare(const CListViewItem& oOther, int iColumn) const
{
    if (iColumn != NodeColumn)
        return sKeywords.localeAwareCompare(oOther.sKeywords);
    return int(iNode > oOther.iNode) - int(iNode < oOther.iNode);
}
