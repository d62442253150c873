// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CListView.h"

#include "CKeywordTable.h"
#include "CListViewItem.h"
#include "CNodeDelegate.h"
#include "CNodeModel.h"
#include "CNumberWidths.h"
#include "data/CHeader.h"
#include "data/CWidestText.h"
#include "data/somconnection.h"
#include "data/sqllog.h"
#include "keywords.h"
#include "topicicons.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QSignalBlocker>
#include <QSqlQuery>

#include <algorithm>

namespace {

constexpr int NodeColumn = CListViewItem::NodeColumn;
constexpr int KeywordColumn = CListViewItem::KeywordColumn;
constexpr int FilledWidth = 340; ///< least width in pixels once the tree has been filled
constexpr signed char NoSign = -1;

} // namespace

CListView::CListView(QWidget* pParent, const char* name)
    : QTreeView(pParent)
    , pModel(new CNodeModel(this))
    , pPopupMenu(new QMenu(this))
{
    setObjectName(QLatin1String(name));
    setFont(QFont(QStringLiteral("Sans Serif"), 8));
    setHeader(new CHeader(Qt::Horizontal, this));
    header()->setSectionsMovable(true);
    header()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    setModel(pModel);
    setItemDelegate(new CNodeDelegate(this));
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
    pModel->setKeywords(nullptr);
    QSqlQuery oQuery(*pSOMDB);
    if (!sqllog::execute(oQuery, sQuery) || !oQuery.first()) {
        qDebug("CListView: WARNING: Could not connect to Database, using               select-statement: %s",
            qPrintable(sQuery));
        return false;
    }
    pModel->setKeywords(std::make_unique<CKeywordTable>(std::move(oQuery)));
    return true;
}

void CListView::fillList(const CNodeLists* pvviNodes, QString sSOMTable)
{
    if (pvviNodes == nullptr)
        return;
    setMinimumWidth(FilledWidth);
    setMaximumWidth(QWIDGETSIZE_MAX);
    if (!sSOMTable.isNull())
        connectToDataBase(sSOMTable); // without its data the nodes have numbers only
    const topicicons::Icons oIcons = pModel->keywordTable() != nullptr ? loadIcons() : topicicons::Icons();
    const QSignalBlocker blocker(this); // losing the current item is no choice of a node
    pModel->setTree(*pvviNodes, oIcons, readSigns(pvviNodes->size()), header()->sortIndicatorSection(),
        header()->sortIndicatorOrder());
    expand(pModel->index(0, NodeColumn));
    adjustColumns();
}

// The sign of each node, or nothing at all without a keyword table.
std::vector<signed char> CListView::readSigns(std::size_t uNumNodes) const
{
    const CKeywordTable* pKeywords = pModel->keywordTable();
    if (pKeywords == nullptr)
        return {};
    std::vector<signed char> vSigns(uNumNodes, NoSign);
    for (int iNode = 0; iNode < pKeywords->numRows() && std::size_t(iNode) < uNumNodes; iNode++)
        vSigns[std::size_t(iNode)] =
            static_cast<signed char>(std::clamp(pKeywords->topic(iNode), -1, topicicons::NumTopics - 1));
    return vSigns;
}

// The height of a row without a sign, in pixels.
int CListView::measureRowHeight() const
{
    CNodeModel oProbe;
    oProbe.setTree(CNodeLists{{}}, {}, {}, NodeColumn, Qt::AscendingOrder);
    QStyleOptionViewItem oOption;
    initViewItemOption(&oOption);
    oOption.rect.setWidth(-1);
    return itemDelegate()->sizeHint(oOption, oProbe.index(0, NodeColumn)).height();
}

topicicons::Icons CListView::loadIcons()
{
    topicicons::Icons oIcons = topicicons::load(measureRowHeight());
    setIconSize(oIcons.oLargest); // else Qt would shrink them
    return oIcons;
}

// Every column is as wide as its widest text, that of closed branches included.
void CListView::adjustColumns()
{
    pLetterWidths = CLetterWidths::shared(fontMetrics());
    const int iMargin = 4 * (style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, this) + 1);
    setColumnWidth(NodeColumn, std::max(widestNode() + iMargin, header()->sectionSizeHint(NodeColumn)));
    setColumnWidth(
        KeywordColumn, std::max(widestKeywords() + iMargin, header()->sectionSizeHint(KeywordColumn)));
}

int CListView::widestNode() const
{
    const CNodeItems& oItems = pModel->items();
    CNumberWidths oNumbers(*pLetterWidths);
    std::vector<int> viLevels(std::size_t(oItems.count()), 1);
    int iWidest = 0;
    for (int iItem = 0; iItem < oItems.count(); iItem++) { // parents before their children
        int& iLevel = viLevels[std::size_t(iItem)];
        if (iItem != 0)
            iLevel = viLevels[std::size_t(oItems.parent(iItem))] + 1;
        iWidest = std::max(iWidest, iLevel * indentation() + oNumbers.width(oItems.node(iItem)));
    }
    return iWidest + iconSize().width();
}

int CListView::widestKeywords() const
{
    CWidestText oWidest(pLetterWidths, 0);
    const CKeywordTable* pKeywords = pModel->keywordTable();
    if (pKeywords == nullptr)
        return 0;
    std::vector<bool> vbShown(std::size_t(pKeywords->numRows()), false);
    const CNodeItems& oItems = pModel->items();
    for (int iItem = 0; iItem < oItems.count(); iItem++)
        if (const int iNode = oItems.node(iItem); iNode >= 0 && iNode < pKeywords->numRows())
            vbShown[std::size_t(iNode)] = true;
    for (int iNode = 0; iNode < pKeywords->numRows(); iNode++)
        if (vbShown[std::size_t(iNode)])
            oWidest.add(pKeywords->shown(iNode));
    return oWidest.width();
}

QModelIndex CListView::find(int iNode) const
{
    return pModel->find(iNode);
}

int CListView::node(const QModelIndex& oItem) const
{
    return pModel->node(oItem);
}

// Level by level, with a single layout of the rows at the end.
void CListView::setBranchExpanded(const QModelIndex& oTop, int iDepth, bool bExpanded)
{
    if (iDepth == 0 || !oTop.isValid())
        return;
    scheduleDelayedItemsLayout();
    QModelIndexList lLevel{oTop.siblingAtColumn(NodeColumn)};
    for (; iDepth != 0 && !lLevel.isEmpty(); iDepth--) {
        QModelIndexList lBelow;
        for (const QModelIndex& oItem : lLevel) {
            setExpanded(oItem, bExpanded);
            for (int iRow = 0; iRow < pModel->rowCount(oItem); iRow++)
                if (const QModelIndex oChild = pModel->index(iRow, NodeColumn, oItem);
                    pModel->hasChildren(oChild))
                    lBelow << oChild;
        }
        lLevel = lBelow;
    }
    executeDelayedItemsLayout();
}

void CListView::expandChildren(const QModelIndex& oItem, int iDepth)
{
    setBranchExpanded(oItem, iDepth, true);
}

void CListView::collapseChildren(const QModelIndex& oItem, int iDepth)
{
    setBranchExpanded(oItem, iDepth, false);
}

void CListView::collapseAll()
{
    collapseChildren(oPopupItem, -1);
}

void CListView::collapseChildren()
{
    collapseChildren(oPopupItem, 2);
}

void CListView::expandAll()
{
    expandChildren(oPopupItem, -1);
}

void CListView::expandChildren()
{
    expandChildren(oPopupItem, 2);
}

void CListView::popup(const QModelIndex& oItem, const QPoint& pos, int /*iColumn*/)
{
    oPopupItem = oItem;
    pPopupMenu->popup(pos);
}

void CListView::contextMenuEvent(QContextMenuEvent* pEvent)
{
    QModelIndex oItem = indexAt(pEvent->pos());
    QPoint oPlace = pEvent->globalPos();
    if (pEvent->reason() == QContextMenuEvent::Keyboard) {
        oItem = currentIndex();
        if (oItem.isValid())
            oPlace = viewport()->mapToGlobal(placeForMenu(oItem));
    }
    popup(oItem, oPlace, oItem.isValid() ? columnAt(pEvent->pos().x()) : -1);
}

// The middle of the node's number, or the nearest point in sight.
QPoint CListView::placeForMenu(const QModelIndex& oItem) const
{
    const QRect oSeen = viewport()->rect();
    const QPoint oMiddle(columnViewportPosition(NodeColumn) + columnWidth(NodeColumn) / 2,
        QTreeView::visualRect(oItem).center().y());
    return {std::clamp(oMiddle.x(), oSeen.left(), oSeen.right()),
        std::clamp(oMiddle.y(), oSeen.top(), oSeen.bottom())};
}

// Row by row from the top: no row is lower than a text.
bool CListView::isInSight(const QModelIndex& oItem) const
{
    const QModelIndex oNode = oItem.siblingAtColumn(NodeColumn);
    for (int iY = 0; iY < viewport()->height(); iY += fontMetrics().height())
        if (indexAt({columnViewportPosition(NodeColumn), iY}) == oNode)
            return true;
    return false;
}

// Qt goes through all rows to find one, and measures those in between.
QRect CListView::visualRect(const QModelIndex& oItem) const
{
    return isInSight(oItem) ? QTreeView::visualRect(oItem) : QRect();
}

void CListView::currentChanged(const QModelIndex& oItem, const QModelIndex& oBefore)
{
    QTreeView::currentChanged(oItem, oBefore);
    Q_EMIT currentItemChanged(oItem);
}

// Qt would make the first item current, which would choose a node that nobody asked for.
void CListView::focusInEvent(QFocusEvent* pEvent)
{
    if (currentIndex().isValid()) {
        QTreeView::focusInEvent(pEvent);
        return;
    }
    QWidget::focusInEvent(pEvent); // NOLINT(bugprone-parent-virtual-call): the one between does it
    viewport()->update();
}
