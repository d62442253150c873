// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CTestBrowser.h"

#include "binding/commands.h"
#include "table/CTable.h"
#include "tests/support/CPrivateServer.h"
#include "tests/support/CStrictTest.h"
#include "tests/support/testmain.h"
#include "tree/CListView.h"

#include <QDir>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

QString statement(int iNode)
{
    return u"SELECT node, dist, document.* FROM news_train, news.document "
           "WHERE news.document.id=news_train.item AND node=%1 ORDER BY date"_s.arg(iNode);
}

} // namespace

/// The host's commands and the tree's choice of a node.
class TestNodeBrowserCommands : public CStrictTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QDir::setCurrent(QDir::rootPath()); // no signs there
        oServer.load(u"news.sql"_s);
    }

    void aHostsChoiceMarksTheTreesNodeAndAsksOnce()
    {
        CTestBrowser oBrowser;
        fill(oBrowser);
        oServer.startLog();
        oBrowser.select(2);
        QCOMPARE(oServer.log(), QStringList{statement(2)});
        QCOMPARE(oBrowser.tablePicture().size(), 3);
        QCOMPARE(oBrowser.treePicture(),
            (QStringList{u"v 0 | alles, viel, mehr"_s, u"  v 1 | red, green, blue"_s, u"    - 2 | warm <"_s,
                u"  - 3 | leer, nichts, keiner"_s}));
    }

    void anUnfilledTreeLeavesTheTableAlone()
    {
        CTestBrowser oBrowser;
        oBrowser.setTables();
        oServer.startLog();
        oBrowser.select(2);
        QCOMPARE(oServer.log(), QStringList{statement(2)});
        QCOMPARE(oBrowser.tablePicture().size(), 3);
        QCOMPARE(oBrowser.treePicture(), QStringList());
    }

    void aNodeThatTheTreeLacksLeavesNothingCurrent()
    {
        CTestBrowser oBrowser;
        fill(oBrowser);
        oBrowser.select(1);
        oServer.startLog();
        oBrowser.select(7);
        QCOMPARE(oServer.log(), QStringList{statement(7)});
        QVERIFY(!oBrowser.tree().currentIndex().isValid());
        QCOMPARE(oBrowser.tablePicture().size(), 1);
    }

    void theNodesWholeNumberIsCompared()
    {
        CTestBrowser oBrowser;
        oBrowser.setTables();
        oBrowser.passHierarchy({{11, 10}});
        oBrowser.select(1);
        QVERIFY(!oBrowser.tree().currentIndex().isValid());
    }

    void aChoiceInTheTreeAsksOnce()
    {
        CTestBrowser oBrowser;
        fill(oBrowser);
        oBrowser.show();
        oServer.startLog();
        clickNode(oBrowser, u"1"_s);
        clickNode(oBrowser, u"0"_s);
        clickNode(oBrowser, u"0"_s);
        QCOMPARE(oServer.log(), (QStringList{statement(1), statement(0)}));
        QCOMPARE(oBrowser.tablePicture().size(), 2);
    }

    void afterAHostsChoiceTheTreeIsListenedToAgain()
    {
        CTestBrowser oBrowser;
        fill(oBrowser);
        oBrowser.show();
        oBrowser.select(1);
        oServer.startLog();
        clickNode(oBrowser, u"3"_s);
        QCOMPARE(oServer.log(), QStringList{statement(3)});
    }

    void theRootCanBeChosenRightAfterFilling()
    {
        CTestBrowser oBrowser;
        fill(oBrowser);
        oBrowser.show();
        oServer.startLog();
        clickNode(oBrowser, u"0"_s);
        QCOMPARE(oServer.log(), QStringList{statement(0)});
    }

    void neitherShowingNorFocusAsksForANode()
    {
        CTestBrowser oBrowser;
        fill(oBrowser);
        oServer.startLog();
        oBrowser.show();
        oBrowser.tree().setFocus(Qt::TabFocusReason);
        QTRY_VERIFY(oBrowser.tree().hasFocus());
        QCOMPARE(oServer.log(), QStringList());
    }

    void aNewHierarchyAsksForNoNode()
    {
        CTestBrowser oBrowser;
        fill(oBrowser);
        oBrowser.select(1);
        oServer.startLog();
        fill(oBrowser);
        QCOMPARE(oServer.log(),
            (QStringList{u"SELECT node, dist, document.* FROM news_train, news.document LIMIT 1"_s,
                u"SELECT _assigned_topic, _keywords FROM news_som"_s}));
        QCOMPARE(oBrowser.tablePicture().size(), 6);
    }

    void aHierarchyBeforeAnyTableHasNumbersOnly()
    {
        CTestBrowser oBrowser;
        oBrowser.passHierarchy({{1}, {}});
        QCOMPARE(oBrowser.treePicture(), (QStringList{u"v 0 | "_s, u"  - 1 | "_s}));
    }

    void aNewTableIsSaidAndProbed()
    {
        CTestBrowser oBrowser;
        oBrowser.setTables();
        oServer.sql(
            u"CREATE OR REPLACE TABLE som.second_train AS SELECT 1 AS node, 0.5 AS dist, 7 AS item"_s);
        QByteArray oName("second_train");
        QTest::ignoreMessage(QtDebugMsg, "CNodeBrowser: Changed Table to second_train");
        oBrowser.send(commands::SetSOMTable, oName.data());
        QVERIFY(oBrowser.child<CListView>("ListView")->pSOMDB == oBrowser.table().somDatabase());
        oBrowser.select(1);
        QCOMPARE(oBrowser.tablePicture(), (QStringList{u"date | title"_s, u"11.05.06 12:00 | Herbst"_s}));
    }

    void aNullTableNameIsBorne()
    {
        CTestBrowser oBrowser;
        QTest::ignoreMessage(QtDebugMsg, "CNodeBrowser: Changed Table to ");
        oBrowser.send(commands::SetSOMTable, nullptr);
        QVERIFY(oBrowser.table().somTable().isNull());
    }

    void terminatingEndsTheLoopAndLeavesTheWindow()
    {
        CTestBrowser oBrowser;
        oBrowser.show();
        QTest::ignoreMessage(QtDebugMsg, "Terminating QApplication");
        QTimer::singleShot(0, qApp, [&] { oBrowser.send(commands::Terminate); });
        QCOMPARE(QApplication::exec(), 0);
        QVERIFY(oBrowser->isVisible());
    }

    void anUnknownEventIsSaid_data()
    {
        QTest::addColumn<int>("iType");
        QTest::newRow("below") << 1000;
        QTest::newRow("above") << 1013;
        QTest::newRow("far above") << 65535;
    }

    void anUnknownEventIsSaid()
    {
        QFETCH(int, iType);
        CTestBrowser oBrowser;
        QTest::ignoreMessage(QtDebugMsg, "CNodeBrowser: Warning! Caught unknown event\n");
        oBrowser.send(iType);
    }

    void anEventThatIsNoCommandIsUnknown()
    {
        CTestBrowser oBrowser;
        QTest::ignoreMessage(QtDebugMsg, "CNodeBrowser: Warning! Caught unknown event\n");
        QEvent oEvent(QEvent::Type(commands::Select));
        QCoreApplication::sendEvent(&*oBrowser, &oEvent);
    }

    void aMarkWithoutADateIsDropped()
    {
        CTestBrowser oBrowser;
        oBrowser.setTables();
        oBrowser.select(1);
        MarkRequest oRequest{nullptr, 0};
        oBrowser.send(commands::MarkRow, &oRequest);
        int iMinutes = -1;
        oBrowser.send(commands::GetFirstDateInFrame, &iMinutes);
        QCOMPARE(iMinutes, 0);
    }

    void questionsAreAnswered()
    {
        CTestBrowser oBrowser;
        oBrowser.setTables();
        oBrowser.select(1);
        int iRows = -1;
        oBrowser.send(commands::GetNumRows, &iRows);
        QCOMPARE(iRows, 5);
        QCOMPARE(*oBrowser.oHandover.flag(), 1);
        char acDate[20] = "";
        oBrowser.send(commands::GetFirstDateInSelection, acDate);
        QCOMPARE(QByteArray(acDate), "2005-02-27T23:59:59"_ba);
        int iMinutes = -1;
        oBrowser.send(commands::GetFirstDateInFrame, &iMinutes);
        QCOMPARE(iMinutes, 0);
    }

    void rowColoursArePainted()
    {
        CTestBrowser oBrowser;
        oBrowser.setTables();
        oBrowser.select(1);
        oBrowser.show();
        std::vector<float> vfColors(15, 255);
        oBrowser.send(commands::SetRowColors, vfColors.data());
        const QImage oTable = oBrowser.table().viewport()->grab().toImage();
        QCOMPARE(oTable.pixel(3, 3), QColor::fromHsv(255, 255, 255).rgb());
    }

private:
    static void fill(CTestBrowser& oBrowser)
    {
        oBrowser.setTables();
        oBrowser.passHierarchy({{1, 3}, {2}, {}, {}});
    }

    static void clickNode(CTestBrowser& oBrowser, const QString& sNode)
    {
        QTreeView& oTree = oBrowser.tree();
        const auto lItems = oTree.model()->match(
            oTree.model()->index(0, 0), Qt::DisplayRole, sNode, 1, Qt::MatchExactly | Qt::MatchRecursive);
        QTest::mouseClick(oTree.viewport(), Qt::LeftButton, {}, oTree.visualRect(lItems.value(0)).center());
    }

    CPrivateServer oServer;
};

QTUTILS_WIDGET_TEST_MAIN(TestNodeBrowserCommands, CPrivateDisplay::Manager::Running)
#include "tst_nodebrowser_commands.moc"
