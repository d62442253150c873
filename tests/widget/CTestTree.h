// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "tree/CListView.h"

#include <QAbstractItemModelTester>

/// A node tree, with a database connection if wanted; the connection goes with it. Its model is watched.
class CTestTree
{
public:
    CTestTree();
    ~CTestTree();
    CTestTree(const CTestTree&) = delete;
    CTestTree& operator=(const CTestTree&) = delete;

    CListView* operator->() const { return pTree.get(); }
    CListView& operator*() const { return *pTree; }

    /// Gives the tree the server's database of that name, opened.
    void connectTo(const QString& sDatabase);
    /// Gives the tree a connection that is not open.
    void setConnection(const QString& sPassword, const QString& sDatabase);
    QSqlDatabase& database() { return oDatabase; }

    /// Fills the tree. With an open connection and a table name it announces the tree's debug line.
    void fill(const CNodeLists& vviNodes, const QString& sSOMTable);
    /// Shows the tree and waits until it is on the screen and has the focus.
    void show();

    QStringList picture() const;
    /// The item of a node, or an invalid one.
    QModelIndex item(int iNode) const;
    /// The only item that is no child.
    QModelIndex root() const;
    /// The middle of a node's number on the viewport.
    QPoint place(int iNode) const;

private:
    QSqlDatabase oDatabase;
    std::unique_ptr<CListView> pTree;
    QAbstractItemModelTester oModelTester;
};
