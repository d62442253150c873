// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CPlainHost.h"
#include "CScreen.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

/// The window as its user sees it.
class TestModuleWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        oServer.load(QStringLiteral("news.sql"));
        oServer.sql(
            QStringLiteral("USE som; "
                           "CREATE VIEW many AS SELECT 1 node, 0.5 dist, seq item FROM seq_1_to_100000; "
                           "INSERT INTO news.document (id, date, title) SELECT seq, "
                           "'2007-01-01' + INTERVAL seq MINUTE, seq FROM seq_8_to_100000"));
    }

    void theMenusQuitHidesTheWindow()
    {
        // given
        CPlainHost oHost;
        show(oHost);
        // when
        oScreen.press({"alt+f", "q"});
        // then
        QTUTILS_WAIT_FOR(!oScreen.isShown("Ombrel"));
        oHost.call("select", {"i:1"});
        QCOMPARE(oHost.numRows(), 5);
        QCOMPARE(oHost.errors(), QByteArrayList({"Database is open. Commencing."}));
        // when
        oHost.call("show");
        // then
        QTUTILS_WAIT_FOR(oScreen.isShown("Ombrel"));
    }

    void closingHidesTheWindow()
    {
        // given
        CPlainHost oHost;
        show(oHost);
        // when
        oScreen.close("Ombrel");
        // then
        QTUTILS_WAIT_FOR(!oScreen.isShown("Ombrel"));
        oHost.call("select", {"i:1"});
        QCOMPARE(oHost.numRows(), 5);
        QCOMPARE(oHost.errors(), QByteArrayList({"Database is open. Commencing."}));
    }

    void aNewWindowHasItsLeastSizeAtTheTopLeft()
    {
        CPlainHost oHost;
        show(oHost);
        QCOMPARE(oScreen.place("Ombrel").size(), QSize(732, 800));
        QVERIFY(oScreen.place("Ombrel").x() < 20 && oScreen.place("Ombrel").y() < 40);
    }

    void showBringsTheWindowBackWhereItWas()
    {
        // given
        CPlainHost oHost;
        show(oHost);
        const QPoint oFirst = oScreen.place("Ombrel").topLeft();
        oScreen.move("Ombrel", {140, 90});
        QTUTILS_WAIT_FOR(oScreen.place("Ombrel").topLeft() != oFirst);
        oScreen.resize("Ombrel", {900, 850});
        QTUTILS_WAIT_FOR(oScreen.place("Ombrel").size() == QSize(900, 850));
        const QRect oPlace = oScreen.place("Ombrel");
        for (int i = 0; i < 4; i++) {
            // when
            oScreen.close("Ombrel");
            QTUTILS_WAIT_FOR(!oScreen.isShown("Ombrel"));
            oHost.call("show");
            // then
            QTUTILS_WAIT_FOR(oScreen.isActive("Ombrel"));
            QCOMPARE(oScreen.place("Ombrel"), oPlace);
        }
    }

    void showOfAShownWindowLeavesItWhereItIs()
    {
        CPlainHost oHost;
        show(oHost);
        oScreen.resize("Ombrel", {900, 850});
        QTUTILS_WAIT_FOR(oScreen.place("Ombrel").size() == QSize(900, 850));
        const QRect oPlace = oScreen.place("Ombrel");
        for (int i = 0; i < 4; i++)
            oHost.call("show");
        oHost.numRows();
        QCOMPARE(oScreen.place("Ombrel"), oPlace);
    }

    void theRightSideStaysHidden()
    {
        // given
        CPlainHost oHost;
        show(oHost);
        showGreenRows(oHost);
        // when
        oHost.call("hideTable");
        // then
        QTUTILS_WAIT_FOR(oScreen.pixels(Green) == 0);
        // when
        oHost.call("select", {"i:1"});
        oHost.call("setRowColors", {"c:5x120,255,255"});
        repaint(oHost);
        // then
        QTUTILS_WAIT_FOR(oScreen.pixels(Highlight) > 500); // the tree's current item
        QCOMPARE(oScreen.pixels(Green), 0);
    }

    void rowsHaveTheHostsColors()
    {
        // given
        CPlainHost oHost;
        oHost.start();
        oHost.call("select", {"i:1"});
        // when
        oHost.call("setRowColors", {"c:3x120,255,255;2x0,255,255"});
        oHost.call("show");
        // then
        QTUTILS_WAIT_FOR(oScreen.pixels(Green) > 5000);
        QTUTILS_WAIT_FOR(oScreen.pixels(Red) > 3000);
        QVERIFY(oScreen.pixels(Green) > oScreen.pixels(Red));
        // when
        oHost.call("select", {"i:1"});
        // then
        QTUTILS_WAIT_FOR(oScreen.pixels(Green) == 0 && oScreen.pixels(Red) == 0);
    }

    void aMarkedRowIsTheSelectedOne()
    {
        // given
        CPlainHost oHost;
        show(oHost);
        showGreenRows(oHost);
        const int iRow = oScreen.pixels(Green) / 5;
        // when
        oHost.call("markRow", {"k:2005-03-01 10:00:00", "i:1"});
        // then
        QTUTILS_WAIT_FOR(oScreen.pixels(Green) < 9 * iRow / 2);
        QVERIFY(oScreen.pixels(Green) > 4 * iRow - iRow / 2);
    }

    void aHundredThousandDocumentsAreShown()
    {
        // given
        CPlainHost oHost;
        show(oHost);
        oHost.announceErrors({"CNodeBrowser: Changed Table to many"});
        oHost.call("setSOMTable", {"t:many"});
        oHost.call("select", {"i:1"});
        QCOMPARE(oHost.numRows(), 100000);
        oHost.call("setRowColors", {"c:99999x120,255,255;1x0,255,255"});
        repaint(oHost);
        QTUTILS_WAIT_FOR(oScreen.pixels(Green) > 10000);
        QCOMPARE(oScreen.pixels(Red), 0);
        // when
        oScreen.click(oScreen.place("Ombrel").topLeft() + FirstRow);
        oScreen.press({"End"});
        // then
        QTUTILS_WAIT_FOR(oScreen.pixels(Red) > 50);
        QVERIFY(oScreen.pixels(Green) > 10000);
    }

    void aClickInTheTreeChoosesTheNode()
    {
        CPlainHost oHost;
        show(oHost);
        oServer.startLog();
        oScreen.click(oScreen.place("Ombrel").topLeft() + RootItem);
        QTUTILS_WAIT_FOR(oHost.numRows() == 1);
        QCOMPARE(oServer.log(),
            QStringList({QStringLiteral("SELECT node, dist, document.* FROM news_train, news.document WHERE "
                                        "news.document.id=news_train.item AND node=0 ORDER BY date")}));
    }

    void aTreeThatWasNeverFilledTakesNoRoom()
    {
        // given
        CPlainHost oHost;
        oHost.load();
        oHost.call("setSOMTable", {"t:news_train"});
        oHost.construct();
        oHost.call("show");
        QTUTILS_WAIT_FOR(oScreen.isActive("Ombrel"));
        showGreenRows(oHost);
        const int iRow = oScreen.pixels(Green) / 5;
        // when
        oScreen.click(oScreen.place("Ombrel").topLeft() + RootItem + QPoint(0, 20));
        // then
        QTUTILS_WAIT_FOR(oScreen.pixels(Green) < 9 * iRow / 2);
    }

private:
    static constexpr QRgb Green = qRgb(0, 255, 0);
    static constexpr QRgb Red = qRgb(255, 0, 0);
    static constexpr QRgb Highlight = qRgb(48, 140, 198); // of the widgets' style

    void show(CPlainHost& oHost) const
    {
        oHost.start();
        oHost.call("show");
        QTUTILS_WAIT_FOR(oScreen.isActive("Ombrel"));
    }

    // Colours appear with the next paint of each cell.
    void repaint(CPlainHost& oHost) const
    {
        oScreen.close("Ombrel");
        QTUTILS_WAIT_FOR(!oScreen.isShown("Ombrel"));
        oHost.call("show");
        QTUTILS_WAIT_FOR(oScreen.isActive("Ombrel"));
    }

    void showGreenRows(CPlainHost& oHost) const
    {
        oHost.call("select", {"i:1"});
        oHost.call("setRowColors", {"c:5x120,255,255"});
        repaint(oHost);
        QTUTILS_WAIT_FOR(oScreen.pixels(Green) > 10000);
    }

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleWindow)
#include "tst_module_window.moc"
