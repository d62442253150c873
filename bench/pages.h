// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "CReport.h"

#include <QString>

#include <functional>

class QColor;
class QScrollBar;
class QSize;
class QTableView;
class QWidget;

/// Pages of coloured rows: what all sides paint, and how it is timed, in the interface's thread.
namespace pages {

constexpr int RowHeight = 20; ///< pixels, on all sides
constexpr int NumColumns = 2; ///< date and title

/// The colour that the host gives a row (rowcolors.h).
QColor colorOf(int iRow);

/// The parts of a table that is painted.
struct Table
{
    QWidget& oViewport;
    QScrollBar& oBar; ///< a step is a pixel
    std::function<QString(int iRow, int iColumn)> textOf;
};

/// Handles events until the widget's window is on the screen; before, nothing is painted.
void waitUntilSeen(const QWidget& oWidget);

/// Makes the window as large as it takes to give the rows a page of that size.
void fit(const QWidget& oViewport, const QSize& oPage);

Table tableOf(QTableView& oView);

/// Seconds for a repaint of the rows in sight.
double secondsToRepaint(QWidget& oViewport);

/// Figures "page" (seconds for a repaint of the rows in sight) and "scroll" (seconds for a page, many of them
/// across all rows), and as results the size of the page and a checksum of its colours and texts.
CReport reportOf(const Table& oTable);

} // namespace pages
