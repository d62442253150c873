// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QStringList>

class QAbstractItemModel;
class QMenu;
class QTreeView;

/// What widgets show, as lines of text to compare.
namespace pictures {

/// The header, then the rows; cells separated by " | ".
QStringList table(const QAbstractItemModel& oModel);

/// A line for each item in the order shown, two blanks deeper for each level: "v" for an open branch, ">" for
/// a closed one, "-" for a leaf; then the columns separated by " | ". The current item ends with " <".
QStringList tree(const QTreeView& oTree);

/// The entries: "[x]" for a marked one, "[ ]" for one that can be marked, then the text.
QStringList menu(const QMenu& oMenu);

} // namespace pictures
