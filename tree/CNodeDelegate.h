// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QHash>
#include <QStyledItemDelegate>

/// Rows of the tree, as the toolkit draws them. Remembers their sizes: Qt by itself lays out the text of
/// every row in sight, and of the last page, at every change of the tree. [ui-thread]
class CNodeDelegate : public QStyledItemDelegate
{
public:
    explicit CNodeDelegate(QObject* pParent);

    /// The width is that of some text; the height is right.
    QSize sizeHint(const QStyleOptionViewItem& oOption, const QModelIndex& oIndex) const override;

private:
    mutable QHash<qint64, QSize> hSizes; ///< by the sign
    mutable QFont oFont; ///< of these sizes, and so on
    mutable QSize oDecorationSize;
    mutable const QStyle* pStyle = nullptr;
};
