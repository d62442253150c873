// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CPage.h"

#include "pages.h"

#include <QPaintEvent>
#include <QPainter>

#include <algorithm>

namespace {

constexpr int DateField = 3; // node, dist, id, date, title
constexpr int TitleField = 4;
constexpr int NumbersWidth = 50; // pixels
constexpr int DateWidth = 100;
constexpr int TitleWidth = 700;
constexpr int Margin = 2;

// "YYYY-MM-DD HH:MM:SS" in the short form of German.
QString shortDate(const char* pcDate)
{
    const std::array<char, 14> acShort{pcDate[8], pcDate[9], '.', pcDate[5], pcDate[6], '.', pcDate[2],
        pcDate[3], ' ', pcDate[11], pcDate[12], ':', pcDate[14], pcDate[15]};
    return QString::fromLatin1(acShort.data(), qsizetype(acShort.size()));
}

} // namespace

template <typename Visit> void CPage::eachRow(const QRect& oPart, Visit visit) const
{
    const int iOffset = oBar.value();
    const int iEnd = std::min((iOffset + oPart.bottom()) / pages::RowHeight + 1, int(vppcRows.size()));
    for (int iRow = (iOffset + oPart.top()) / pages::RowHeight; iRow < iEnd; iRow++)
        visit(iRow, iRow * pages::RowHeight - iOffset);
}

/// The numbers of the rows in sight.
class CPage::CRowNumbers : public QWidget
{
public:
    CRowNumbers(CPage& oRows, QWidget* pParent)
        : QWidget(pParent)
        , oPage(oRows)
    {
        setAttribute(Qt::WA_OpaquePaintEvent);
    }

protected:
    void paintEvent(QPaintEvent* pEvent) override
    {
        QPainter oPainter(this);
        const QColor oBackground = palette().color(QPalette::Button);
        oPage.eachRow(pEvent->rect(), [&](int iRow, int iTop) {
            oPage.drawCell(
                oPainter, {0, iTop, width(), pages::RowHeight}, oBackground, QString::number(iRow + 1));
        });
    }

private:
    CPage& oPage;
};

CPage::CPage(const QSize& oPage)
    : oGlyphs(font())
    , pRowNumbers(new CRowNumbers(*this, &oWindow))
{
    setParent(&oWindow);
    setAttribute(Qt::WA_OpaquePaintEvent);
    oWindow.resize(oPage + QSize(NumbersWidth, 0));
    pRowNumbers->setGeometry(0, 0, NumbersWidth, oPage.height());
    setGeometry(QRect(QPoint(NumbersWidth, 0), oPage));
    connect(&oBar, &QScrollBar::valueChanged, this, &CPage::scrollRows);
    oWindow.show();
}

CPage::~CPage()
{
    setParent(nullptr);
}

void CPage::setResult(CClient::Result pNewResult)
{
    pResult = std::move(pNewResult);
    vppcRows.clear();
    while (MYSQL_ROW ppcRow = mysql_fetch_row(pResult.get()))
        vppcRows.push_back(ppcRow);
    oBar.setPageStep(height());
    oBar.setRange(0, std::max(int(vppcRows.size()) * pages::RowHeight - height(), 0));
    update();
}

QString CPage::textOf(int iRow, int iColumn) const
{
    const MYSQL_ROW ppcRow = vppcRows[std::size_t(iRow)];
    return iColumn == 0 ? shortDate(ppcRow[DateField]) : QString::fromUtf8(ppcRow[TitleField]);
}

// What stays in sight is moved, the rest is painted.
void CPage::scrollRows(int iOffset)
{
    scroll(0, iLastOffset - iOffset);
    pRowNumbers->scroll(0, iLastOffset - iOffset);
    iLastOffset = iOffset;
}

void CPage::drawCell(QPainter& oPainter, const QRect& oCell, const QColor& oColor, const QString& sText)
{
    oPainter.fillRect(oCell, oColor);
    oPainter.drawRect(oCell.adjusted(0, 0, -1, -1));
    oGlyphs.draw(oPainter, oCell.topLeft() + QPoint(Margin, 0), oCell.height(), width(), sText);
}

void CPage::paintEvent(QPaintEvent* pEvent)
{
    QPainter oPainter(this);
    eachRow(pEvent->rect(), [&](int iRow, int iTop) {
        const QColor oColor = pages::colorOf(iRow);
        drawCell(oPainter, {0, iTop, DateWidth, pages::RowHeight}, oColor, textOf(iRow, 0));
        drawCell(oPainter, {DateWidth, iTop, TitleWidth, pages::RowHeight}, oColor, textOf(iRow, 1));
    });
}
