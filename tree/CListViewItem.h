// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

/// What a row of the tree says: the node's number in column 0, its keywords in column 1. A value.
class CListViewItem
{
public:
    enum Column
    {
        NodeColumn,
        KeywordColumn,
        NumColumns
    };

    explicit CListViewItem(int iItsNode, QString sItsKeywords = {});

    QString text(int iColumn) const;
    /// Negative, 0 or positive as this item stands before, level with or behind the other, ascending: by
    /// column 0 in the order of the numbers, by another in the order of the locale.
    int compare(const CListViewItem& oOther, int iColumn) const;

private:
    int iNode;
    QString sKeywords;
};
