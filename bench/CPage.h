// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "CClient.h"
#include "CGlyphs.h"

#include <QScrollBar>
#include <QWidget>

/// The least that paints coloured rows: for each cell in sight a fill, an outline and a run of glyphs. Rows
/// are read where the database client stores them.
class CPage : public QWidget
{
public:
    /// A page of that size, with row numbers at its left side, in a window that is shown.
    explicit CPage(const QSize& oPage);
    ~CPage() override;

    void setResult(CClient::Result pNewResult);
    QString textOf(int iRow, int iColumn) const;
    QScrollBar& bar() { return oBar; }

protected:
    void paintEvent(QPaintEvent* pEvent) override;

private:
    class CRowNumbers;

    void scrollRows(int iOffset);
    /// Visits the rows that a part of the page shows, with their upper edges.
    template <typename Visit> void eachRow(const QRect& oPart, Visit visit) const;
    void drawCell(QPainter& oPainter, const QRect& oCell, const QColor& oColor, const QString& sText);

    QWidget oWindow;
    QScrollBar oBar;
    int iLastOffset = 0;
    CGlyphs oGlyphs;
    CRowNumbers* pRowNumbers;
    CClient::Result pResult = CClient::none();
    std::vector<MYSQL_ROW> vppcRows;
};
