// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CDataTable.h"

#include "data/CHeader.h"
#include "data/CWidestText.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QRegularExpression>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QWindow>

#include <algorithm>

namespace {

constexpr int RowHeight = 20;
constexpr int CellPadding = 10; ///< pixels that a column is wider than its widest text

void setUpHeaders(QHeaderView& oColumns, QHeaderView& oRows)
{
    oColumns.setSectionsClickable(false);
    oColumns.setHighlightSections(false);
    oColumns.setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    oColumns.setMinimumSectionSize(1);
    oRows.setSectionsClickable(true);
    oRows.setHighlightSections(false);
    oRows.setMinimumSectionSize(1);
    oRows.setDefaultSectionSize(RowHeight);
}

} // namespace

CDataTable::CDataTable(QWidget* pParent)
    : QTableView(pParent)
    , pModel(new CDocumentModel(this))
    , pColumnHeader(new CHeader(Qt::Horizontal, this))
{
    setHorizontalHeader(pColumnHeader);
    setVerticalHeader(new CHeader(Qt::Vertical, this));
    setModel(pModel);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setCornerButtonEnabled(false);
    setWordWrap(false);
    setContextMenuPolicy(Qt::NoContextMenu);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollMode(ScrollPerPixel);
    setUpHeaders(*horizontalHeader(), *verticalHeader());
    // Qt would paint all that is behind them with each step.
    verticalScrollBar()->setAutoFillBackground(true);
    horizontalScrollBar()->setAutoFillBackground(true);
    connect(pModel, &QAbstractItemModel::modelReset, this, &CDataTable::beginAnew);
}

void CDataTable::beginAnew()
{
    iCurrentColumn = -1;
    verticalScrollBar()->setValue(0);
    horizontalScrollBar()->setValue(0);
}

void CDataTable::selectRow(int iRow)
{
    const QScopedValueRollback<bool> selecting(bSelectingRow, true);
    setCurrentIndex(pModel->index(std::min(iRow, numRows() - 1), std::max(iCurrentColumn, 0)));
}

void CDataTable::ensureCellVisible(int iRow, int iColumn)
{
    scrollTo(pModel->index(std::min(iRow, numRows() - 1), std::min(iColumn, numCols() - 1)));
}

void CDataTable::adjustColumns()
{
    pLetterWidths = CLetterWidths::shared(fontMetrics());
    std::vector<CWidestText> vWidest;
    for (int iColumn = 0; iColumn < numCols(); iColumn++) {
        const QString sLabel = pModel->headerData(iColumn, Qt::Horizontal).toString() + QLatin1Char('W');
        vWidest.emplace_back(pLetterWidths, pColumnHeader->textWidth(sLabel) - CellPadding);
    }
    // Row by row: a row that is being read is at hand.
    for (int iRow = 0; iRow < numRows() && !vWidest.empty(); iRow++)
        for (int iColumn = 0; iColumn < numCols(); iColumn++)
            pModel->addWidth(vWidest[std::size_t(iColumn)], iRow, iColumn);
    for (int iColumn = 0; iColumn < numCols(); iColumn++)
        horizontalHeader()->resizeSection(iColumn, vWidest[std::size_t(iColumn)].width() + CellPadding);
}

void CDataTable::announceCurrentRow()
{
    oCurrentRecord = pModel->record(currentRow());
    Q_EMIT currentChanged(&oCurrentRecord);
}

void CDataTable::currentChanged(const QModelIndex& oCurrent, const QModelIndex& oPrevious)
{
    QTableView::currentChanged(oCurrent, oPrevious);
    if (!oCurrent.isValid())
        return;
    if (!bSelectingRow)
        iCurrentColumn = oCurrent.column();
    if (oCurrent.row() != oPrevious.row())
        announceCurrentRow();
}

void CDataTable::showEvent(QShowEvent* pEvent)
{
    QTableView::showEvent(pEvent);
    window()->windowHandle()->installEventFilter(this);
}

// Cells that were covered are painted when they come into sight. Qt by itself only copies what it painted
// last.
bool CDataTable::eventFilter(QObject* pObject, QEvent* pEvent)
{
    if (pEvent->type() == QEvent::Paint && pObject == window()->windowHandle()) {
        const QRegion& oExposed = static_cast<QPaintEvent*>(pEvent)->region();
        viewport()->update(oExposed.translated(-viewport()->mapTo(window(), QPoint())));
    }
    return QTableView::eventFilter(pObject, pEvent);
}

// Qt would make the first row current.
void CDataTable::focusInEvent(QFocusEvent* pEvent)
{
    if (currentIndex().isValid()) {
        QTableView::focusInEvent(pEvent);
        return;
    }
    QWidget::focusInEvent(pEvent); // NOLINT(bugprone-parent-virtual-call): the one between does it
    viewport()->update();
}

bool CDataTable::handleRowKey(int iKey)
{
    switch (iKey) {
    case Qt::Key_Home:
        selectRow(0);
        return true;
    case Qt::Key_End:
        selectRow(numRows() - 1);
        return true;
    // Tab moves by columns and stops at the ends of the row.
    case Qt::Key_Tab:
        return currentIndex().column() == numCols() - 1;
    case Qt::Key_Backtab:
        return currentIndex().column() <= 0;
    default:
        return false;
    }
}

bool CDataTable::isNavigationKey(int iKey) const
{
    switch (iKey) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        return true;
    default:
        return false;
    }
}

// The header line and the row as they are shown, ready for a spreadsheet: tabs and line breaks in a cell
// would make further cells.
void CDataTable::copyCurrentRow() const
{
    const QRegularExpression separators(QStringLiteral("[\\t\\r\\n]+"));
    QStringList slLabels;
    QStringList slCells;
    for (int iColumn = 0; iColumn < numCols(); iColumn++) {
        slLabels << pModel->headerData(iColumn, Qt::Horizontal).toString();
        slCells << pModel->index(currentRow(), iColumn)
                       .data()
                       .toString()
                       .replace(separators, QStringLiteral(" "));
    }
    const QLatin1Char tab('\t');
    QGuiApplication::clipboard()->setText(slLabels.join(tab) + QLatin1Char('\n') + slCells.join(tab));
}

// Only navigation and Copy: Qt's other keys (letters, Space, Enter, F2) would search, select, activate or
// edit.
void CDataTable::keyPressEvent(QKeyEvent* pEvent)
{
    if (handleRowKey(pEvent->key()))
        pEvent->accept();
    else if (isNavigationKey(pEvent->key()))
        QTableView::keyPressEvent(pEvent);
    else if (pEvent->matches(QKeySequence::Copy) && currentIndex().isValid())
        copyCurrentRow();
    else
        pEvent->ignore();
}

// A place below the last row or right of the last column stands for that row or column.
QPoint CDataTable::insideCells(const QPoint& oPos) const
{
    const QRect oLastCell = visualRect(pModel->index(numRows() - 1, numCols() - 1));
    return {std::min(oPos.x(), oLastCell.right()), std::min(oPos.y(), oLastCell.bottom())};
}

void CDataTable::mousePressEvent(QMouseEvent* pEvent)
{
    const QPoint oInside = insideCells(pEvent->position().toPoint());
    QMouseEvent oMoved(pEvent->type(), oInside, pEvent->globalPosition(), pEvent->button(), pEvent->buttons(),
        pEvent->modifiers(), pEvent->pointingDevice());
    QTableView::mousePressEvent(&oMoved);
    iCurrentColumn = currentIndex().column(); // also of a cell that was current before
}

void CDataTable::mouseDoubleClickEvent(QMouseEvent* pEvent)
{
    if (pEvent->button() != Qt::LeftButton)
        return;
    const QPoint oPos = pEvent->position().toPoint();
    Q_EMIT doubleClicked(rowAt(oPos.y()), columnAt(oPos.x()), pEvent->button(),
        oPos + QPoint(horizontalOffset(), verticalOffset()));
}
