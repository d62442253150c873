// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CFlatModel.h"

CFlatModel::CFlatModel(int iNumNodes)
    : oTree(flatTree(iNumNodes))
    , viParents(std::size_t(iNumNodes), -1)
    , viRows(std::size_t(iNumNodes), 0)
{
    for (int iNode = 0; iNode < iNumNodes; iNode++) {
        const auto viChildren = oTree.childrenOf(iNode);
        for (std::size_t uRow = 0; uRow < viChildren.size(); uRow++) {
            viParents[std::size_t(viChildren[uRow])] = iNode;
            viRows[std::size_t(viChildren[uRow])] = int(uRow);
        }
    }
}

QModelIndex CFlatModel::index(int iRow, int iColumn, const QModelIndex& oParent) const
{
    if (!oParent.isValid())
        return createIndex(iRow, iColumn, quintptr(0));
    const int iChild = oTree.childrenOf(int(oParent.internalId()))[std::size_t(iRow)];
    return createIndex(iRow, iColumn, quintptr(iChild));
}

QModelIndex CFlatModel::parent(const QModelIndex& oChild) const
{
    const int iParent = viParents[oChild.internalId()];
    return iParent < 0 ? QModelIndex() : createIndex(viRows[std::size_t(iParent)], 0, quintptr(iParent));
}

int CFlatModel::rowCount(const QModelIndex& oParent) const
{
    return oParent.isValid() ? int(oTree.childrenOf(int(oParent.internalId())).size()) : 1;
}

int CFlatModel::columnCount(const QModelIndex& /*oParent*/) const
{
    return 2;
}

QVariant CFlatModel::data(const QModelIndex& oIndex, int iRole) const
{
    return iRole == Qt::DisplayRole ? QVariant(int(oIndex.internalId())) : QVariant();
}
