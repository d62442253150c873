// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "moduletest.h"
#include "paintedhost.h"
#include "tests/support/CPrivateServer.h"

#include <functional>
#include <set>

using paintedhost::Base;
using paintedhost::Green;
using paintedhost::Highlight;
using paintedhost::HighlightedText;
using paintedhost::Red;
using paintedhost::Text;

/// What a cell looks like, pixel by pixel, with and without the host's row colours.
class TestModuleColors : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { oServer.load(QStringLiteral("painted.sql")); }

    void withoutColorsACellIsPlain()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        paintedhost::show(oAnalyst, 1);
        const QImage oText = paintedhost::cell(oAnalyst, 1, "date");
        QCOMPARE(colors(paintedhost::cell(oAnalyst, 1, "title")), Colors{Base});
        QVERIFY(colors(oText).contains(Base) && colors(oText).contains(Text));
    }

    void withoutColorsASelectedCellIsHighlighted()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        paintedhost::show(oAnalyst, 1);
        oAnalyst.clickCell(1, "title");
        const QImage oText = paintedhost::cell(oAnalyst, 1, "date");
        QCOMPARE(colors(paintedhost::cell(oAnalyst, 1, "title")), Colors{Highlight});
        QVERIFY(colors(oText).contains(Highlight) && colors(oText).contains(HighlightedText));
        QVERIFY(!colors(oText).contains(Text));
    }

    void aCellIsFilledAndOutlined()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        paintedhost::show(oAnalyst, 1, "c:1x120,255,255;1x0,255,255;3x120,255,255");
        const QImage oCell = paintedhost::cell(oAnalyst, 1, "title");
        QVERIFY(oCell.width() > 20 && oCell.height() == 19);
        QCOMPARE(differences(oCell, [&](int x, int y) { return isOutline(oCell, x, y) ? Text : Red; }), 0);
    }

    void theLinesBetweenTheCellsStay()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        paintedhost::show(oAnalyst, 1);
        const QRect oCell = oAnalyst.cell(1, "date");
        const QPoint oRight = oCell.topRight() + QPoint(1, 5);
        const QPoint oBelow = oCell.bottomLeft() + QPoint(5, 1);
        const QRgb uLine = oScreen.picture().pixel(oRight);
        QVERIFY(uLine != Base && uLine != Text);
        QCOMPARE(oScreen.picture().pixel(oBelow), uLine);
        // when
        oHost.call("setRowColors", {"c:5x0,255,255"});
        paintedhost::repaint(oAnalyst);
        // then
        QCOMPARE(paintedhost::fills(oAnalyst, 1, 1), QByteArrayList{"#ff0000"});
        QCOMPARE(oScreen.picture().pixel(oRight), uLine);
        QCOMPARE(oScreen.picture().pixel(oBelow), uLine);
    }

    void theTextStandsOnTheRowsColor()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        paintedhost::show(oAnalyst, 1, "c:5x0,255,255");
        const Colors oInside = colors(inside(paintedhost::cell(oAnalyst, 1, "date")));
        QVERIFY(oInside.contains(Red) && oInside.contains(Text));
        QVERIFY(!oInside.contains(Base));
    }

    void aSelectedCellHasAFocusRectangleInTheRowsColorAndNoFill()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        paintedhost::show(oAnalyst, 1, "c:5x0,255,255");
        oAnalyst.clickCell(1, "title");
        const QImage oCell = paintedhost::cell(oAnalyst, 1, "title");
        QCOMPARE(colors(inside(oCell)), Colors{Highlight});
        QCOMPARE(colors(oCell), Colors({Highlight, Red}));
        // every second pixel
        for (const int y : {0, oCell.height() - 1})
            for (int x = 2; x + 2 < oCell.width(); x++)
                QVERIFY2(oCell.pixel(x, y) != oCell.pixel(x + 1, y), QByteArray::number(x));
        for (const int x : {0, oCell.width() - 1})
            for (int y = 2; y + 2 < oCell.height(); y++)
                QVERIFY2(oCell.pixel(x, y) != oCell.pixel(x, y + 1), QByteArray::number(y));
    }

    void everyCellOfASelectedRowHasItsFocusRectangle()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        paintedhost::show(oAnalyst, 1, "c:5x0,255,255");
        oAnalyst.clickCell(1, "title");
        QVERIFY(colors(paintedhost::cell(oAnalyst, 1, "date")).contains(Red));
        QVERIFY(!colors(inside(paintedhost::cell(oAnalyst, 1, "date"))).contains(Red));
        QCOMPARE(paintedhost::fills(oAnalyst, 0, 2), QByteArrayList({"#ff0000", "#308cc6", "#ff0000"}));
    }

    void aSelectedCellHasTheNormalTextColor()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        paintedhost::show(oAnalyst, 1, "c:5x0,255,255");
        oAnalyst.clickCell(1, "title");
        const Colors oInside = colors(inside(paintedhost::cell(oAnalyst, 1, "date")));
        QVERIFY(oInside.contains(Highlight) && oInside.contains(Text));
        QVERIFY(!oInside.contains(HighlightedText));
    }

    void aMarkedRowLooksLikeAClickedOne()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        paintedhost::show(oAnalyst, 1, "c:5x0,255,255");
        oAnalyst.clickCell(1, "title");
        const QImage oClicked = paintedhost::cell(oAnalyst, 1, "title");
        // when
        oHost.call("markRow", {"k:2007-01-04 12:00:00", "i:1"});
        // then
        QCOMPARE(oAnalyst.currentCell(), "2 1");
        QVERIFY(paintedhost::cell(oAnalyst, 2, "title") == oClicked);
        QCOMPARE(paintedhost::fills(oAnalyst, 1, 1), QByteArrayList{"#ff0000"});
    }

    void everyRowHasItsOwnColor()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        paintedhost::show(oAnalyst, 1, "c:1x0,255,255;1x120,255,255;1x240,255,255;1x0,0,128;1x60,255,255");
        QCOMPARE(paintedhost::fills(oAnalyst, 0, 4),
            QByteArrayList({"#ff0000", "#00ff00", "#0000ff", "#808080", "#ffff00"}));
    }

    void besideTheCellsNothingIsColored()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        paintedhost::show(oAnalyst, 2, "c:2x0,255,255");
        const QRect oFirst = oAnalyst.cell(0, "date");
        const QRect oLast = oAnalyst.cell(1, "title");
        // then
        int iCells = 0;
        for (int iRow = 0; iRow < 2; iRow++)
            for (const char* pcColumn : {"date", "title"})
                iCells += pixels(paintedhost::cell(oAnalyst, iRow, pcColumn), Red);
        QVERIFY(iCells > 1000);
        QCOMPARE(oScreen.pixels(Red), iCells);
        QCOMPARE(oScreen.picture().pixel(oLast.bottomRight() + QPoint(-5, 10)), Base);
        QCOMPARE(oScreen.picture().pixel(oLast.topRight() + QPoint(10, 5)), Base);
        QCOMPARE(oScreen.picture().pixel(oFirst.bottomLeft() + QPoint(5, 50)), Base);
    }

    void aCellThatIsTooNarrowIsOutlinedAndItsTextCut()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        paintedhost::show(oAnalyst, 1);
        oAnalyst.choose("Show", "title");
        oHost.call("setRowColors", {"c:5x0,255,255"});
        paintedhost::repaint(oAnalyst);
        const QImage oWide = paintedhost::cell(oAnalyst, 1, "date");
        // when the column's border is dragged
        const QPoint oBorder = oAnalyst.cell(0, "date").topRight() + QPoint(1, -10);
        oScreen.drag(oBorder, oBorder - QPoint(50, 0));
        // then
        const QRect oPlace = oAnalyst.cell(1, "date");
        const QImage oNarrow = paintedhost::cell(oAnalyst, 1, "date");
        QCOMPARE(oNarrow.width(), oWide.width() - 50);
        QVERIFY(inside(oNarrow) == oWide.copy(QRect(QPoint(1, 1), inside(oNarrow).size())));
        QCOMPARE(pixels(oNarrow.copy(oNarrow.width() - 1, 0, 1, oNarrow.height()), Text), oNarrow.height());
        const QRect oBeside(oPlace.topRight() + QPoint(2, 0), oWide.size());
        QCOMPARE(colors(oScreen.picture().copy(oBeside)), Colors{Base});
    }

    void everyColumnIsColored()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        paintedhost::show(oAnalyst, 1);
        oAnalyst.choose("Show", "void");
        oAnalyst.choose("Show", "date");
        oAnalyst.choose("Show", "id");
        // when
        oHost.call("setRowColors", {"c:1x120,255,255;4x0,255,255"});
        paintedhost::repaint(oAnalyst);
        // then
        QCOMPARE(oAnalyst.table().first(), "id | title | void");
        for (const char* pcColumn : {"id", "title", "void"}) {
            QVERIFY(pixels(inside(paintedhost::cell(oAnalyst, 0, pcColumn)), Green) > 100);
            QVERIFY(pixels(inside(paintedhost::cell(oAnalyst, 4, pcColumn)), Red) > 100);
        }
        // when
        oAnalyst.choose("Show", "title");
        oHost.call("setRowColors", {"c:1x120,255,255;4x0,255,255"});
        paintedhost::repaint(oAnalyst);
        // then
        QCOMPARE(oAnalyst.table().first(), "id | void");
        for (const char* pcColumn : {"id", "void"})
            QVERIFY(pixels(inside(paintedhost::cell(oAnalyst, 0, pcColumn)), Green) > 100);
    }

private:
    using Colors = std::set<QRgb>;

    static QImage inside(const QImage& oCell) { return oCell.copy(oCell.rect().adjusted(1, 1, -1, -1)); }
    static bool isOutline(const QImage& oCell, int x, int y) { return !inside(oCell).valid(x - 1, y - 1); }

    static int differences(const QImage& oCell, const std::function<QRgb(int, int)>& expected)
    {
        int iDifferences = 0;
        for (int y = 0; y < oCell.height(); y++)
            for (int x = 0; x < oCell.width(); x++)
                iDifferences += oCell.pixel(x, y) == expected(x, y) ? 0 : 1;
        return iDifferences;
    }

    static int pixels(const QImage& oCell, QRgb uColor)
    {
        return oCell.width() * oCell.height() - differences(oCell, [&](int, int) { return uColor; });
    }

    static Colors colors(const QImage& oCell)
    {
        Colors oColors;
        for (int y = 0; y < oCell.height(); y++)
            for (int x = 0; x < oCell.width(); x++)
                oColors.insert(oCell.pixel(x, y));
        return oColors;
    }

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleColors)
#include "tst_module_colors.moc"
