// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"
#include "treehost.h"

namespace {

const QByteArray Resized =
    "mirta_passNodeHierarchy: WARNING: Number of nodes has                    changed "
    "during runtime or you a not using this function                    in its planned "
    "way! The array containing all children                    for each node has been "
    "resized, but the data may be corrupted!";

} // namespace

/// The hierarchy that hosts pass node by node, and the tree that is made of it.
class TestModuleHierarchy : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { oServer.load(QStringLiteral("news.sql")); }

    void theLastNodeBuildsTheTree()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::startWithoutTable(oHost);
        const QByteArrayList lChildren{"1,3", "2", "", "4", ""};
        for (int i = 0; i < 4; i++) {
            oHost.passNode(lChildren[i], i, 5);
            QCOMPARE(treehost::nodes(oAnalyst), "");
        }
        oHost.passNode(lChildren[4], 4, 5);
        QCOMPARE(treehost::nodes(oAnalyst), "0(1(2) 3(4))");
    }

    void onlyTheGivenNumberOfChildrenIsTaken_data()
    {
        QTest::addColumn<QByteArray>("oNumber");
        QTest::addColumn<QByteArray>("oNodes");
        QTest::newRow("some") << QByteArray("2") << QByteArray("0(4 5)");
        QTest::newRow("none") << QByteArray("0") << QByteArray("0");
        QTest::newRow("fewer than none") << QByteArray("-3") << QByteArray("0");
    }

    void onlyTheGivenNumberOfChildrenIsTaken()
    {
        QFETCH(QByteArray, oNumber);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::startWithoutTable(oHost);
        oHost.call("passNodeHierarchy", {"n:4,5,6", "i:" + oNumber, "i:0", "i:1"});
        QTEST(treehost::nodes(oAnalyst), "oNodes");
    }

    void aSecondHierarchyReplacesTheTree()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::startWithoutTable(oHost);
        oHost.passHierarchy({"1,2", "3", "", ""});
        oHost.call("select", {"i:3"});
        QCOMPARE(oAnalyst.currentNode(), "3");
        // when
        oHost.passHierarchy({"3", "", "", "1"});
        // then
        QCOMPARE(treehost::nodes(oAnalyst), "0(3(1))");
        QCOMPARE(oAnalyst.openNodes(), "0");
        QCOMPARE(oAnalyst.currentNode(), "none");
    }

    void theSameHierarchyTwiceIsTheSameTree()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::startWithoutTable(oHost);
        oHost.passHierarchy({"1,2", "3", "", ""});
        const QByteArrayList lTree = oAnalyst.tree();
        oHost.passHierarchy({"1,2", "3", "", ""});
        QCOMPARE(oAnalyst.tree(), lTree);
    }

    void nodesThatArentPassedAgainKeepTheirChildren()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::startWithoutTable(oHost);
        oHost.passHierarchy({"1,2", "3", "", ""});
        // when
        oHost.passNode("1", 2, 4);
        // then
        QCOMPARE(treehost::nodes(oAnalyst), "0(1(3) 2)");
        // when
        oHost.passNode("", 3, 4);
        // then
        QCOMPARE(treehost::nodes(oAnalyst), "0(1(3) 2(1(3)))");
    }

    void theLastNodeAloneBuildsWhatIsThere()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::startWithoutTable(oHost);
        oHost.passNode("", 2, 3);
        QCOMPARE(treehost::nodes(oAnalyst), "0");
        oHost.passNode("1,2", 0, 3);
        QCOMPARE(treehost::nodes(oAnalyst), "0");
    }

    void aSmallerNumberDropsTheLastNodes()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::startWithoutTable(oHost);
        oHost.passHierarchy({"1,3", "2", "", "4", ""});
        oHost.announceErrors({Resized});
        oHost.passNode("", 2, 3);
        QCOMPARE(treehost::nodes(oAnalyst), "0(1(2) 3)");
        // The dropped ones come back without their children.
        oHost.announceErrors({Resized});
        oHost.passNode("", 4, 5);
        QCOMPARE(treehost::nodes(oAnalyst), "0(1(2) 3)");
    }

    void aGreaterNumberKeepsTheFirstNodes()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::startWithoutTable(oHost);
        oHost.passHierarchy({"1", ""});
        oHost.announceErrors({Resized});
        oHost.passNode("2,3", 1, 4);
        QCOMPARE(treehost::nodes(oAnalyst), "0(1)");
        oHost.passNode("", 3, 4);
        QCOMPARE(treehost::nodes(oAnalyst), "0(1(2 3))");
    }

    void noChildrenArrayChangesNothing()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::startWithoutTable(oHost);
        oHost.passHierarchy({"1", ""});
        oHost.passNode("1,2", 0, 2);
        oHost.announceOutput({"mirta_passNodeHierarchy: passed Array is NULL!"});
        oHost.call("passNodeHierarchy", {"null", "i:0", "i:1", "i:2"});
        QCOMPARE(treehost::nodes(oAnalyst), "0(1)");
        oHost.announceOutput({"mirta_passNodeHierarchy: passed Array is NULL!"});
        oHost.call("passNodeHierarchy", {"null", "i:0", "i:1", "i:7"});
        oHost.passNode("", 1, 2);
        QCOMPARE(treehost::nodes(oAnalyst), "0(1 2)");
    }

    void aNodeOutsideIsDropped_data()
    {
        QTest::addColumn<int>("iNode");
        QTest::addColumn<int>("iNumNodes");
        QTest::newRow("just beyond") << 2 << 2;
        QTest::newRow("far beyond") << 2147483647 << 2;
        QTest::newRow("negative") << -1 << 2;
    }

    void aNodeOutsideIsDropped()
    {
        QFETCH(int, iNode);
        QFETCH(int, iNumNodes);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::startWithoutTable(oHost);
        oHost.passHierarchy({"1", ""});
        oHost.passNode("5", iNode, iNumNodes);
        QCOMPARE(treehost::nodes(oAnalyst), "0(1)");
        oHost.passNode("", 1, 2);
        QCOMPARE(treehost::nodes(oAnalyst), "0(1)");
    }

    void noNodesBuildNothing_data()
    {
        QTest::addColumn<int>("iNode");
        QTest::addColumn<int>("iNumNodes");
        QTest::newRow("none") << 0 << 0;
        QTest::newRow("none, the one before") << -1 << 0;
        QTest::newRow("fewer than none") << -6 << -5;
    }

    void noNodesBuildNothing()
    {
        QFETCH(int, iNode);
        QFETCH(int, iNumNodes);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::startWithoutTable(oHost);
        oHost.passNode("1", iNode, iNumNodes);
        QCOMPARE(treehost::nodes(oAnalyst), "");
        oHost.passHierarchy({"1", ""});
        QCOMPARE(treehost::nodes(oAnalyst), "0(1)");
    }

    void aHierarchyThatIsTooLargeIsRefused_data()
    {
        QTest::addColumn<QByteArrayList>("lNumbers");
        QTest::addColumn<QByteArray>("oSaid");
        QTest::newRow("nodes") << QByteArrayList{"i:1", "i:0", "i:10000001"}
                               << QByteArray("10000001 nodes, with 1 children of node 0");
        QTest::newRow("children") << QByteArrayList{"i:10000001", "i:1", "i:2"}
                                  << QByteArray("2 nodes, with 10000001 children of node 1");
    }

    void aHierarchyThatIsTooLargeIsRefused()
    {
        // given
        QFETCH(QByteArrayList, lNumbers);
        QFETCH(QByteArray, oSaid);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::startWithoutTable(oHost);
        oHost.passHierarchy({"1", ""});
        // when
        oHost.announceErrors({"qtutils: a hierarchy of " + oSaid + ", is too large"});
        oHost.call("passNodeHierarchy", QByteArrayList{"n:7"} + lNumbers);
        // then
        oHost.passNode("", 1, 2);
        QCOMPARE(treehost::nodes(oAnalyst), "0(1)");
    }

    void aHierarchyBeforeTheWindowWaitsForTheLastNode()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oHost.load();
        oHost.passHierarchy({"1,2", "", ""});
        // when
        oHost.construct();
        // then
        QCOMPARE(treehost::nodes(oAnalyst), "");
        // when
        oHost.passNode("", 2, 3);
        // then
        QCOMPARE(treehost::nodes(oAnalyst), "0(1 2)");
    }

    void theNextWindowHasTheHierarchyToo()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::startWithoutTable(oHost);
        oHost.passHierarchy({"1,2", "", ""});
        oHost.announceErrors({"Terminating QApplication"});
        oHost.free();
        // when
        QVERIFY(oHost.construct().endsWith("window")); // perhaps where the other was
        // then
        QCOMPARE(treehost::nodes(oAnalyst), "");
        // when
        oHost.passNode("1", 2, 3);
        // then
        QCOMPARE(treehost::nodes(oAnalyst), "0(1 2(1))");
    }

private:
    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleHierarchy)
#include "tst_module_hierarchy.moc"
