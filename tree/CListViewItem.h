// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QTreeWidgetItem>

/// A node of the map: its number in column 0, its keywords in column 1. Belongs to its parent.
class CListViewItem : public QTreeWidgetItem
{
public:
    CListViewItem(QTreeWidget* pParent, const QString& sNode, const QString& sKeywords = {});
    /// Without a parent (null) the item belongs to nobody until it is added to a view.
    CListViewItem(QTreeWidgetItem* pParent, const QString& sNode, const QString& sKeywords = {});

    /// Column 0 in the order of the numbers, where a text that is no number counts as 0; other columns in the
    /// order of the locale.
    bool operator<(const QTreeWidgetItem& oOther) const override;
};
