// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

/// The windows with one document's full text.
class TestModuleViewer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        oServer.load(QStringLiteral("news.sql"));
        oServer.sql(QStringLiteral(
            "INSERT INTO news.document (id, date, title, text) VALUES"
            " (10, '2001-01-01', 'rich', '<b style=\"background-color:#00ff00\">bold</b> text &amp; sign'),"
            " (11, '2001-01-02', 'plain', 'plain text'),"
            " (12, '2001-01-03', 'empty', ''),"
            " (13, '2001-01-04', 'null', NULL);"
            "INSERT INTO som.news_train SELECT 3, 0.5, id FROM news.document WHERE id > 9"));
    }

    void aDoubleClickOpensTheRowsText()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        oAnalyst.clickCell(0, "title");
        QCOMPARE(oAnalyst.text("texteditor"), "Niemand wurde verletzt.");
        // when
        oAnalyst.doubleClickCell(2, "title");
        // then: the press has moved the panel on
        QCOMPARE(oAnalyst.viewers(), QByteArrayList({"shown"}));
        QCOMPARE(oAnalyst.text("0/fullEdit"), "Es schneit in Zürich.");
        QCOMPARE(oAnalyst.text("texteditor"), "Es schneit in Zürich.");
        QTUTILS_WAIT_FOR(oScreen.shown() == QByteArrayList({"Ombrel", "Schnee im März"}));
    }

    void everyDoubleClickOpensAFurtherViewer()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        // when
        oAnalyst.doubleClickCell(2, "title");
        oAnalyst.doubleClickCell(3, "date");
        oAnalyst.doubleClickCell(3, "date");
        // then
        QCOMPARE(oAnalyst.viewers(), QByteArrayList(3, "shown"));
        QCOMPARE(oAnalyst.text("0/fullEdit"), "Es schneit in Zürich.");
        QCOMPARE(oAnalyst.text("1/fullEdit"), "Die Wahl ist vorbei.");
        QCOMPARE(oAnalyst.text("2/fullEdit"), "Die Wahl ist vorbei.");
    }

    void onlyTheLeftButtonOpensAViewer()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        for (const int iButton : {2, 3})
            oAnalyst.doubleClick(oAnalyst.cell(2, "title"), iButton);
        QCOMPARE(oAnalyst.viewers(), QByteArrayList());
    }

    void returnOpensTheCurrentRowsText()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        oAnalyst.clickCell(1, "title");
        oAnalyst.press({"Down", "Return"});
        QCOMPARE(oAnalyst.viewers(), QByteArrayList({"shown"}));
        QCOMPARE(oAnalyst.text("0/fullEdit"), "Es schneit in Zürich.");
    }

    void besideTheRowsAViewerShowsWhatThePanelShows()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(99);
        const QRect oBelow = lowerEdge(oAnalyst.part("table"));
        // when: there is no row at all
        oAnalyst.doubleClick(oBelow);
        // then
        QCOMPARE(oAnalyst.text("0/fullEdit"), "no article selected");
        // when: the press chooses the last row
        oHost.call("select", {"i:1"});
        oAnalyst.doubleClick(oBelow);
        // then
        QCOMPARE(oAnalyst.text("1/fullEdit"), "Ein Apfel kostet mehr.");
        // when: the panel has kept its text
        oHost.call("select", {"i:99"});
        oAnalyst.doubleClick(oBelow);
        // then
        QCOMPARE(oAnalyst.text("2/fullEdit"), "Ein Apfel kostet mehr.");
    }

    void aTextThatIsntThereGivesAnEmptyViewer_data()
    {
        QTest::addColumn<int>("iRow");
        QTest::newRow("empty") << 2;
        QTest::newRow("null") << 3;
    }

    void aTextThatIsntThereGivesAnEmptyViewer()
    {
        QFETCH(int, iRow);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(3);
        oAnalyst.doubleClickCell(iRow, "title");
        QCOMPARE(oAnalyst.viewers(), QByteArrayList({"shown"}));
        QCOMPARE(oAnalyst.text("0/fullEdit"), "");
    }

    void markupStaysMarkup()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(3);
        // when
        oAnalyst.openViewer(0);
        // then
        QCOMPARE(oAnalyst.text("0/fullEdit"), "bold text & sign");
        const QRect oText = oAnalyst.part("0/fullEdit");
        QTUTILS_WAIT_FOR(oScreen.pixels(Green, oText) > 100);
        // when: plain text behind it
        oAnalyst.click(oAnalyst.part("0/exit"));
        QTUTILS_WAIT_FOR(oScreen.shown() == QByteArrayList({"Ombrel"}));
        oAnalyst.openViewer(1);
        // then
        QCOMPARE(oAnalyst.text("1/fullEdit"), "plain text");
        QCOMPARE(oScreen.pixels(Green, oAnalyst.part("1/fullEdit")), 0);
    }

    void aViewerKeepsItsText()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        oAnalyst.doubleClickCell(2, "title");
        // when
        oAnalyst.clickCell(3, "title");
        oHost.call("select", {"i:2"});
        oAnalyst.clickCell(0, "title");
        // then
        QCOMPARE(oAnalyst.text("texteditor"), "Es ist warm.");
        QCOMPARE(oAnalyst.text("0/fullEdit"), "Es schneit in Zürich.");
    }

    void aViewerLiesBesideTheWindowWithItsButtonAtTheRight()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        oAnalyst.openViewer(2);
        const QRect oBox = oAnalyst.part("0/mainlayoutbox");
        const QRect oText = oAnalyst.part("0/fullEdit");
        const QRect oExit = oAnalyst.part("0/exit");
        QCOMPARE(oBox.size(), QSize(540, 500));
        QVERIFY(!oBox.intersects(oScreen.place("Ombrel")));
        QVERIFY(oBox.contains(oText) && oBox.contains(oExit));
        QVERIFY(oText.bottom() < oExit.top());
        QCOMPARE(oExit.width(), (540 - 2 * Margin) / 5);
        QCOMPARE(oExit.right(), oBox.right() - Margin);
        QVERIFY(oAnalyst.font("0/fullEdit").startsWith("Arial,10,-1,5,400,0,"));
        QVERIFY(oAnalyst.font("0/exit").startsWith("System,10,-1,5,700,0,"));
    }

    void closingHidesAViewerAndKeepsIt_data()
    {
        QTest::addColumn<QByteArray>("oWay");
        QTest::newRow("Exit by a click") << QByteArray("click");
        QTest::newRow("Exit by a key") << QByteArray("key");
        QTest::newRow("window manager") << QByteArray("manager");
    }

    void closingHidesAViewerAndKeepsIt()
    {
        // given
        QFETCH(QByteArray, oWay);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        oAnalyst.openViewer(2);
        oAnalyst.openViewer(3);
        QCOMPARE(oAnalyst.viewers(), QByteArrayList({"shown", "shown"}));
        // when
        if (oWay == "click")
            oAnalyst.click(oAnalyst.part("1/exit"));
        else if (oWay == "key")
            oAnalyst.press({"Tab", "space"});
        else
            oAnalyst.press({"alt+F4"});
        // then
        QTUTILS_WAIT_FOR(oScreen.shown().size() == 2);
        QCOMPARE(oAnalyst.viewers(), QByteArrayList({"shown", "hidden"}));
        // when
        oHost.call("show");
        oAnalyst.doubleClickCell(4, "title");
        // then
        QCOMPARE(oAnalyst.viewers(), QByteArrayList({"shown", "hidden", "shown"}));
        QCOMPARE(oAnalyst.text("1/fullEdit"), "Die Wahl ist vorbei.");
        QCOMPARE(oAnalyst.text("2/fullEdit"), "Ein Apfel kostet mehr.");
    }

    void viewersStayWhenTheWindowIsHidden()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        oAnalyst.doubleClickCell(2, "title");
        // when
        oAnalyst.choose("File", "Quit");
        // then
        QTUTILS_WAIT_FOR(oScreen.shown() == QByteArrayList({"Schnee im März"}));
        QCOMPARE(oAnalyst.viewers(), QByteArrayList({"shown"}));
        QTUTILS_WAIT_FOR(oAnalyst.focus() == "0/fullEdit");
        oAnalyst.press({"ctrl+a"});
        QCOMPARE(oAnalyst.selectedText("0/fullEdit"), "0-21: Es schneit in Zürich.");
        // when: the last one goes
        oAnalyst.click(oAnalyst.part("0/exit"));
        // then
        QTUTILS_WAIT_FOR(oScreen.shown().isEmpty());
        QCOMPARE(oHost.numRows(), 5);
        oAnalyst.showWindow();
        QCOMPARE(oAnalyst.viewers(), QByteArrayList({"hidden"}));
    }

    void aViewerCantBeChangedAndEscapeLeavesIt()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        oAnalyst.openViewer(2);
        oAnalyst.press(
            {"ctrl+a", "ctrl+c", "x", "Delete", "BackSpace", "Return", "ctrl+v", "ctrl+x", "Escape"});
        oScreen.click(oAnalyst.part("0/fullEdit").center(), 2); // would paste what is selected
        QCOMPARE(oAnalyst.text("0/fullEdit"), "Es schneit in Zürich.");
        QCOMPARE(oAnalyst.viewers(), QByteArrayList({"shown"}));
    }

    void theLastFreeHidesTheViewersForGood()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        oAnalyst.openViewer(2);
        // when
        oHost.announceErrors({"Terminating QApplication"});
        oHost.free();
        // then
        QTUTILS_WAIT_FOR(oScreen.shown().isEmpty());
        // when
        oHost.call("setSOMTable", {"t:news_train"});
        oHost.construct();
        oAnalyst.showWindow();
        oHost.call("select", {"i:1"});
        // then
        QCOMPARE(oAnalyst.viewers(), QByteArrayList({"hidden"}));
        QCOMPARE(oAnalyst.text("texteditor"), "no article selected");
        // when
        oAnalyst.openViewer(3);
        // then
        QCOMPARE(oAnalyst.viewers(), QByteArrayList({"hidden", "shown"}));
        QCOMPARE(oAnalyst.text("1/fullEdit"), "Die Wahl ist vorbei.");
    }

private:
    static constexpr QRgb Green = qRgb(0, 255, 0);
    static constexpr int Margin = 5; ///< around a viewer's parts

    static QRect lowerEdge(const QRect& oPlace) { return {oPlace.left() + 40, oPlace.bottom() - 30, 10, 10}; }

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleViewer)
#include "tst_module_viewer.moc"
