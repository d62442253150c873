// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"
#include "treehost.h"

namespace {

const QByteArrayList Nodes{"1,2,3", "", "", ""};
const QByteArrayList One{"Ombrel"};
constexpr QRgb Green = qRgb(0, 255, 0);

} // namespace

/// The window shown, hidden, made small and large, by user and host.
class TestModuleWindowStates : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { oServer.load(QStringLiteral("news.sql")); }

    void thereIsOneWindowWithTheApplicationsName()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, Nodes);
        QCOMPARE(oScreen.shown(), One);
        QCOMPARE(oHost.construct(), "same window");
        oAnalyst.showWindow();
        QCOMPARE(oScreen.shown(), One);
        oHost.announceErrors({"Terminating QApplication"});
        oHost.free();
        oHost.free();
        QTUTILS_WAIT_FOR(oScreen.shown().isEmpty());
        QVERIFY(oHost.construct().endsWith("window"));
        oAnalyst.showWindow();
        QCOMPARE(oScreen.shown(), One);
    }

    void theHiddenWindowGoesOnAndComesBack_data()
    {
        QTest::addColumn<QByteArray>("oWay");
        for (const char* pcWay :
            {"Quit by mouse", "Quit by keys", "a key of the desktop", "the window manager"})
            QTest::newRow(pcWay) << QByteArray(pcWay);
    }

    void theHiddenWindowGoesOnAndComesBack()
    {
        // given
        QFETCH(QByteArray, oWay);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, Nodes);
        const QRect oPlace = moveAndResize();
        // when
        hide(oAnalyst, oWay);
        // then
        QTUTILS_WAIT_FOR(oScreen.shown().isEmpty());
        oHost.call("select", {"i:2"});
        QCOMPARE(oAnalyst.currentNode(), "2");
        // when
        oAnalyst.showWindow();
        // then
        QCOMPARE(oScreen.place("Ombrel"), oPlace);
        QCOMPARE(oAnalyst.table().size(), 3);
    }

    void theUserMayNotMakeItSmall()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, Nodes);
        moveAndResize();
        oScreen.resize("Ombrel", {300, 200});
        QTUTILS_WAIT_FOR(oScreen.place("Ombrel").size() == QSize(732, 800));
    }

    void aMinimizedWindowComesBackWhereItWas()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, Nodes);
        const QRect oPlace = moveAndResize();
        // when
        oScreen.minimize("Ombrel");
        // then
        QTUTILS_WAIT_FOR(oScreen.shown().isEmpty());
        oHost.call("select", {"i:2"});
        QCOMPARE(oHost.numRows(), 2);
        // when
        oAnalyst.press({"alt+Tab"});
        // then
        QTUTILS_WAIT_FOR(oScreen.isActive("Ombrel"));
        QTUTILS_WAIT_FOR(oScreen.place("Ombrel") == oPlace); // it flies up
        QCOMPARE(oAnalyst.currentNode(), "2");
        oHost.call("show");
        QCOMPARE(oHost.numRows(), 2);
        QCOMPARE(oScreen.place("Ombrel"), oPlace);
    }

    void aShowBringsAMinimizedWindowBack()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, Nodes);
        const QRect oPlace = moveAndResize();
        oScreen.minimize("Ombrel");
        QTUTILS_WAIT_FOR(oAnalyst.isMinimized());
        // when
        oAnalyst.showWindow();
        // then
        QTUTILS_WAIT_FOR(oScreen.place("Ombrel") == oPlace); // it flies up
    }

    void aMaximizedWindowStaysAsLarge()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, Nodes);
        const QRect oPlace = oScreen.place("Ombrel");
        oScreen.doubleClick({oPlace.center().x(), oPlace.top() - 10}); // on the title
        QTUTILS_WAIT_FOR(oScreen.place("Ombrel").width() > 1200);
        const QRect oLarge = oScreen.place("Ombrel");
        QCOMPARE(oAnalyst.part("ListView").width(), 340);
        // when
        oHost.call("show");
        oHost.numRows();
        oScreen.close("Ombrel");
        QTUTILS_WAIT_FOR(oScreen.shown().isEmpty());
        oAnalyst.showWindow();
        // then
        QCOMPARE(oScreen.place("Ombrel"), oLarge);
    }

    void showRaisesTheWindow()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, Nodes);
        oHost.call("select", {"i:1"});
        QCOMPARE(oHost.numRows(), 5);
        oHost.call("setRowColors", {"c:5x120,255,255"});
        oAnalyst.doubleClickCell(0, "title");
        QTUTILS_WAIT_FOR(oScreen.shown().size() == 2);
        oScreen.move("Ombrel", {500, 280}); // below the viewer
        const auto row = [&] { return oAnalyst.cell(3, "title") & oAnalyst.part("0/fullEdit"); };
        QTUTILS_WAIT_FOR(row().width() > 50);
        QTUTILS_WAIT_FOR(oScreen.pixels(Green, row()) == 0);
        // when
        oHost.call("show");
        // then
        QTUTILS_WAIT_FOR(oScreen.pixels(Green, row()) > 500);
    }

    void aWindowIsFilledBeforeItIsShown()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::fill(oHost, Nodes);
        oHost.call("select", {"i:2"});
        oHost.call("setRowColors", {"c:2x120,255,255"});
        // when
        oAnalyst.showWindow();
        // then
        QCOMPARE(oAnalyst.currentNode(), "2");
        QCOMPARE(oAnalyst.part("ListView").width(), 340);
        QVERIFY(!oAnalyst.cell(1, "title").isEmpty());
        QTUTILS_WAIT_FOR(oScreen.pixels(Green) > 3000);
    }

    void theRightSideIsHiddenForGood_data()
    {
        QTest::addColumn<bool>("bShownFirst");
        QTest::newRow("in a shown window") << true;
        QTest::newRow("before the first show") << false;
    }

    void theRightSideIsHiddenForGood()
    {
        // given
        QFETCH(bool, bShownFirst);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::fill(oHost, Nodes);
        if (bShownFirst)
            oAnalyst.showWindow();
        // when
        oHost.call("hideTable");
        oAnalyst.showWindow();
        // then
        QVERIFY(isTreeAlone(oAnalyst));
        // when
        oHost.call("hideTable");
        oHost.call("select", {"i:1"});
        oHost.call("markRow", {"k:2005-03-01 10:00:00", "i:1"});
        QCOMPARE(oHost.numRows(), 5);
        treehost::pass(oHost, Nodes);
        oScreen.close("Ombrel");
        QTUTILS_WAIT_FOR(oScreen.shown().isEmpty());
        oAnalyst.showWindow();
        // then
        QVERIFY(isTreeAlone(oAnalyst));
        oAnalyst.click(oAnalyst.item(2));
        QCOMPARE(oHost.numRows(), 2);
    }

    void theNextWindowHasItsRightSide()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, Nodes);
        oHost.call("hideTable");
        oHost.announceErrors({"Terminating QApplication"});
        oHost.free();
        treehost::show(oAnalyst, Nodes);
        QVERIFY(!oAnalyst.part("table").isEmpty());
    }

    void theNextWindowBeginsWithTheLeastSize()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, Nodes);
        const QRect oFirst = oScreen.place("Ombrel");
        moveAndResize();
        oHost.announceErrors({"Terminating QApplication"});
        oHost.free();
        treehost::show(oAnalyst, Nodes);
        QCOMPARE(oScreen.place("Ombrel"), oFirst);
    }

private:
    // Where it is then.
    QRect moveAndResize() const
    {
        const QPoint oBefore = oScreen.place("Ombrel").topLeft();
        oScreen.move("Ombrel", {140, 90});
        oScreen.resize("Ombrel", {900, 850});
        const auto isDone = [&] {
            const QRect oPlace = oScreen.place("Ombrel");
            return oPlace.topLeft() != oBefore && oPlace.size() == QSize(900, 850);
        };
        const bool bDone = QTest::qWaitFor(isDone, 20000);
        return bDone ? oScreen.place("Ombrel") : QRect();
    }

    void hide(CAnalyst& oAnalyst, const QByteArray& oWay) const
    {
        if (oWay == "Quit by mouse")
            oAnalyst.choose("File", "Quit");
        else if (oWay == "Quit by keys")
            oAnalyst.press({"alt+f", "q"});
        else if (oWay == "a key of the desktop")
            oAnalyst.press({"alt+F4"});
        else
            oScreen.close("Ombrel");
    }

    bool isTreeAlone(CAnalyst& oAnalyst) const
    {
        for (const char* pcPart : {"RightSide", "table", "texteditor", "checkdate", "dateedit"})
            if (!oAnalyst.part(pcPart).isEmpty())
                return false;
        return oAnalyst.part("ListView").width() == oScreen.place("Ombrel").width();
    }

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleWindowStates)
#include "tst_module_windowstates.moc"
