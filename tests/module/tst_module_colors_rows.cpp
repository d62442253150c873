// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "moduletest.h"
#include "paintedhost.h"
#include "tests/support/CPrivateServer.h"

#include <functional>

/// The row colours of thousands of documents, of which a few are in sight.
class TestModuleColorsRows : public QObject
{
    Q_OBJECT

private:
    /// What somebody does to see other rows.
    using Way = std::function<void(CAnalyst&)>;

private Q_SLOTS:
    void initTestCase() { oServer.load(QStringLiteral("painted.sql")); }

    void everyRowInSightHasItsColor_data()
    {
        QTest::addColumn<Way>("scroll");
        QTest::addColumn<int>("iFirst");
        QTest::addColumn<int>("iLast");
        const auto keys = [](const QByteArrayList& lKeys) {
            return Way([lKeys](CAnalyst& oAnalyst) {
                oAnalyst.clickCell(0, "title");
                oAnalyst.press(lKeys);
            });
        };
        const auto drag = [](int iFrom, int iTo) {
            return Way([=](CAnalyst& o) { dragBar(o, iFrom, iTo); });
        };
        QTest::newRow("at the beginning") << Way([](CAnalyst&) {}) << 0 << 25;
        QTest::newRow("End") << keys({"End"}) << 2970 << 2999;
        QTest::newRow("End, Home") << keys({"End", "Home"}) << 0 << 25;
        QTest::newRow("page down") << keys({"Next", "Next", "Next"}) << 40 << 100;
        QTest::newRow("page down and up") << keys({"End", "Prior", "Prior", "Prior"}) << 2900 << 2960;
        QTest::newRow("arrows") << keys(QByteArrayList(40, "Down")) << 15 << 45;
        QTest::newRow("wheel") << Way([](CAnalyst& o) { turnWheel(o, 5, 10); }) << 25 << 60;
        QTest::newRow("wheel there and back") << Way([](CAnalyst& o) {
            turnWheel(o, 5, 10);
            turnWheel(o, 4, 5);
        }) << 10 << 45;
        QTest::newRow("scroll bar to the end") << drag(0, 120) << 2970 << 2999;
        QTest::newRow("scroll bar to the middle") << drag(0, 50) << 1000 << 2000;
        QTest::newRow("mark") << Way([](CAnalyst& o) {
            o.host().call("markRow", {"k:2010-01-01 00:00:00", "i:1"});
        }) << 1050 << 1150;
    }

    void everyRowInSightHasItsColor()
    {
        QFETCH(Way, scroll);
        QFETCH(int, iFirst);
        QFETCH(int, iLast);
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        paintedhost::show(oAnalyst, 3, "c:3000x0,255,255+7");
        // when
        scroll(oAnalyst);
        // then
        const QByteArrayList lRows = oAnalyst.rowsInSight().split(' ');
        QVERIFY2(lRows[0].toInt() >= iFirst && lRows[1].toInt() <= iLast, lRows.join(' '));
        compareRows(oAnalyst, lRows[0].toInt() + 1, lRows[1].toInt() - 1);
    }

    void theLastRowsHaveTheLastColors()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        paintedhost::show(oAnalyst, 3, "c:3000x0,255,255+7");
        oAnalyst.clickCell(0, "title");
        oAnalyst.press({"End"});
        compareRows(oAnalyst, 2990, 2999);
    }

    // What stays in sight is moved, not painted.
    void scrollingColorsTheRowsThatComeIntoSight()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        paintedhost::show(oAnalyst, 3);
        const int iLast = oAnalyst.rowsInSight().split(' ').last().toInt();
        oHost.call("setRowColors", {"c:3000x0,255,255"});
        // when
        turnWheel(oAnalyst, 5, 3);
        // then
        const QByteArrayList lRows = oAnalyst.rowsInSight().split(' ');
        const int iFirst = lRows[0].toInt() + 1;
        QVERIFY(iFirst > 3 && iFirst < iLast - 3 && lRows[1].toInt() > iLast + 3);
        QCOMPARE(paintedhost::fills(oAnalyst, iFirst, iLast - 1), QByteArrayList(iLast - iFirst, "#ffffff"));
        QCOMPARE(paintedhost::fills(oAnalyst, iLast + 1, lRows[1].toInt() - 1),
            QByteArrayList(lRows[1].toInt() - iLast - 1, "#ff0000"));
        // when
        turnWheel(oAnalyst, 4, 3);
        // then
        QCOMPARE(paintedhost::fills(oAnalyst, 0, 2), QByteArrayList(3, "#ff0000"));
        QCOMPARE(paintedhost::fills(oAnalyst, iFirst, iFirst), QByteArrayList{"#ffffff"});
    }

    void rowsThatComeIntoSightHaveTheColorsOfNow()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        paintedhost::show(oAnalyst, 3, "c:3000x0,255,255");
        // when
        oHost.command({"recolor", "3000x120,255,255"});
        turnWheel(oAnalyst, 5, 10);
        // then
        QCOMPARE(paintedhost::fills(oAnalyst, 35, 40), QByteArrayList(6, "#00ff00"));
    }

    void aShorterResultNeedsFewerColors()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        paintedhost::show(oAnalyst, 3, "c:3000x0,255,255+7");
        oAnalyst.clickCell(0, "title");
        oAnalyst.press({"End"});
        // when
        oHost.call("select", {"i:2"});
        oHost.call("setRowColors", {"c:2x120,255,255"});
        paintedhost::repaint(oAnalyst);
        // then
        QCOMPARE(paintedhost::fills(oAnalyst, 0, 1), QByteArrayList(2, "#00ff00"));
    }

private:
    static void turnWheel(CAnalyst& oAnalyst, int iButton, int iTimes)
    {
        const QRect oTable = oAnalyst.part("table");
        for (int i = 0; i < iTimes; i++)
            oAnalyst.click(oTable, iButton);
    }

    // Places of the scroll bar in per cent of the slider's way, which begins below a button.
    static void dragBar(CAnalyst& oAnalyst, int iFrom, int iTo)
    {
        constexpr int Button = 30;
        const QRect oTable = oAnalyst.part("table");
        const int iWay = oTable.height() - 2 * Button;
        const QPoint oTop = oTable.topRight() + QPoint(-8, Button);
        oAnalyst.screen().drag(oTop + QPoint(0, iWay * iFrom / 100), oTop + QPoint(0, iWay * iTo / 100));
    }

    static void compareRows(CAnalyst& oAnalyst, int iFirst, int iLast)
    {
        const int iCurrent = oAnalyst.currentCell().split(' ').first().toInt();
        const bool bChosen = oAnalyst.currentCell() != "none";
        QByteArrayList lExpected;
        for (int iRow = iFirst; iRow <= iLast; iRow++)
            lExpected << (bChosen && iRow == iCurrent ? QColor(paintedhost::Highlight)
                                                      : QColor::fromHsv(7 * iRow % 360, 255, 255))
                             .name()
                             .toUtf8();
        QVERIFY(lExpected.size() > 5);
        QCOMPARE(paintedhost::fills(oAnalyst, iFirst, iLast), lExpected);
    }

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleColorsRows)
#include "tst_module_colors_rows.moc"
