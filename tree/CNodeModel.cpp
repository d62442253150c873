// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CNodeModel.h"

#include "CKeywordTable.h"
#include "CListViewItem.h"

#include <algorithm>
#include <functional>
#include <numeric>

namespace {

// The places of the items, least first; false if they stand so already.
template <typename Item, typename Less>
bool bringIntoOrder(const std::vector<Item>& vItems, std::vector<int>& viPlaces, Less less)
{
    if (std::is_sorted(vItems.begin(), vItems.end(), less))
        return false;
    viPlaces.resize(vItems.size());
    std::iota(viPlaces.begin(), viPlaces.end(), 0);
    std::stable_sort(viPlaces.begin(), viPlaces.end(),
        [&](int iOne, int iOther) { return less(vItems[std::size_t(iOne)], vItems[std::size_t(iOther)]); });
    return true;
}

} // namespace

CNodeModel::CNodeModel(QObject* pParent)
    : QAbstractItemModel(pParent)
{
}

CNodeModel::~CNodeModel() = default;

void CNodeModel::setKeywords(std::unique_ptr<const CKeywordTable> pNewKeywords)
{
    pKeywords = std::move(pNewKeywords);
}

void CNodeModel::setTree(const CNodeLists& vviNodes, const topicicons::Icons& oNewIcons,
    std::vector<signed char> vNewSigns, int iSortColumn, Qt::SortOrder eOrder)
{
    beginResetModel();
    const bool bAscending = iSortColumn == CListViewItem::NodeColumn && eOrder == Qt::AscendingOrder;
    oItems =
        CNodeItems(vviNodes, bAscending ? CNodeItems::Siblings::Ascending : CNodeItems::Siblings::AsGiven);
    oIcons = oNewIcons;
    vSigns = std::move(vNewSigns);
    if (!bAscending)
        sortItems(iSortColumn, eOrder);
    endResetModel();
}

QModelIndex CNodeModel::indexOf(int iItem, int iColumn) const
{
    return iItem == CNodeItems::None ? QModelIndex()
                                     : createIndex(oItems.row(iItem), iColumn, quintptr(iItem));
}

QModelIndex CNodeModel::find(int iNode) const
{
    return indexOf(oItems.find(iNode), CListViewItem::NodeColumn);
}

int CNodeModel::node(const QModelIndex& oIndex) const
{
    return oItems.node(int(oIndex.internalId()));
}

QModelIndex CNodeModel::index(int iRow, int iColumn, const QModelIndex& oParent) const
{
    if (iRow < 0 || iRow >= rowCount(oParent) || iColumn < 0 || iColumn >= CListViewItem::NumColumns)
        return {};
    const int iItem = oParent.isValid() ? oItems.child(int(oParent.internalId()), iRow) : 0;
    return createIndex(iRow, iColumn, quintptr(iItem));
}

QModelIndex CNodeModel::parent(const QModelIndex& oIndex) const
{
    return oIndex.isValid() ? indexOf(oItems.parent(int(oIndex.internalId())), CListViewItem::NodeColumn)
                            : QModelIndex();
}

int CNodeModel::rowCount(const QModelIndex& oParent) const
{
    if (!oParent.isValid())
        return std::min(oItems.count(), 1);
    return oParent.column() == CListViewItem::NodeColumn ? oItems.numChildren(int(oParent.internalId())) : 0;
}

int CNodeModel::columnCount(const QModelIndex& /*oParent*/) const
{
    return CListViewItem::NumColumns;
}

bool CNodeModel::hasChildren(const QModelIndex& oParent) const
{
    return rowCount(oParent) > 0;
}

// The view needn't remember whether leaves are open; but a lone root is.
Qt::ItemFlags CNodeModel::flags(const QModelIndex& oIndex) const
{
    if (!oIndex.isValid())
        return Qt::NoItemFlags;
    const auto eFlags = Qt::ItemIsSelectable | Qt::ItemIsEnabled;
    const int iItem = int(oIndex.internalId());
    return iItem == 0 || oItems.numChildren(iItem) > 0 ? eFlags : eFlags | Qt::ItemNeverHasChildren;
}

CListViewItem CNodeModel::item(int iNode, int iColumn) const
{
    const bool bTexts = iColumn == CListViewItem::KeywordColumn && pKeywords;
    return CListViewItem(iNode, bTexts ? pKeywords->keywords(iNode) : QString());
}

// Deliberate: the root shows sign 0 whatever its topic. Test: tst_listview,
// theRootShowsSign0WhateverItsTopic.
QIcon CNodeModel::icon(int iItem) const
{
    if (iItem == 0)
        return vSigns.empty() ? QIcon() : oIcons.forTopic(0);
    const int iNode = oItems.node(iItem);
    const bool bKnown = iNode >= 0 && std::size_t(iNode) < vSigns.size();
    return bKnown ? oIcons.forTopic(vSigns[std::size_t(iNode)]) : QIcon();
}

// Said by screen readers, which don't see branches: "level 2, 3 of 14".
QString CNodeModel::place(int iItem) const
{
    int iLevel = 1;
    for (int iAbove = oItems.parent(iItem); iAbove != CNodeItems::None; iAbove = oItems.parent(iAbove))
        iLevel++;
    const int iParent = oItems.parent(iItem);
    const int iSiblings = iParent == CNodeItems::None ? 1 : oItems.numChildren(iParent);
    return QStringLiteral("level %1, %2 of %3").arg(iLevel).arg(oItems.row(iItem) + 1).arg(iSiblings);
}

QVariant CNodeModel::data(const QModelIndex& oIndex, int iRole) const
{
    if (!oIndex.isValid())
        return {};
    if (iRole == Qt::DisplayRole)
        return item(node(oIndex), oIndex.column()).text(oIndex.column());
    if (iRole == Qt::DecorationRole && oIndex.column() == CListViewItem::NodeColumn)
        return icon(int(oIndex.internalId()));
    if (iRole == Qt::ToolTipRole)
        return toolTip(node(oIndex));
    if (iRole == Qt::AccessibleDescriptionRole && oIndex.column() == CListViewItem::NodeColumn)
        return place(int(oIndex.internalId()));
    return {};
}

// As rich text, which breaks its lines; keywords have no tags.
QString CNodeModel::toolTip(int iNode) const
{
    const QString sKeywords = pKeywords ? pKeywords->allKeywords(iNode) : QString();
    return sKeywords.isEmpty() ? sKeywords : QStringLiteral("<qt>%1</qt>").arg(sKeywords.toHtmlEscaped());
}

QVariant CNodeModel::headerData(int iSection, Qt::Orientation eOrientation, int iRole) const
{
    if (eOrientation != Qt::Horizontal || iRole != Qt::DisplayRole)
        return {};
    return iSection == CListViewItem::NodeColumn ? QStringLiteral("Nodes") : QStringLiteral("Keywords");
}

void CNodeModel::sort(int iColumn, Qt::SortOrder eOrder)
{
    Q_EMIT layoutAboutToBeChanged({}, VerticalSortHint);
    const QModelIndexList lBefore = persistentIndexList();
    const std::vector<int> viNumbers = sortItems(iColumn, eOrder);
    QModelIndexList lNow;
    lNow.reserve(lBefore.size());
    for (const QModelIndex& oIndex : lBefore)
        lNow << indexOf(viNumbers[oIndex.internalId()], oIndex.column());
    changePersistentIndexList(lBefore, lNow);
    Q_EMIT layoutChanged({}, VerticalSortHint);
}

std::vector<int> CNodeModel::sortItems(int iColumn, Qt::SortOrder eOrder)
{
    const bool bUp = eOrder == Qt::AscendingOrder;
    if (iColumn == CListViewItem::NodeColumn)
        return oItems.sort([&](const std::vector<int>& viNodes, std::vector<int>& viPlaces) {
            return bUp ? bringIntoOrder(viNodes, viPlaces, std::less())
                       : bringIntoOrder(viNodes, viPlaces, std::greater());
        });
    const int iSign = bUp ? 1 : -1;
    const auto less = [&](const CListViewItem& oOne, const CListViewItem& oOther) {
        return iSign * oOne.compare(oOther, iColumn) < 0;
    };
    std::vector<CListViewItem> vSiblings;
    return oItems.sort([&](const std::vector<int>& viNodes, std::vector<int>& viPlaces) {
        vSiblings.clear();
        for (const int iNode : viNodes)
            vSiblings.push_back(item(iNode, iColumn));
        return bringIntoOrder(vSiblings, viPlaces, less);
    });
}
