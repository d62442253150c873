// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "CNodeItems.h"
#include "topicicons.h"

#include <QAbstractItemModel>

#include <memory>

class CKeywordTable;
class CListViewItem;

/// The map's nodes as a tree for a view. Texts are made when they are shown. [ui-thread]
class CNodeModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    explicit CNodeModel(QObject* pParent = nullptr);
    ~CNodeModel() override;

    /// Where the texts come from; null: the nodes have numbers only. The view is not told, because a new tree
    /// follows.
    void setKeywords(std::unique_ptr<const CKeywordTable> pNewKeywords);
    /// Null without keywords.
    const CKeywordTable* keywordTable() const { return pKeywords.get(); }
    /// Shows another tree, sorted by a column, with the signs of the topics in the keyword table. The root
    /// shows sign 0, unless there are no topics.
    void setTree(const CNodeLists& vviNodes, const topicicons::Icons& oNewIcons,
        std::vector<signed char> vNewSigns, int iSortColumn, Qt::SortOrder eOrder);

    const CNodeItems& items() const { return oItems; }
    /// The row of a node, or an invalid index; of several the first in the order shown.
    QModelIndex find(int iNode) const;
    /// The node of a row; the index must be valid.
    int node(const QModelIndex& oIndex) const;

    QModelIndex index(int iRow, int iColumn, const QModelIndex& oParent = {}) const override;
    QModelIndex parent(const QModelIndex& oIndex) const override;
    int rowCount(const QModelIndex& oParent = {}) const override;
    int columnCount(const QModelIndex& oParent = {}) const override;
    bool hasChildren(const QModelIndex& oParent = {}) const override;
    Qt::ItemFlags flags(const QModelIndex& oIndex) const override;
    QVariant data(const QModelIndex& oIndex, int iRole = Qt::DisplayRole) const override;
    QVariant headerData(
        int iSection, Qt::Orientation eOrientation, int iRole = Qt::DisplayRole) const override;
    void sort(int iColumn, Qt::SortOrder eOrder = Qt::AscendingOrder) override;

private:
    QModelIndex indexOf(int iItem, int iColumn) const;
    CListViewItem item(int iNode, int iColumn) const;
    QIcon icon(int iItem) const;
    QString toolTip(int iNode) const;
    QString place(int iItem) const;
    std::vector<int> sortItems(int iColumn, Qt::SortOrder eOrder);

    CNodeItems oItems;
    std::unique_ptr<const CKeywordTable> pKeywords;
    topicicons::Icons oIcons;
    std::vector<signed char> vSigns; ///< entry i: the sign of node i, or a negative number
};
