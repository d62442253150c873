// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QSqlDatabase>
#include <QStringList>
#include <QTreeWidget>

#include <memory>
#include <vector>

namespace topicicons {
struct Icons;
}

class CListViewItem;
class CWidestText;
class QMenu;
class QSqlQuery;

/// The tree of the map's nodes, with keywords and topic signs. [ui-thread]
class CListView : public QTreeWidget
{
    Q_OBJECT

public:
    using NodeLists = std::vector<std::vector<int>>;

    /// An empty tree that takes no width until it is filled for the first time.
    CListView(QWidget* pParent, const char* name);
    ~CListView() override;

    /// Rebuilds the tree from the hierarchy, where entry i holds the children of node i and node 0 is the
    /// root. Null changes nothing. Keywords and topics are read anew unless the table name is null; without
    /// them the nodes have numbers only.
    void fillList(const NodeLists* pvviNodes, QString sSOMTable);

    /// Runs the keyword query. False, with a message on the debug channel, if it gives no row.
    bool connectToDataBase(QString sSOMTable);
    /// Reads the query's rows: row k is node k. Topics beyond `iNumTopics`, the length of `piTopics`, are
    /// dropped.
    void getSOMData(int* piTopics, int iNumTopics, QStringList* pslKeywords);

    /// Opens an item and `iDepth` - 1 levels below it; a negative depth opens all, 0 nothing.
    void expandChildren(QTreeWidgetItem* pItem, int iDepth);
    /// As expandChildren(), but closes.
    void collapseChildren(QTreeWidgetItem* pItem, int iDepth);

    /// The database connection, not owned; null until the window sets it.
    QSqlDatabase* pSOMDB = nullptr;

public Q_SLOTS:
    void collapseAll();
    void collapseChildren();
    void expandAll();
    void expandChildren();
    /// Opens the menu at a screen position, for an item or (null) for none.
    void popup(QTreeWidgetItem* pItem, const QPoint& pos, int iColumn);

protected:
    void contextMenuEvent(QContextMenuEvent* pEvent) override;
    void focusInEvent(QFocusEvent* pEvent) override;

private:
    struct NodeData;

    bool openConnection() const;
    int measureRowHeight();
    topicicons::Icons loadIcons();
    QTreeWidgetItem* buildTree(const NodeLists& vviNodes, const NodeData& oData);
    void showTree(QTreeWidgetItem* pRoot);
    QPoint placeForMenu(QTreeWidgetItem* pItem) const;
    void adjustColumns(QTreeWidgetItem* pRoot);

    std::unique_ptr<QSqlQuery> pCursor;
    QTreeWidgetItem* pPopupItem = nullptr; ///< where the menu was opened last
    QMenu* pPopupMenu;
};
