// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

class QSqlDatabase;
class QTreeWidget;

namespace peer {

/// Fills the toolkit's tree the usual way: an item a node, with number, the first keywords and a sign,
/// sorted, and as wide as all texts.
void fillTree(QTreeWidget& oTree, const QSqlDatabase& oDatabase, int iNumNodes);

} // namespace peer
