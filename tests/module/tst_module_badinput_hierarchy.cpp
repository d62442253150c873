// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"
#include "treehost.h"

#include <array>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr int Least = std::numeric_limits<int>::min();
constexpr int Greatest = std::numeric_limits<int>::max();
constexpr int TooMany = 10000001;

const QByteArray Resized =
    "mirta_passNodeHierarchy: WARNING: Number of nodes has                    changed "
    "during runtime or you a not using this function                    in its planned "
    "way! The array containing all children                    for each node has been "
    "resized, but the data may be corrupted!";

} // namespace

/// Hierarchies that are huge, contradict themselves, or come while another one is being built.
class TestModuleBadInputHierarchy : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { oServer.load(u"news.sql"_s); }

    // Every call is refused, dropped or carried out by itself, and says so in lines of its own.
    void anyMixtureOfNumbersIsBorne()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::startWithoutTable(oHost);
        const std::array aiChildren{Least, -1, 0, 1, TooMany, Greatest};
        const std::array aiNodes{Least, -1, 0, 1, 2, Greatest};
        const std::array aiNumbers{Least, -1, 0, 1, 2, TooMany, Greatest};
        QByteArrayList lLines;
        int iKept = 0; ///< number of nodes that the module keeps
        // when
        for (const int iChildren : aiChildren)
            for (const int iNode : aiNodes)
                for (const int iNodes : aiNumbers) {
                    oHost.call("passNodeHierarchy",
                        {"n:1", "i:" + number(iChildren), "i:" + number(iNode), "i:" + number(iNodes)});
                    lLines += lineFor(iChildren, iNode, iNodes, iKept);
                }
        // then
        QCOMPARE(oHost.numRows(), 0);
        QTUTILS_WAIT_FOR(oHost.errors().size() >= lLines.size());
        QCOMPARE(oHost.errors(), lLines);
        // when
        oHost.announceErrors(QByteArrayList(iKept == 0 || iKept == 3 ? 0 : 1, Resized));
        oHost.passHierarchy({"2", "", ""});
        // then
        QCOMPARE(treehost::nodes(oAnalyst), "0(2)");
    }

    void tenMillionNodesWithoutBranchesAreARoot()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::startWithoutTable(oHost);
        oHost.passNode("1", 9999999, 10000000);
        QCOMPARE(treehost::nodes(oAnalyst), "0");
        oHost.announceErrors({Resized});
        oHost.passHierarchy({"1", ""});
        QCOMPARE(treehost::nodes(oAnalyst), "0(1)");
    }

    // A million of them in a thorough run.
    void manyNodesSideBySideAreShownAndChosen()
    {
        // given
        const int iNodes = isThorough() ? 1000000 : 200000;
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::startWithoutTable(oHost);
        passFlat(oHost, iNodes);
        oAnalyst.showWindow();
        // when
        oScreen.click(oAnalyst.part("ListView").center());
        oAnalyst.press({"End"});
        // then
        QVERIFY(!oAnalyst.item(iNodes - 1).isEmpty());
        QVERIFY(oAnalyst.item(0).isEmpty());
        // when
        oHost.call("select", {"i:1"});
        // then
        QVERIFY(!oAnalyst.item(1).isEmpty());
        // when
        oHost.call("select", {"i:" + number(iNodes - 1)});
        // then
        QVERIFY(!oAnalyst.item(iNodes - 1).isEmpty());
        QVERIFY(oAnalyst.item(1).isEmpty());
    }

    // A hundred thousand levels in a thorough run.
    void theDeepestNodeIsChosen()
    {
        // given
        const int iNodes = isThorough() ? 100000 : 10000;
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::startWithoutTable(oHost);
        passChain(oHost, iNodes);
        oAnalyst.showWindow();
        QVERIFY(!oAnalyst.item(0).isEmpty());
        // when
        oHost.call("select", {"i:" + number(iNodes - 1)});
        // then
        QVERIFY(oAnalyst.item(1).isEmpty());
        // when
        oHost.call("select", {"i:1"});
        // then
        QVERIFY(!oAnalyst.item(1).isEmpty());
    }

    void theGreatestAndTheLeastNodeCanBeClicked()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, {"2147483647,1,-2147483648", ""});
        oAnalyst.click(oAnalyst.item(1));
        QCOMPARE(oHost.numRows(), 5);
        oServer.startLog();
        // when
        oAnalyst.click(oAnalyst.item(Greatest));
        // then
        QCOMPARE(oHost.numRows(), 0);
        // when
        oAnalyst.click(oAnalyst.item(1));
        oAnalyst.click(oAnalyst.item(Least));
        // then
        QCOMPARE(oAnalyst.currentNode(), "-2147483648");
        QCOMPARE(oHost.numRows(), 5);
        QCOMPARE(oServer.log(), QStringList({treehost::documentsOf(Greatest), treehost::documentsOf(1)}));
    }

    void theGreatestAndTheLeastNodeCanBeSelected()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, {"2147483647,1,-2147483648", ""});
        oHost.call("select", {"i:1"});
        QCOMPARE(oHost.numRows(), 5);
        oServer.startLog();
        // when
        oHost.call("select", {"i:-2147483648"});
        // then
        QCOMPARE(oHost.numRows(), 5);
        QCOMPARE(oAnalyst.currentNode(), "-2147483648");
        // when
        oHost.call("select", {"i:2147483647"});
        // then
        QCOMPARE(oHost.numRows(), 0);
        QCOMPARE(oAnalyst.currentNode(), "2147483647");
        QCOMPARE(oServer.log(), QStringList{treehost::documentsOf(Greatest)});
    }

    void theLastOfSeveralHierarchiesIsShown()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::startWithoutTable(oHost);
        // when
        for (int i = 0; i < 3; i++)
            passFlat(oHost, 100000);
        oHost.passNode("2,1", 0, 100000);
        oHost.passNode("3", 2, 100000);
        oHost.passNode("", 99999, 100000);
        // then
        QCOMPARE(treehost::nodes(oAnalyst), "0(1 2(3))");
    }

private:
    static QByteArray number(int i) { return QByteArray::number(i); }

    // The line that a call prints, if any, and the number of nodes behind it.
    static QByteArrayList lineFor(int iChildren, int iNode, int iNodes, int& iKept)
    {
        if (iChildren >= TooMany || iNodes >= TooMany)
            return {"qtutils: a hierarchy of " + number(iNodes) + " nodes, with " + number(iChildren)
                + " children of node " + number(iNode) + ", is too large"};
        const int iBefore = iKept;
        iKept = std::max(iNodes, 0);
        return QByteArrayList(iBefore == 0 || iBefore == iKept ? 0 : 1, Resized);
    }

    // The root with all others as its children.
    static void passFlat(CPlainHost& oHost, int iNodes)
    {
        oHost.call("passNodeHierarchy",
            {"s:1-" + number(iNodes - 1), "i:" + number(iNodes - 1), "i:0", "i:" + number(iNodes)});
        oHost.passNode("", iNodes - 1, iNodes);
    }

    // Each node with the next one as its child.
    static void passChain(CPlainHost& oHost, int iNodes)
    {
        for (int i = 0; i < iNodes; i++)
            oHost.give({"call", "passNodeHierarchy", "i:" + number(i + 1), i + 1 < iNodes ? "i:1" : "i:0",
                "i:" + number(i), "i:" + number(iNodes)});
        for (int i = 0; i < iNodes; i++)
            QCOMPARE(oHost.answer(), "");
    }

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleBadInputHierarchy)
#include "tst_module_badinput_hierarchy.moc"
