// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "tree/CNodeItems.h"

#include <QTest>

#include <algorithm>
#include <numeric>

namespace {

// The nodes as a line such as "0(1 2(3))", in the order shown.
QByteArray line(const CNodeItems& oItems, int iItem = 0)
{
    QByteArray oLine = QByteArray::number(oItems.node(iItem));
    for (int iRow = 0; iRow < oItems.numChildren(iItem); iRow++)
        oLine += (iRow == 0 ? "(" : " ") + line(oItems, oItems.child(iItem, iRow));
    return oItems.numChildren(iItem) > 0 ? oLine + ')' : oLine;
}

// By the nodes' last digits, descending.
bool byLastDigit(const std::vector<int>& viNodes, std::vector<int>& viPlaces)
{
    viPlaces.resize(viNodes.size());
    std::iota(viPlaces.begin(), viPlaces.end(), 0);
    std::stable_sort(viPlaces.begin(), viPlaces.end(), [&](int iOne, int iOther) {
        return viNodes[std::size_t(iOne)] % 10 > viNodes[std::size_t(iOther)] % 10;
    });
    return true;
}

bool asTheyAre(const std::vector<int>& /*viNodes*/, std::vector<int>& /*viPlaces*/)
{
    return false;
}

} // namespace

class TestNodeItems : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aHierarchyIsATree_data()
    {
        QTest::addColumn<CNodeLists>("vviNodes");
        QTest::addColumn<QByteArray>("oLine");
        const auto row = [](const char* pcName, const CNodeLists& vviNodes, const char* pcLine) {
            QTest::newRow(pcName) << vviNodes << QByteArray(pcLine);
        };
        row("no nodes", {}, "0");
        row("one node", {{}}, "0");
        row("given order", {{7, 2}, {}, {11, 1}}, "0(7 2(11 1))");
        row("nodes without a list", {{-1, 99}}, "0(-1 99)");
        row("twice beside one another", {{1, 1}, {2}, {}}, "0(1(2) 1(2))");
        row("in two branches", {{1, 2}, {3}, {3}, {}}, "0(1(3) 2(3))");
        row("the root below itself", {{0, 1}, {0}}, "0(1)");
        row("cycle", {{1}, {2}, {3, 1}, {0}}, "0(1(2(3)))");
        row("cycle in one branch only", {{1, 2}, {2}, {1}}, "0(1(2) 2(1))");
    }

    void aHierarchyIsATree()
    {
        QFETCH(CNodeLists, vviNodes);
        QTEST(line(CNodeItems(vviNodes)), "oLine");
    }

    void withoutAHierarchyThereIsNoItem()
    {
        QCOMPARE(CNodeItems().count(), 0);
        QCOMPARE(CNodeItems().find(0), int(CNodeItems::None));
    }

    void parentsAndRowsFitTheChildren()
    {
        const CNodeItems oItems(nodes());
        QCOMPARE(oItems.parent(0), int(CNodeItems::None));
        QCOMPARE(oItems.row(0), 0);
        checkFamilies(oItems);
    }

    void aNodeIsFound()
    {
        const CNodeItems oItems({{2, 77}, {}, {1, -5}});
        for (const int iNode : {0, 1, 2, 77, -5})
            QCOMPARE(oItems.node(oItems.find(iNode)), iNode);
        for (const int iNode : {3, 78, -1, -6})
            QCOMPARE(oItems.find(iNode), int(CNodeItems::None));
    }

    void aNodeThatNoBranchLeadsToIsNotFound()
    {
        QCOMPARE(CNodeItems({{1}, {}, {}}).find(2), int(CNodeItems::None));
    }

    void ofSeveralTheFirstFromTheTopIsFound()
    {
        // given: 0(1(2(3)) 3 12 12), where the 3 below stands higher up the tree
        CNodeItems oItems({{1, 3, 12, 12}, {2}, {3}, {}});
        // then
        QCOMPARE(oItems.node(oItems.parent(oItems.find(3))), 2);
        QCOMPARE(oItems.row(oItems.find(12)), 2);
        // when
        oItems.sort(byLastDigit);
        // then
        QCOMPARE(line(oItems), "0(3 12 12 1(2(3)))");
        QCOMPARE(oItems.parent(oItems.find(3)), 0);
        QCOMPARE(oItems.row(oItems.find(12)), 1);
    }

    void siblingsAreSortedWithTheirBranches()
    {
        CNodeItems oItems(nodes());
        QCOMPARE(line(oItems), "0(11(4 5) 2(3(16 7) 8))");
        oItems.sort(byLastDigit);
        QCOMPARE(line(oItems), "0(2(8 3(7 16)) 11(5 4))");
        checkFamilies(oItems);
    }

    void siblingsMayBePutInOrderFromTheStart()
    {
        const CNodeItems oItems(nodes(), CNodeItems::Siblings::Ascending);
        QCOMPARE(line(oItems), "0(2(3(7 16) 8) 11(4 5))");
        checkFamilies(oItems);
        QCOMPARE(line(CNodeItems({{9, 2, -1, 2}, {}, {3}, {}}, CNodeItems::Siblings::Ascending)),
            "0(-1 2(3) 2(3) 9)");
    }

    void sortingSaysWhereTheItemsAre()
    {
        const CNodeItems oBefore(nodes());
        CNodeItems oItems = oBefore;
        const std::vector<int> viNumbers = oItems.sort(byLastDigit);
        QCOMPARE(viNumbers.size(), std::size_t(oBefore.count()));
        for (int iItem = 0; iItem < oBefore.count(); iItem++)
            QCOMPARE(oItems.node(viNumbers[std::size_t(iItem)]), oBefore.node(iItem));
    }

    void whatStaysAsItIsKeepsItsNumbers()
    {
        CNodeItems oItems(nodes());
        const std::vector<int> viNumbers = oItems.sort(asTheyAre);
        for (int iItem = 0; iItem < oItems.count(); iItem++)
            QCOMPARE(viNumbers[std::size_t(iItem)], iItem);
        QCOMPARE(line(oItems), line(CNodeItems(nodes())));
    }

    void aChainMayBeVeryLong()
    {
        constexpr int NumNodes = 300000;
        CNodeLists vviNodes;
        vviNodes.resize(NumNodes);
        for (int iNode = 1; iNode < NumNodes; iNode++)
            vviNodes.set(std::size_t(iNode) - 1, std::span(&iNode, 1));
        CNodeItems oItems(vviNodes);
        oItems.sort(byLastDigit);
        QCOMPARE(oItems.count(), NumNodes);
        QCOMPARE(oItems.node(oItems.find(NumNodes - 1)), NumNodes - 1);
    }

private:
    static CNodeLists nodes() { return {{11, 2}, {}, {3, 8}, {16, 7}, {}, {}, {}, {}, {}, {}, {}, {4, 5}}; }

    static void checkFamilies(const CNodeItems& oItems)
    {
        for (int iItem = 0; iItem < oItems.count(); iItem++) {
            for (int iRow = 0; iRow < oItems.numChildren(iItem); iRow++) {
                QCOMPARE(oItems.parent(oItems.child(iItem, iRow)), iItem);
                QCOMPARE(oItems.row(oItems.child(iItem, iRow)), iRow);
                QVERIFY(oItems.child(iItem, iRow) > iItem);
            }
        }
    }
};

QTEST_GUILESS_MAIN(TestNodeItems)
#include "tst_nodeitems.moc"
