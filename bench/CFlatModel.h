// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "CFlatTree.h"

#include <QAbstractItemModel>

/// A hierarchy in flat vectors for the toolkit's tree view: the least that a view can be told of a tree.
class CFlatModel : public QAbstractItemModel
{
public:
    explicit CFlatModel(int iNumNodes);

    QModelIndex index(int iRow, int iColumn, const QModelIndex& oParent = {}) const override;
    QModelIndex parent(const QModelIndex& oChild) const override;
    int rowCount(const QModelIndex& oParent = {}) const override;
    int columnCount(const QModelIndex& oParent = {}) const override;
    QVariant data(const QModelIndex& oIndex, int iRole = Qt::DisplayRole) const override;

private:
    CFlatTree oTree;
    std::vector<int> viParents;
    std::vector<int> viRows;
};
