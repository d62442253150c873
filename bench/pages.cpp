// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "pages.h"

#include "rowcolors.h"
#include "textsum.h"
#include "workerloop.h"

#include <QCoreApplication>
#include <QEvent>
#include <QImage>
#include <QPixmap>
#include <QScrollBar>
#include <QTableView>
#include <QWindow>

#include <algorithm>

namespace pages {
namespace {

constexpr int NumRepaints = 50;
constexpr int NumPages = 1000;
constexpr int MostResizings = 50; ///< until a page has its size: other parts take their shares
constexpr int BesideText = 1; ///< pixels from the left where a cell has nothing but its colour

// All that has been asked to be painted since the last time.
void paintNow(QWidget& oWidget)
{
    QEvent oUpdate(QEvent::UpdateRequest);
    QCoreApplication::sendEvent(oWidget.window(), &oUpdate);
}

// Evenly across all rows, but not so slowly that a part of the page before stays in sight: of few rows again
// from the top.
double secondsToScroll(const Table& oTable)
{
    const qint64 iRange = oTable.oBar.maximum() + 1;
    const qint64 iStep = std::max<qint64>(iRange / NumPages, oTable.oBar.pageStep());
    return workerloop::seconds([&] {
        for (int i = 1; i <= NumPages; i++) {
            oTable.oBar.setValue(int(iStep * i % iRange));
            paintNow(oTable.oViewport);
        }
    });
}

// Of the rows that are seen as a whole; the first row is at the top.
std::string sumOf(const Table& oTable)
{
    const QImage oPicture = oTable.oViewport.grab().toImage();
    std::uint64_t uSum = textsum::Begin;
    for (int iRow = 0; (iRow + 1) * RowHeight <= oPicture.height(); iRow++) {
        const QRgb uColor = oPicture.pixel(BesideText, iRow * RowHeight + RowHeight / 2);
        uSum = textsum::add(uSum, std::to_string(uColor));
        for (int iColumn = 0; iColumn < NumColumns; iColumn++)
            uSum = textsum::add(uSum, oTable.textOf(iRow, iColumn).toStdString());
    }
    return std::to_string(uSum);
}

} // namespace

QColor colorOf(int iRow)
{
    return QColor::fromHsv(int(rowcolors::hue(iRow)), int(rowcolors::Saturation), int(rowcolors::Value));
}

void waitUntilSeen(const QWidget& oWidget)
{
    do
        QCoreApplication::processEvents();
    while (!oWidget.window()->windowHandle()->isExposed());
}

void fit(const QWidget& oViewport, const QSize& oPage)
{
    for (int i = 0; i < MostResizings && oViewport.size() != oPage; i++) {
        oViewport.window()->resize(oViewport.window()->size() + oPage - oViewport.size());
        waitUntilSeen(oViewport);
    }
}

double secondsToRepaint(QWidget& oViewport)
{
    const double fSeconds = workerloop::seconds([&] {
        for (int i = 0; i < NumRepaints; i++)
            oViewport.repaint();
    });
    return fSeconds / NumRepaints;
}

Table tableOf(QTableView& oView)
{
    std::vector<int> viShown;
    for (int i = 0; i < oView.model()->columnCount(); i++)
        if (!oView.isColumnHidden(i))
            viShown.push_back(i);
    return {*oView.viewport(), *oView.verticalScrollBar(), [&oView, viShown](int iRow, int iColumn) {
                const QModelIndex oCell = oView.model()->index(iRow, viShown.at(std::size_t(iColumn)));
                return oView.model()->data(oCell).toString();
            }};
}

CReport reportOf(const Table& oTable)
{
    oTable.oBar.setValue(0);
    paintNow(oTable.oViewport);
    CReport oReport;
    oReport.figure("page", secondsToRepaint(oTable.oViewport));
    oReport.figure("scroll", secondsToScroll(oTable) / NumPages);
    oTable.oBar.setValue(0);
    oReport.result(
        "size", std::to_string(oTable.oViewport.width()) + 'x' + std::to_string(oTable.oViewport.height()));
    oReport.result("page", sumOf(oTable));
    return oReport;
}

} // namespace pages
