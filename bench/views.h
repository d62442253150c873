// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>
#include <string>

class QAbstractItemModel;
class QTreeView;

/// What the module's views and those of the peers are asked, in the interface's thread.
namespace views {

/// Checksum of the numbers and texts of all nodes, parents before their children.
std::string sumOf(const QAbstractItemModel& oTree);

/// Seconds that an action takes to open all of a tree, until each row has its place. The tree is closed
/// before.
double secondsToOpen(QTreeView& oTree, const std::function<void()>& openAll);

/// Number of open nodes.
int numOpen(const QTreeView& oTree);

} // namespace views
