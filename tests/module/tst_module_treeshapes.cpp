// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"
#include "treehost.h"

/// Hierarchies of all shapes as trees.
class TestModuleTreeShapes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { oServer.load(QStringLiteral("news.sql")); }

    void aHierarchyIsATree_data()
    {
        QTest::addColumn<QByteArrayList>("lChildren");
        QTest::addColumn<QByteArray>("oNodes");
        const auto row = [](const char* pcName, const QByteArrayList& lChildren, const char* pcNodes) {
            QTest::newRow(pcName) << lChildren << QByteArray(pcNodes);
        };
        row("one node", {""}, "0");
        row("the root has no children", {"", "2", "", ""}, "0");
        row("no branch leads to a node", {"1", "", "3", ""}, "0(1)");
        row("any order of the children", {"7,2,10", "", "11,1"}, "0(2(1 11) 7 10)");
        row("children beyond the nodes", {"1,2,99", ""}, "0(1 2 99)");
        row("a negative child", {"-1,1", ""}, "0(-1 1)");
        row("the same child twice", {"1,1", "2", ""}, "0(1(2) 1(2))");
        row("a node in two branches", {"1,2", "3", "3", ""}, "0(1(3) 2(3))");
        row("the root below itself", {"0,1", ""}, "0(1)");
        row("a node below itself", {"1", "1,2", ""}, "0(1(2))");
        row("a cycle", {"1", "2", "3,1", "0"}, "0(1(2(3)))");
        row("the greatest number", {"2147483647", ""}, "0(2147483647)");
    }

    void aHierarchyIsATree()
    {
        QFETCH(QByteArrayList, lChildren);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        start(oHost);
        oHost.passHierarchy(lChildren);
        QTEST(treehost::nodes(oAnalyst), "oNodes");
    }

    void aNodeInTwoBranchesIsMarkedOnce()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        start(oHost);
        oHost.passHierarchy({"1,2", "3", "3", ""});
        oHost.call("select", {"i:3"});
        QCOMPARE(oAnalyst.tree(),
            QByteArrayList({"v 0 | ", "  v 1 | ", "    - 3 |  <", "  > 2 | ", "    - 3 | "}));
    }

    void tenThousandNodesAreShown()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        start(oHost);
        // A hundred branches of a hundred nodes each.
        for (int i = 0; i < 100; i++)
            oHost.passNode(numbers(i == 0 ? 1 : 100 * i, i == 0 ? 99 : 100 * i + 99), i, 10000);
        // when
        oHost.passNode("", 9999, 10000);
        oAnalyst.showWindow();
        oAnalyst.chooseAt(oAnalyst.item(0), "expand all");
        oAnalyst.press({"End"});
        // then
        QVERIFY(!oAnalyst.item(9999).isEmpty());
        // when
        oHost.call("select", {"i:5050"});
        // then
        QVERIFY(!oAnalyst.item(5050).isEmpty());
        QVERIFY(oAnalyst.item(9999).isEmpty());
    }

    void aThousandLevelsAreShown()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        QByteArrayList lChildren;
        for (int i = 1; i <= 1000; i++)
            lChildren << QByteArray::number(i);
        treehost::show(oAnalyst, lChildren);
        // when
        oHost.call("select", {"i:1000"});
        // then
        QVERIFY(oAnalyst.item(0).isEmpty());
        // when
        oScreen.click(oAnalyst.part("ListView").center());
        oServer.startLog();
        oAnalyst.press({"End", "Home"});
        // then
        QCOMPARE(oServer.log(), QStringList({treehost::documentsOf(1000), treehost::documentsOf(0)}));
        // when
        oAnalyst.chooseAt(oAnalyst.item(0), "collapse all");
        QVERIFY(oAnalyst.item(1).isEmpty());
        oAnalyst.chooseAt(oAnalyst.item(0), "expand all");
        oServer.startLog();
        oAnalyst.press({"End"});
        // then
        QCOMPARE(oServer.log(), QStringList({treehost::documentsOf(1000)}));
    }

    // Deeper than the usual stack has room for.
    void aVeryDeepHierarchyIsBuiltAndReplaced()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        start(oHost);
        constexpr int NumNodes = 60000;
        for (int i = 1; i <= NumNodes; i++) {
            oHost.give({"call", "passNodeHierarchy", "n:" + QByteArray::number(i), "i:1",
                "i:" + QByteArray::number(i - 1), "i:" + QByteArray::number(NumNodes)});
            for (int iAnswers = i % 500 == 0 ? 500 : 0; iAnswers > 0; iAnswers--)
                oHost.answer();
        }
        oAnalyst.showWindow();
        QVERIFY(!oAnalyst.item(0).isEmpty());
        // when
        oHost.passNode("", 0, NumNodes);
        oHost.passNode("", NumNodes - 1, NumNodes);
        // then
        QCOMPARE(treehost::nodes(oAnalyst), "0");
    }

private:
    // Without a table the tree has numbers only.
    static void start(CPlainHost& oHost)
    {
        oHost.load();
        oHost.construct();
    }

    static QByteArray numbers(int iFirst, int iLast)
    {
        QByteArrayList lNumbers;
        for (int i = iFirst; i <= iLast; i++)
            lNumbers << QByteArray::number(i);
        return lNumbers.join(',');
    }

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleTreeShapes)
#include "tst_module_treeshapes.moc"
