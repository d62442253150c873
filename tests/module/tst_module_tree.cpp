// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"
#include "treehost.h"

namespace {

const QByteArrayList Nodes{"1,2,3", "", "", ""};

} // namespace

/// The tree's columns and order, and the choice of a node by user and host.
class TestModuleTree : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { oServer.load(QStringLiteral("news.sql")); }

    void thereIsAColumnForTheNodesAndOneForTheirKeywords()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, Nodes);
        QCOMPARE(oAnalyst.treeColumns(), "Nodes | Keywords");
        QCOMPARE(oAnalyst.header("Nodes").left(), oAnalyst.part("ListView").left() + 1);
        QCOMPARE(oAnalyst.header("Keywords").left(), oAnalyst.header("Nodes").right() + 1);
        QCOMPARE(oAnalyst.tree(),
            QByteArrayList({"v 0 | alles, viel, mehr", "  - 1 | red, green, blue", "  - 2 | warm",
                "  - 3 | leer, nichts, keiner"}));
    }

    void aFilledTreeIs340Wide()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oHost.load();
        oHost.call("setSOMTable", {"t:news_train"});
        oHost.construct();
        oAnalyst.showWindow();
        QVERIFY(oAnalyst.part("ListView").width() <= 1);
        QCOMPARE(oAnalyst.part("RightSide").width(), 732 - 5);
        // when
        treehost::pass(oHost, Nodes);
        // then
        QTUTILS_WAIT_FOR(oAnalyst.part("ListView").width() == 340);
        QTUTILS_WAIT_FOR(oAnalyst.part("RightSide").width() == 732 - 5 - 340);
    }

    void aColumnIsWideEnoughForTheTextsOfClosedBranches()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, {"1", "", "", ""});
        const int iNarrow = oAnalyst.header("Keywords").width();
        const int iNodes = oAnalyst.header("Nodes").width();
        // when
        treehost::pass(oHost, {"1", "2", "3", ""});
        // then
        QCOMPARE(oAnalyst.openNodes(), "0");
        QVERIFY(oAnalyst.header("Keywords").width() > iNarrow);
        QVERIFY(oAnalyst.header("Nodes").width() > iNodes);
    }

    void siblingsStandInTheOrderOfTheirNumbers()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, {"7,2,10", "", "11,1"});
        QCOMPARE(treehost::nodes(oAnalyst), "0(2(1 11) 7 10)");
        QVERIFY(oAnalyst.item(2).top() < oAnalyst.item(7).top());
        QVERIFY(oAnalyst.item(7).top() < oAnalyst.item(10).top());
    }

    void aHeaderSortsByItsColumn()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, Nodes);
        oServer.startLog();
        // when, then
        oAnalyst.click(oAnalyst.header("Keywords"));
        QCOMPARE(treehost::nodes(oAnalyst), "0(3 1 2)");
        oAnalyst.click(oAnalyst.header("Nodes"));
        QCOMPARE(treehost::nodes(oAnalyst), "0(1 2 3)");
        oAnalyst.click(oAnalyst.header("Keywords"));
        oAnalyst.click(oAnalyst.item(1));
        oAnalyst.click(oAnalyst.header("Keywords"));
        QCOMPARE(treehost::nodes(oAnalyst), "0(2 1 3)");
        QCOMPARE(oAnalyst.currentNode(), "1");
        QCOMPARE(oServer.log(), QStringList({treehost::documentsOf(1)}));
    }

    void anotherHierarchyKeepsTheOrderByKeywords()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, Nodes);
        oAnalyst.click(oAnalyst.header("Keywords"));
        treehost::pass(oHost, {"2,3", "", "", ""});
        QCOMPARE(treehost::nodes(oAnalyst), "0(3 2)");
    }

    void aClickRunsOneQuery()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, Nodes);
        oServer.startLog();
        // when
        for (const int iNode : {0, 1, 1, 3})
            oAnalyst.click(oAnalyst.item(iNode));
        // then
        QCOMPARE(oServer.log(),
            QStringList({treehost::documentsOf(0), treehost::documentsOf(1), treehost::documentsOf(3)}));
        QCOMPARE(oAnalyst.currentNode(), "3");
        QCOMPARE(oHost.numRows(), 0);
    }

    void theKeywordsChooseTheirNodeToo()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, Nodes);
        oAnalyst.click({oAnalyst.header("Keywords").left(), oAnalyst.item(2).top(), 20, 13});
        QCOMPARE(oAnalyst.currentNode(), "2");
        QCOMPARE(oHost.numRows(), 2);
    }

    void aClickBesideTheNodesChoosesNothing()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, Nodes);
        oAnalyst.click(oAnalyst.item(1));
        oServer.startLog();
        oScreen.click(oAnalyst.part("ListView").center());
        QCOMPARE(oAnalyst.currentNode(), "1");
        QCOMPARE(oHost.numRows(), 5);
        QCOMPARE(oServer.log(), QStringList());
    }

    void neitherShowingNorFocusChoosesANode()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, Nodes);
        oServer.startLog();
        // when
        oAnalyst.press({"Tab", "shift+Tab"});
        oAnalyst.click(oAnalyst.part("texteditor"));
        oScreen.click(oAnalyst.part("ListView").center());
        QCOMPARE(oAnalyst.focus(), "ListView");
        oScreen.close("Ombrel");
        QTUTILS_WAIT_FOR(!oScreen.isShown("Ombrel"));
        oAnalyst.showWindow();
        // then
        QCOMPARE(oAnalyst.currentNode(), "none");
        QCOMPARE(oServer.log(), QStringList());
    }

    void aHostsChoiceIsMarkedAndSeen_data()
    {
        QTest::addColumn<int>("iNode");
        QTest::addColumn<QByteArray>("oOpen");
        QTest::newRow("first") << 1 << QByteArray("0");
        QTest::newRow("last") << 200 << QByteArray("0");
        QTest::newRow("in a closed branch") << 201 << QByteArray("0 200");
    }

    void aHostsChoiceIsMarkedAndSeen()
    {
        // given
        QFETCH(int, iNode);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, manyNodes());
        oHost.call("select", {"i:100"});
        QVERIFY(oAnalyst.item(iNode).isEmpty());
        oServer.startLog();
        // when
        oHost.call("select", {"i:" + QByteArray::number(iNode)});
        // then
        QCOMPARE(oAnalyst.currentNode(), QByteArray::number(iNode));
        QVERIFY(oAnalyst.item(iNode).height() > 10);
        QTEST(oAnalyst.openNodes(), "oOpen");
        QCOMPARE(oServer.log(), QStringList({treehost::documentsOf(iNode)}));
    }

    void aHostsChoiceOpensTheBranchesAroundIt()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, treehost::deepTree());
        oAnalyst.chooseAt(oAnalyst.item(0), "collapse all");
        oServer.startLog();
        // when
        oHost.call("select", {"i:5"});
        // then
        QCOMPARE(oAnalyst.openNodes(), "0 1 3");
        QVERIFY(!oAnalyst.item(5).isEmpty());
        // when
        oAnalyst.click(oAnalyst.branchMark(0));
        QVERIFY(oAnalyst.item(5).isEmpty());
        oHost.call("select", {"i:5"});
        // then
        QCOMPARE(oAnalyst.currentNode(), "5");
        QVERIFY(!oAnalyst.item(5).isEmpty());
        QCOMPARE(oServer.log(), QStringList({treehost::documentsOf(5), treehost::documentsOf(5)}));
    }

    void aNodeThatTheTreeLacksLeavesNothingCurrent_data()
    {
        QTest::addColumn<QByteArray>("oNode");
        QTest::addColumn<int>("iRows");
        QTest::newRow("with documents") << QByteArray("1") << 5;
        QTest::newRow("without documents") << QByteArray("99") << 0;
        QTest::newRow("negative") << QByteArray("-1") << 2;
    }

    void aNodeThatTheTreeLacksLeavesNothingCurrent()
    {
        // given
        QFETCH(QByteArray, oNode);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, {"2,10,11,12"});
        oHost.call("select", {"i:2"});
        QCOMPARE(oAnalyst.currentNode(), "2");
        // when
        oHost.call("select", {"i:" + oNode});
        // then
        QCOMPARE(oAnalyst.currentNode(), "none");
        QTEST(oHost.numRows(), "iRows");
        // when
        oAnalyst.click(oAnalyst.item(2));
        // then
        QCOMPARE(oAnalyst.currentNode(), "2");
        QCOMPARE(oHost.numRows(), 2);
    }

    void anUnfilledTreeIsLeftOutOfAHostsChoice()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oHost.load();
        oHost.call("setSOMTable", {"t:news_train"});
        oHost.construct();
        // when
        oHost.call("select", {"i:2"});
        // then
        QCOMPARE(oHost.numRows(), 2);
        QCOMPARE(oAnalyst.tree(), QByteArrayList({""}));
        // when
        treehost::pass(oHost, Nodes);
        // then
        QCOMPARE(oAnalyst.currentNode(), "none");
        QCOMPARE(oHost.numRows(), 2);
    }

private:
    // 200 nodes below the root, and one below the last of them.
    static QByteArrayList manyNodes()
    {
        QByteArrayList lChildren(202);
        for (int i = 1; i <= 200; i++)
            lChildren[0] += (i == 1 ? QByteArray() : QByteArray(",")) + QByteArray::number(i);
        lChildren[200] = "201";
        return lChildren;
    }

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleTree)
#include "tst_module_tree.moc"
