// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArrayList>

class CAnalyst;
class CPlainHost;

/// A host that shows a tree of nodes.
namespace treehost {

/// The children of each node of a deep tree: 0 - 1 - 3 - 5 - 6, with 4 below 1, and 0 - 2 - 7.
QByteArrayList deepTree();

/// Passes a hierarchy, and announces the line that its keyword query prints.
void pass(CPlainHost& oHost, const QByteArrayList& lChildren);

/// Loads the module, names the assignment table, constructs and passes a hierarchy. Only the tree's root is
/// open then.
void fill(CPlainHost& oHost, const QByteArrayList& lChildren, const QByteArray& oTable = "news_train");

/// Loads the module and constructs; without a table the tree has numbers only.
void startWithoutTable(CPlainHost& oHost);

/// fill(), and the window comes up.
void show(CAnalyst& oAnalyst, const QByteArrayList& lChildren, const QByteArray& oTable = "news_train");

/// The tree as a line such as "0(1 2(3))", closed branches included; empty without any node.
QByteArray nodes(CAnalyst& oAnalyst);

/// The statement that a choice of the node runs, with the table "news_train".
QString documentsOf(int iNode);

} // namespace treehost
