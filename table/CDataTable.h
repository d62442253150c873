// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "CDocumentModel.h"

#include <QSqlRecord>
#include <QTableView>

#include <memory>

class CHeader;
class CLetterWidths;

/// A read-only grid over a query's result: single rows are selected, a row is current only once somebody has
/// chosen one, columns are as wide as their contents. [ui-thread]
class CDataTable : public QTableView
{
    Q_OBJECT

public:
    explicit CDataTable(QWidget* pParent = nullptr);

    int numRows() const { return pModel->rowCount(); }
    int numCols() const { return pModel->columnCount(); }
    /// Row and column of the current cell, or -1. A row chosen by selectRow() leaves the column as it was.
    int currentRow() const { return currentIndex().row(); }
    int currentColumn() const { return currentIndex().isValid() ? iCurrentColumn : -1; }
    /// The value of a cell as text (ISO dates, "" for NULL), which is not always what the cell shows.
    QString text(int iRow, int iColumn) const { return pModel->valueText(iRow, iColumn); }

    /// Makes a row current and scrolls to it; a row beyond the end stands for the last one.
    void selectRow(int iRow);
    /// Scrolls so that a cell is in sight; a row or column beyond the end stands for the last one.
    void ensureCellVisible(int iRow, int iColumn);
    /// Makes every column as wide as its widest text, or its header.
    void adjustColumns();

Q_SIGNALS:
    /// Another row has become the current one. The record is valid during the signal.
    void currentChanged(QSqlRecord* pRecord);
    /// A double click of the left button; -1 for row and column where there is no cell. `pos` counts from the
    /// top left corner of the contents, in pixels.
    void doubleClicked(int row, int col, int button, const QPoint& pos);

protected:
    /// Emits currentChanged() for the current row.
    void announceCurrentRow();
    CDocumentModel& model() { return *pModel; }

    void currentChanged(const QModelIndex& oCurrent, const QModelIndex& oPrevious) override;
    bool eventFilter(QObject* pObject, QEvent* pEvent) override;
    void focusInEvent(QFocusEvent* pEvent) override;
    void keyPressEvent(QKeyEvent* pEvent) override;
    void mousePressEvent(QMouseEvent* pEvent) override;
    void mouseDoubleClickEvent(QMouseEvent* pEvent) override;
    void showEvent(QShowEvent* pEvent) override;

private:
    void beginAnew();
    bool handleRowKey(int iKey);
    bool isNavigationKey(int iKey) const;
    void copyCurrentRow() const;
    QPoint insideCells(const QPoint& oPos) const;

    CDocumentModel* pModel;
    CHeader* pColumnHeader;
    std::shared_ptr<CLetterWidths> pLetterWidths; ///< of the font at the last adjustColumns()
    QSqlRecord oCurrentRecord;
    int iCurrentColumn = -1;
    bool bSelectingRow = false;
};
