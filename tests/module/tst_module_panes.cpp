// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"
#include "treehost.h"

namespace {

const QByteArrayList Nodes{"1,2,3", "", "", ""};

} // namespace

/// The parts of the window, their sizes and their order.
class TestModulePanes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        qputenv("LC_CTYPE", "C.UTF-8"); // has a table of composed characters for the toolkit
        oServer.load(QStringLiteral("news.sql"));
    }

    void thePartsStandInTheirGroups()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, Nodes);
        const auto part = [&](const char* pcName) { return oAnalyst.part(pcName); };
        QVERIFY(part("RightSide").contains(part("TableGroup")));
        QVERIFY(part("RightSide").contains(part("EditorGroup")));
        QVERIFY(part("TableGroup").contains(part("table"), true));
        QVERIFY(part("EditorGroup").contains(part("texteditor"), true));
        QVERIFY(part("EditorGroup").contains(part("DateEditGroup"), true));
        QVERIFY(part("DateEditGroup").contains(part("checkdate"), true));
        QVERIFY(part("DateEditGroup").contains(part("dateedit"), true));
        QVERIFY(part("texteditor").bottom() < part("DateEditGroup").top());
        QVERIFY(part("checkdate").right() < part("dateedit").left());
        QVERIFY(part("checkdate").width() <= part("dateedit").width()); // which has room for its date
    }

    void groupsAndFieldsHaveTheirTexts()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, Nodes);
        QCOMPARE(oAnalyst.text("TableGroup"), "");
        QCOMPARE(oAnalyst.text("EditorGroup"), "");
        QCOMPARE(oAnalyst.text("DateEditGroup"), "Date Selection");
        QCOMPARE(oAnalyst.text("checkdate"), "select by date [ ]");
        QCOMPARE(oAnalyst.text("texteditor"), "no article selected");
    }

    void theMenuBarStandsAboveAll()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, Nodes);
        const QRect oWindow = oScreen.place("Ombrel");
        const QRect oBar = oAnalyst.part("mainBar");
        QCOMPARE(oBar.topLeft(), oWindow.topLeft());
        QCOMPARE(oBar.width(), oWindow.width());
        QCOMPARE(oAnalyst.part("ListView").top(), oBar.bottom() + 1);
        QCOMPARE(oAnalyst.part("ListView").bottom(), oWindow.bottom());
        QCOMPARE(oAnalyst.part("RightSide").bottomRight(), oWindow.bottomRight());
        QVERIFY(oAnalyst.menuTitle("File").right() < oAnalyst.menuTitle("Show").left());
        QVERIFY(oAnalyst.menuTitle("Show").right() < oAnalyst.menuTitle("Sort").left());
    }

    void aHandleLiesBetweenTwoPanes()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, Nodes);
        QCOMPARE(oAnalyst.part("RightSide").left() - oAnalyst.part("ListView").right() - 1, 5);
        QCOMPARE(oAnalyst.part("EditorGroup").top() - oAnalyst.part("TableGroup").bottom() - 1, 5);
        QVERIFY(oAnalyst.part("TableGroup").height() > oAnalyst.part("EditorGroup").height());
    }

    void aGreaterWindowIsForTheDocuments()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, Nodes);
        const QRect oTable = oAnalyst.part("table");
        const QRect oText = oAnalyst.part("texteditor");
        const int iDates = oAnalyst.part("DateEditGroup").height();
        // when
        resize({1100, 900});
        // then
        QTUTILS_WAIT_FOR(oAnalyst.part("ListView").size() == QSize(340, 900 - 19));
        QCOMPARE(oAnalyst.part("table").width(), oTable.width() + 1100 - 732);
        QVERIFY(oAnalyst.part("table").height() > oTable.height());
        QVERIFY(oAnalyst.part("texteditor").height() > oText.height());
        QCOMPARE(oAnalyst.part("DateEditGroup").height(), iDates);
    }

    void theTreeMayBeMadeWider()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, Nodes);
        resize({1100, 900});
        // when
        const QPoint oHandle = handleBeside(oAnalyst);
        oScreen.drag(oHandle, oHandle + QPoint(100, 0));
        // then
        QTUTILS_WAIT_FOR(oAnalyst.part("ListView").width() == 440);
        QCOMPARE(oAnalyst.part("RightSide").width(), 1100 - 440 - 5);
        // when
        treehost::pass(oHost, Nodes);
        oScreen.close("Ombrel");
        QTUTILS_WAIT_FOR(!oScreen.isShown("Ombrel"));
        oAnalyst.showWindow();
        // then
        QCOMPARE(oAnalyst.part("ListView").width(), 440);
    }

    void panesChangeWhenTheHandleIsLetGo()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, Nodes);
        resize({1100, 900});
        const QPoint oHandle = handleBeside(oAnalyst);
        // when
        oScreen.hold(oHandle);
        oScreen.hover(oHandle + QPoint(50, 0));
        oScreen.hover(oHandle + QPoint(100, 0));
        // then
        QCOMPARE(oAnalyst.part("ListView").width(), 340);
        // when
        oScreen.letGo(oHandle + QPoint(100, 0));
        // then
        QTUTILS_WAIT_FOR(oAnalyst.part("ListView").width() == 440);
    }

    void theTreeIsNeverNarrow()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, Nodes);
        const int iLeft = oScreen.place("Ombrel").left();
        // when
        const QPoint oHandle = handleBeside(oAnalyst);
        oScreen.drag(oHandle, {iLeft + 250, oHandle.y()});
        // then
        QCOMPARE(oAnalyst.part("ListView").width(), 340);
        // when
        oScreen.drag(oHandle, {iLeft + 10, oHandle.y()});
        // then
        QTUTILS_WAIT_FOR(oAnalyst.part("RightSide").width() == 732 - 5);
        // when
        oScreen.drag({iLeft + 2, oHandle.y()}, {iLeft + 250, oHandle.y()});
        // then
        QTUTILS_WAIT_FOR(oAnalyst.part("RightSide").width() == 732 - 5 - 340);
        QCOMPARE(oAnalyst.part("ListView").width(), 340);
    }

    void aTreeWithoutNodesCannotBeMadeWider()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oHost.load();
        oHost.construct();
        oAnalyst.showWindow();
        // when
        const QPoint oHandle(oAnalyst.part("RightSide").left() - 3, oAnalyst.part("RightSide").center().y());
        oScreen.drag(oHandle, oHandle + QPoint(200, 0));
        // then
        QTUTILS_WAIT_FOR(oAnalyst.part("RightSide").width() == 732 - 5);
    }

    void tableAndTextShareTheHeightAsTheUserLikes()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, Nodes);
        const QRect oTable = oAnalyst.part("TableGroup");
        const QRect oText = oAnalyst.part("EditorGroup");
        // when
        const QPoint oHandle(oTable.center().x(), oTable.bottom() + 3);
        oScreen.drag(oHandle, oHandle - QPoint(0, 100));
        // then
        QTUTILS_WAIT_FOR(oAnalyst.part("TableGroup").height() == oTable.height() - 100);
        QCOMPARE(oAnalyst.part("EditorGroup").height(), oText.height() + 100);
        QCOMPARE(oAnalyst.part("EditorGroup").bottom(), oText.bottom());
    }

    void withoutTheRightSideTheTreeTakesTheWindow()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, Nodes);
        oHost.call("hideTable");
        QTUTILS_WAIT_FOR(oAnalyst.part("ListView").width() == 732);
        for (const char* pcPart : {"table", "texteditor", "checkdate", "dateedit"})
            QVERIFY(oAnalyst.part(pcPart).isEmpty());
        QVERIFY(!oAnalyst.item(3).isEmpty());
    }

    void tabGoesFromPartToPart_data()
    {
        QTest::addColumn<QByteArray>("oFirst");
        QTest::addColumn<QByteArray>("oNext");
        QTest::newRow("tree") << QByteArray("ListView") << QByteArray("table");
        QTest::newRow("text") << QByteArray("texteditor") << QByteArray("checkdate");
        QTest::newRow("check box") << QByteArray("checkdate") << QByteArray("dateedit");
    }

    void tabGoesFromPartToPart()
    {
        // given
        QFETCH(QByteArray, oFirst);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, Nodes);
        oAnalyst.click(oAnalyst.part(oFirst));
        QCOMPARE(oAnalyst.focus(), oFirst);
        // when
        oAnalyst.press({"Tab"});
        // then
        QTEST(oAnalyst.focus(), "oNext");
    }

    void tabStaysInTheTable()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, Nodes);
        oHost.call("select", {"i:1"});
        oAnalyst.clickCell(0, "date");
        oAnalyst.press({"Tab", "Tab", "Tab"});
        QCOMPARE(oAnalyst.focus(), "table");
        QCOMPARE(oAnalyst.currentCell(), "0 1");
        oAnalyst.press({"shift+Tab", "shift+Tab"});
        QCOMPARE(oAnalyst.focus(), "table");
        QCOMPARE(oAnalyst.currentCell(), "0 0");
    }

    void behindTheDatesLastFieldComesTheTree()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, Nodes);
        oAnalyst.click(oAnalyst.part("checkdate"));
        oAnalyst.press({"Tab", "Tab", "Tab", "Tab", "Tab", "Tab"});
        QCOMPARE(oAnalyst.focus(), "dateedit");
        oAnalyst.press({"Tab"});
        QCOMPARE(oAnalyst.focus(), "ListView");
        oAnalyst.press({"shift+Tab"});
        QCOMPARE(oAnalyst.focus(), "dateedit");
    }

private:
    void resize(const QSize& oSize) const
    {
        oScreen.resize("Ombrel", oSize);
        QTUTILS_WAIT_FOR(oScreen.place("Ombrel").size() == oSize);
    }

    // What divides tree and right side.
    static QPoint handleBeside(CAnalyst& oAnalyst)
    {
        const QRect oTree = oAnalyst.part("ListView");
        return {oTree.right() + 3, oTree.center().y()};
    }

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModulePanes)
#include "tst_module_panes.moc"
