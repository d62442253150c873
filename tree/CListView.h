// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "CNodeItems.h"

#include <QSqlDatabase>
#include <QTreeView>

#include <memory>

namespace topicicons {
struct Icons;
}

class CLetterWidths;
class CNodeModel;
class QMenu;

/// The tree of the map's nodes, with keywords and topic signs. [ui-thread]
class CListView : public QTreeView
{
    Q_OBJECT

public:
    /// An empty tree that takes no width until it is filled for the first time.
    CListView(QWidget* pParent, const char* name);
    ~CListView() override;

    /// Rebuilds the tree from the hierarchy, where entry i holds the children of node i and node 0 is the
    /// root. Null changes nothing. Keywords and topics are read anew unless the table name is null; without
    /// them the nodes have numbers only.
    void fillList(const CNodeLists* pvviNodes, QString sSOMTable);

    /// Runs the keyword query. False, with a message on the debug channel, if it gives no row.
    bool connectToDataBase(QString sSOMTable);

    /// The item of a node, or an invalid one; of several the first in the order shown.
    QModelIndex find(int iNode) const;
    /// The node of an item, which must be valid.
    int node(const QModelIndex& oItem) const;

    /// Opens an item and `iDepth` - 1 levels below it; a negative depth opens all, 0 nothing.
    void expandChildren(const QModelIndex& oItem, int iDepth);
    /// As expandChildren(), but closes.
    void collapseChildren(const QModelIndex& oItem, int iDepth);

    /// Empty for an item out of sight.
    QRect visualRect(const QModelIndex& oItem) const override;

    /// The database connection, not owned; null until the window sets it.
    QSqlDatabase* pSOMDB = nullptr;

public Q_SLOTS:
    void collapseAll();
    void collapseChildren();
    void expandAll();
    void expandChildren();
    /// Opens the menu at a screen position, for an item or (invalid) for none.
    void popup(const QModelIndex& oItem, const QPoint& pos, int iColumn);

Q_SIGNALS:
    /// Another item is current; invalid: none is.
    void currentItemChanged(const QModelIndex& oItem);

protected:
    void contextMenuEvent(QContextMenuEvent* pEvent) override;
    void focusInEvent(QFocusEvent* pEvent) override;
    void currentChanged(const QModelIndex& oItem, const QModelIndex& oBefore) override;

private:
    bool openConnection() const;
    std::vector<signed char> readSigns(std::size_t uNumNodes) const;
    int measureRowHeight() const;
    topicicons::Icons loadIcons();
    void setBranchExpanded(const QModelIndex& oTop, int iDepth, bool bExpanded);
    bool isInSight(const QModelIndex& oItem) const;
    QPoint placeForMenu(const QModelIndex& oItem) const;
    void adjustColumns();
    int widestNode() const;
    int widestKeywords() const;

    CNodeModel* pModel;
    QPersistentModelIndex oPopupItem; ///< where the menu was opened last
    QMenu* pPopupMenu;
    std::shared_ptr<CLetterWidths> pLetterWidths; ///< of the font at the last filling
};
