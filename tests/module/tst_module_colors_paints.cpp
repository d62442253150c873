// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "CCover.h"
#include "moduletest.h"
#include "paintedhost.h"
#include "tests/support/CPrivateServer.h"

/// When the host's row colours appear, and when they go.
class TestModuleColorsPaints : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { oServer.load(QStringLiteral("painted.sql")); }

    void newColorsRepaintNothing()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        paintedhost::show(oAnalyst, 1);
        const QImage oBefore = picture(oAnalyst);
        // when
        oHost.call("setRowColors", {"c:5x0,255,255"});
        oHost.numRows();
        // then
        QVERIFY(picture(oAnalyst) == oBefore);
        // when the mouse goes over it
        for (int iRow = 0; iRow < 5; iRow++)
            oScreen.hover(oAnalyst.cell(iRow, "title").center());
        // then
        QVERIFY(picture(oAnalyst) == oBefore);
        // when
        paintedhost::repaint(oAnalyst);
        // then
        QCOMPARE(paintedhost::fills(oAnalyst, 0, 4), QByteArrayList(5, "#ff0000"));
    }

    void aRowChangesItsColorWhenItIsPainted()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        paintedhost::show(oAnalyst, 1, "c:5x0,255,255");
        oAnalyst.clickCell(0, "title");
        QCOMPARE(paintedhost::fills(oAnalyst, 0, 4),
            QByteArrayList({"#308cc6", "#ff0000", "#ff0000", "#ff0000", "#ff0000"}));
        // when the one row is chosen and the other no longer
        oHost.call("setRowColors", {"c:5x120,255,255"});
        oAnalyst.press({"Down"});
        // then
        QCOMPARE(paintedhost::fills(oAnalyst, 0, 4),
            QByteArrayList({"#00ff00", "#308cc6", "#ff0000", "#ff0000", "#ff0000"}));
        // when
        oAnalyst.press({"Down"});
        // then
        QCOMPARE(paintedhost::fills(oAnalyst, 0, 4),
            QByteArrayList({"#00ff00", "#00ff00", "#308cc6", "#ff0000", "#ff0000"}));
    }

    void cellsThatWereCoveredAreThePaintedOnes()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        paintedhost::show(oAnalyst, 1);
        CCover oCover(oAnalyst.cell(1, "title").united(oAnalyst.cell(2, "title")), qRgb(255, 0, 255));
        // when
        oHost.call("setRowColors", {"c:5x0,255,255"});
        oHost.numRows();
        oCover.remove();
        // then
        QTUTILS_WAIT_FOR(paintedhost::fills(oAnalyst, 0, 4)
            == QByteArrayList({"#ffffff", "#ff0000", "#ff0000", "#ffffff", "#ffffff"}));
    }

    void theHostsArrayIsReadAtEachPaint()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        paintedhost::show(oAnalyst, 1, "c:5x0,255,255");
        QCOMPARE(paintedhost::fills(oAnalyst, 0, 4), QByteArrayList(5, "#ff0000"));
        // when
        oHost.command({"recolor", "2x120,255,255;1x240,255,255"});
        // then
        QCOMPARE(paintedhost::fills(oAnalyst, 0, 4), QByteArrayList(5, "#ff0000"));
        // when
        paintedhost::repaint(oAnalyst);
        // then
        QCOMPARE(paintedhost::fills(oAnalyst, 0, 4),
            QByteArrayList({"#00ff00", "#00ff00", "#0000ff", "#ff0000", "#ff0000"}));
    }

    void otherColorsTakeTheirPlace()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        paintedhost::show(oAnalyst, 1, "c:5x0,255,255");
        oHost.call("setRowColors", {"c:5x120,255,255"});
        oHost.call("setRowColors", {"c:5x240,255,255"});
        paintedhost::repaint(oAnalyst);
        QCOMPARE(paintedhost::fills(oAnalyst, 0, 4), QByteArrayList(5, "#0000ff"));
    }

    void noColorsChangeNothing()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        paintedhost::show(oAnalyst, 1);
        oHost.call("setRowColors", {"null"});
        paintedhost::repaint(oAnalyst);
        QCOMPARE(paintedhost::fills(oAnalyst, 0, 4), QByteArrayList(5, "#ffffff"));
        oHost.call("setRowColors", {"c:5x0,255,255"});
        oHost.call("setRowColors", {"null"});
        paintedhost::repaint(oAnalyst);
        QCOMPARE(paintedhost::fills(oAnalyst, 0, 4), QByteArrayList(5, "#ff0000"));
    }

    void theColorsThatFillDateWaitsForArePainted()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        paintedhost::show(oAnalyst, 1);
        QCOMPARE(oHost.call("fillDate", {"oi:5"}), "0 1440 2880 4320 5760");
        oHost.call("setRowColors", {"c:5x0,255,255"});
        paintedhost::repaint(oAnalyst);
        QCOMPARE(paintedhost::fills(oAnalyst, 0, 4), QByteArrayList(5, "#ff0000"));
    }

    void theNextSelectionEndsTheColors_data()
    {
        QTest::addColumn<QByteArrayList>("lCall");
        QTest::addColumn<QByteArrayList>("lEntry");
        QTest::addColumn<QByteArray>("oPart");
        const QByteArrayList lNothing;
        QTest::newRow("the host chooses the same node")
            << QByteArrayList{"select", "i:1"} << lNothing << QByteArray();
        QTest::newRow("the host chooses another node")
            << QByteArrayList{"select", "i:3"} << lNothing << QByteArray();
        QTest::newRow("a column more") << lNothing << QByteArrayList{"Show", "id"} << QByteArray();
        QTest::newRow("a column less") << lNothing << QByteArrayList{"Show", "date"} << QByteArray();
        QTest::newRow("another order") << lNothing << QByteArrayList{"Sort", "id"} << QByteArray();
        QTest::newRow("the same order") << lNothing << QByteArrayList{"Sort", "date"} << QByteArray();
        QTest::newRow("date filter") << lNothing << lNothing << QByteArray("checkdate");
    }

    void theNextSelectionEndsTheColors()
    {
        QFETCH(QByteArrayList, lCall);
        QFETCH(QByteArrayList, lEntry);
        QFETCH(QByteArray, oPart);
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        paintedhost::show(oAnalyst, 1, "c:3000x0,255,255");
        QCOMPARE(paintedhost::fills(oAnalyst, 0, 4), QByteArrayList(5, "#ff0000"));
        // when
        if (!lCall.isEmpty())
            oHost.call(lCall[0], lCall.mid(1));
        if (!lEntry.isEmpty())
            oAnalyst.choose(lEntry[0], lEntry[1]);
        if (!oPart.isEmpty())
            oAnalyst.click(QRect(oAnalyst.part(oPart).topLeft(), QSize(20, 20)));
        // then
        QCOMPARE(paintedhost::fills(oAnalyst, 0, 4), QByteArrayList(5, "#ffffff"));
        // when
        oHost.call("setRowColors", {"c:same"});
        paintedhost::repaint(oAnalyst);
        // then
        QCOMPARE(paintedhost::fills(oAnalyst, 0, 4), QByteArrayList(5, "#ff0000"));
    }

    void aNodeChosenInTheTreeEndsTheColors()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        paintedhost::show(oAnalyst, 1);
        oHost.announceErrors({"Database is open. Commencing."});
        oHost.passHierarchy();
        oHost.call("setRowColors", {"c:5x0,255,255"});
        paintedhost::repaint(oAnalyst);
        QCOMPARE(paintedhost::fills(oAnalyst, 0, 4), QByteArrayList(5, "#ff0000"));
        // when
        oAnalyst.click(oAnalyst.item(3));
        // then
        QCOMPARE(oHost.numRows(), 3000);
        QCOMPARE(paintedhost::fills(oAnalyst, 0, 4), QByteArrayList(5, "#ffffff"));
    }

    void whatSelectsNothingKeepsTheColors_data()
    {
        QTest::addColumn<QByteArrayList>("lCall");
        QTest::addColumn<QByteArray>("oError");
        QTest::newRow("a negative node") << QByteArrayList{"select", "i:-1"} << QByteArray();
        QTest::newRow("a question") << QByteArrayList{"getFirstDateInSelection", "ot:20"} << QByteArray();
        QTest::newRow("a mark without a match")
            << QByteArrayList{"markRow", "k:2030-01-01 00:00:00", "i:1"} << QByteArray();
        QTest::newRow("another table") << QByteArrayList{"setSOMTable", "t:painted_train"}
                                       << QByteArray("CNodeBrowser: Changed Table to painted_train");
        QTest::newRow("a hierarchy") << QByteArrayList{"passNodeHierarchy", "n:", "i:0", "i:0", "i:1"}
                                     << QByteArray("Database is open. Commencing.");
    }

    void whatSelectsNothingKeepsTheColors()
    {
        QFETCH(QByteArrayList, lCall);
        QFETCH(QByteArray, oError);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        paintedhost::show(oAnalyst, 1, "c:5x0,255,255");
        if (!oError.isEmpty())
            oHost.announceErrors({oError});
        oHost.call(lCall[0], lCall.mid(1));
        paintedhost::repaint(oAnalyst);
        QCOMPARE(paintedhost::fills(oAnalyst, 0, 4), QByteArrayList(5, "#ff0000"));
    }

    void theOrderOfTheCallsCounts()
    {
        // given colours before the selection
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        paintedhost::show(oAnalyst, 2);
        oHost.call("setRowColors", {"c:5x0,255,255"});
        oHost.call("select", {"i:1"});
        paintedhost::repaint(oAnalyst);
        QCOMPARE(paintedhost::fills(oAnalyst, 0, 4), QByteArrayList(5, "#ffffff"));
        // and behind it
        oHost.call("select", {"i:1"});
        oHost.call("setRowColors", {"c:same"});
        paintedhost::repaint(oAnalyst);
        QCOMPARE(paintedhost::fills(oAnalyst, 0, 4), QByteArrayList(5, "#ff0000"));
    }

private:
    static QImage picture(CAnalyst& oAnalyst)
    {
        const QRect oTable = oAnalyst.part("table");
        return oAnalyst.screen().picture().copy(oTable);
    }

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleColorsPaints)
#include "tst_module_colors_paints.moc"
