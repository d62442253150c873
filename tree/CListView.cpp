// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CListView.h"

#include "CListViewItem.h"
#include "data/CWidestText.h"
#include "data/somconnection.h"
#include "keywords.h"
#include "topicicons.h"

#include <QContextMenuEvent>
#include <QHeaderView>
#include <QMenu>
#include <QSignalBlocker>
#include <QSqlQuery>
#include <QVariant>

#include <algorithm>

namespace {

constexpr int NodeColumn = 0;
constexpr int KeywordColumn = 1;
constexpr int FilledWidth = 340; ///< least width in pixels once the tree has been filled
constexpr int NoTopic = -1;

} // namespace

/// What the keyword table says about the nodes; empty without one.
struct CListView::NodeData
{
    std::vector<int> viTopics;
    QStringList slKeywords;
    topicicons::Icons oIcons;

    QIcon icon(int iNode) const
    {
        const bool bKnown = iNode >= 0 && std::size_t(iNode) < viTopics.size();
        return bKnown ? oIcons.forTopic(viTopics[std::size_t(iNode)]) : QIcon();
    }
};

CListView::CListView(QWidget* pParent, const char* name)
    : QTreeWidget(pParent)
    , pPopupMenu(new QMenu(this))
{
    setObjectName(QLatin1String(name));
    setFont(QFont(QStringLiteral("Sans Serif"), 8));
    setHeaderLabels({QStringLiteral("Nodes"), QStringLiteral("Keywords")});
    header()->setStretchLastSection(false);
    setSortingEnabled(true);
    sortByColumn(NodeColumn, Qt::AscendingOrder);
    setMaximumWidth(0);
    pPopupMenu->setObjectName(QStringLiteral("popup"));
    pPopupMenu->addAction(QStringLiteral("expand all"), this, &CListView::expandAll);
    pPopupMenu->addAction(QStringLiteral("expand 2 levels"), this, qOverload<>(&CListView::expandChildren));
    pPopupMenu->addAction(QStringLiteral("collapse all"), this, &CListView::collapseAll);
}

CListView::~CListView() = default;

bool CListView::openConnection() const
{
    if (pSOMDB->isOpen()) {
        qDebug("Database is open. Commencing.");
        return true;
    }
    if (!somconnection::open(*pSOMDB))
        return false;
    qDebug("Database has been opened successfully");
    return true;
}

bool CListView::connectToDataBase(QString sSOMTable)
{
    if (pSOMDB == nullptr) {
        qDebug("CListView::No Database was set. Please use SetSOMDB to set a              valid database!");
        return false;
    }
    if (!openConnection())
        return false;
    const QString sQuery = keywords::query(sSOMTable);
    pCursor.reset();
    auto pResult = std::make_unique<QSqlQuery>(*pSOMDB);
    if (!pResult->exec(sQuery) || !pResult->first()) {
        qDebug("CListView: WARNING: Could not connect to Database, using               select-statement: %s",
            qPrintable(sQuery));
        return false;
    }
    pCursor = std::move(pResult);
    return true;
}

void CListView::getSOMData(int* piTopics, int iNumTopics, QStringList* pslKeywords)
{
    int iNode = 0;
    for (bool bAtRow = pCursor->first(); bAtRow; bAtRow = pCursor->next(), iNode++) {
        if (iNode < iNumTopics)
            piTopics[iNode] = pCursor->value(0).toInt();
        pslKeywords->append(keywords::shortened(pCursor->value(1).toString()));
    }
}

void CListView::fillList(const NodeLists* pvviNodes, QString sSOMTable)
{
    if (pvviNodes == nullptr)
        return;
    setMinimumWidth(FilledWidth);
    setMaximumWidth(QWIDGETSIZE_MAX);
    if (!sSOMTable.isNull())
        connectToDataBase(sSOMTable); // without its data the nodes have numbers only
    NodeData oData;
    if (pCursor) {
        oData.viTopics.assign(pvviNodes->size(), NoTopic);
        getSOMData(oData.viTopics.data(), int(oData.viTopics.size()), &oData.slKeywords);
        oData.oIcons = loadIcons();
    }
    showTree(buildTree(*pvviNodes, oData));
}

// The height of a row without a sign, from an item made for the purpose.
int CListView::measureRowHeight()
{
    const QSignalBlocker blocker(this);
    auto* pProbe = new CListViewItem(this, QStringLiteral("0"));
    const int iHeight = visualItemRect(pProbe).height();
    delete pProbe;
    return iHeight;
}

topicicons::Icons CListView::loadIcons()
{
    topicicons::Icons oIcons = topicicons::load(measureRowHeight());
    setIconSize(oIcons.oLargest); // else Qt would shrink them
    return oIcons;
}

// Without recursion, because hierarchies may be deep; a node below itself is left out, because it would never
// end.
QTreeWidgetItem* CListView::buildTree(const NodeLists& vviNodes, const NodeData& oData)
{
    struct Branch
    {
        std::size_t uNode;
        QTreeWidgetItem* pItem;
        std::size_t uNextChild;
    };
    auto* pRoot = new CListViewItem(
        static_cast<QTreeWidgetItem*>(nullptr), QStringLiteral("0"), oData.slKeywords.value(0));
    // Deliberate: the root shows sign 0 whatever its topic. Test: tst_listview,
    // theRootShowsSign0WhateverItsTopic.
    if (!oData.viTopics.empty())
        pRoot->setIcon(NodeColumn, oData.oIcons.forTopic(0));
    std::vector<bool> vbOnPath(vviNodes.size(), false);
    std::vector<Branch> vPath;
    const auto enter = [&](std::size_t uNode, QTreeWidgetItem* pItem) {
        vbOnPath[uNode] = true;
        vPath.push_back({uNode, pItem, 0});
    };
    if (!vviNodes.empty())
        enter(0, pRoot);
    while (!vPath.empty()) {
        Branch& oBranch = vPath.back();
        const std::vector<int>& viChildren = vviNodes[oBranch.uNode];
        if (oBranch.uNextChild == viChildren.size()) {
            vbOnPath[oBranch.uNode] = false;
            vPath.pop_back();
            continue;
        }
        const int iChild = viChildren[oBranch.uNextChild++];
        const bool bListed = iChild >= 0 && std::size_t(iChild) < vviNodes.size();
        if (bListed && vbOnPath[std::size_t(iChild)])
            continue;
        auto* pItem =
            new CListViewItem(oBranch.pItem, QString::number(iChild), oData.slKeywords.value(iChild));
        pItem->setIcon(NodeColumn, oData.icon(iChild));
        if (bListed)
            enter(std::size_t(iChild), pItem);
    }
    return pRoot;
}

void CListView::showTree(QTreeWidgetItem* pRoot)
{
    const QSignalBlocker blocker(this); // losing the current item is no choice of a node
    pPopupItem = nullptr;
    clear();
    addTopLevelItem(pRoot);
    sortItems(header()->sortIndicatorSection(), header()->sortIndicatorOrder());
    pRoot->setExpanded(true);
    adjustColumns(pRoot);
}

// Every column is as wide as its widest text, that of closed branches included.
void CListView::adjustColumns(QTreeWidgetItem* pRoot)
{
    CWidestText oKeywords(fontMetrics(), 0);
    int iNodeWidth = 0;
    const int iIcon = iconSize().width();
    std::vector<std::pair<QTreeWidgetItem*, int>> vOpen{{pRoot, 1}};
    while (!vOpen.empty()) {
        const auto [pItem, iLevel] = vOpen.back();
        vOpen.pop_back();
        oKeywords.add(pItem->text(KeywordColumn));
        iNodeWidth = std::max(iNodeWidth,
            iLevel * indentation() + iIcon + fontMetrics().horizontalAdvance(pItem->text(NodeColumn)));
        for (int i = 0; i < pItem->childCount(); i++)
            vOpen.emplace_back(pItem->child(i), iLevel + 1);
    }
    const int iMargin = 4 * (style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, this) + 1);
    setColumnWidth(NodeColumn, std::max(iNodeWidth + iMargin, header()->sectionSizeHint(NodeColumn)));
    setColumnWidth(
        KeywordColumn, std::max(oKeywords.width() + iMargin, header()->sectionSizeHint(KeywordColumn)));
}

// Parents after their children: the order of a view that opens from the inside, so that each item is laid out
// once.
void CListView::expandChildren(QTreeWidgetItem* pItem, int iDepth)
{
    if (iDepth == 0)
        return;
    for (int i = 0; i < pItem->childCount(); i++)
        expandChildren(pItem->child(i), iDepth - 1);
    pItem->setExpanded(true);
}

void CListView::collapseChildren(QTreeWidgetItem* pItem, int iDepth)
{
    if (iDepth == 0)
        return;
    for (int i = 0; i < pItem->childCount(); i++)
        collapseChildren(pItem->child(i), iDepth - 1);
    pItem->setExpanded(false);
}

void CListView::collapseAll()
{
    if (pPopupItem != nullptr)
        collapseChildren(pPopupItem, -1);
}

void CListView::collapseChildren()
{
    if (pPopupItem != nullptr)
        collapseChildren(pPopupItem, 2);
}

void CListView::expandAll()
{
    if (pPopupItem != nullptr)
        expandChildren(pPopupItem, -1);
}

void CListView::expandChildren()
{
    if (pPopupItem != nullptr)
        expandChildren(pPopupItem, 2);
}

void CListView::popup(QTreeWidgetItem* pItem, const QPoint& pos, int /*iColumn*/)
{
    pPopupItem = pItem;
    pPopupMenu->popup(pos);
}

void CListView::contextMenuEvent(QContextMenuEvent* pEvent)
{
    QTreeWidgetItem* pItem = itemAt(pEvent->pos());
    QPoint oPlace = pEvent->globalPos();
    if (pEvent->reason() == QContextMenuEvent::Keyboard) {
        pItem = currentItem();
        if (pItem != nullptr)
            oPlace = viewport()->mapToGlobal(placeForMenu(pItem));
    }
    popup(pItem, oPlace, pItem == nullptr ? -1 : columnAt(pEvent->pos().x()));
}

// The middle of the node's number, or the nearest point in sight.
QPoint CListView::placeForMenu(QTreeWidgetItem* pItem) const
{
    const QRect oSeen = viewport()->rect();
    const QPoint oMiddle(
        columnViewportPosition(NodeColumn) + columnWidth(NodeColumn) / 2, visualItemRect(pItem).center().y());
    return {std::clamp(oMiddle.x(), oSeen.left(), oSeen.right()),
        std::clamp(oMiddle.y(), oSeen.top(), oSeen.bottom())};
}

// Qt would make the first item current, which would choose a node that nobody asked for.
void CListView::focusInEvent(QFocusEvent* pEvent)
{
    if (currentIndex().isValid()) {
        QTreeWidget::focusInEvent(pEvent);
        return;
    }
    QWidget::focusInEvent(pEvent); // NOLINT(bugprone-parent-virtual-call): the one between does it
    viewport()->update();
}
