// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "binding/nodehierarchy.h"

#include <QTest>

#include <thread>

class TestNodeHierarchy : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // The table lives as long as the process; a hierarchy of no nodes empties it.
    void init() { nodehierarchy::pass(nullptr, 0, 0, 0); }

    void theFirstCallGivesEveryNodeAList()
    {
        const auto oPassed = pass({3, 1}, 0, 5);
        QVERIFY(!oPassed.bResized);
        QVERIFY(!oPassed.bComplete);
        QVERIFY(*nodehierarchy::current() == (CNodeLists{{3, 1}, {}, {}, {}, {}}));
    }

    void onlyTheLastNodeCompletesTheHierarchy()
    {
        for (int iNode = 0; iNode < 5; iNode++)
            QCOMPARE(pass({}, iNode, 5).bComplete, iNode == 4);
    }

    void childrenKeepTheirOrder()
    {
        pass({7, 2, 10, 2}, 1, 2);
        QVERIFY(*nodehierarchy::current() == (CNodeLists{{}, {7, 2, 10, 2}}));
    }

    void aSmallerNumberDropsTheLastLists()
    {
        for (int iNode = 0; iNode < 5; iNode++)
            pass({iNode + 10}, iNode, 5);
        QVERIFY(pass({99}, 1, 3).bResized);
        QVERIFY(*nodehierarchy::current() == (CNodeLists{{10}, {99}, {12}}));
    }

    void aGreaterNumberAddsEmptyLists()
    {
        pass({1}, 0, 2);
        QVERIFY(pass({2}, 1, 4).bResized);
        QVERIFY(*nodehierarchy::current() == (CNodeLists{{1}, {2}, {}, {}}));
    }

    void theSameNumberResizesNothing()
    {
        pass({1}, 0, 2);
        QVERIFY(!pass({}, 1, 2).bResized);
    }

    void aSecondPassReplacesItsOwnListsOnly()
    {
        pass({1}, 0, 2);
        pass({5}, 1, 2);
        pass({8, 9}, 0, 2);
        QVERIFY(*nodehierarchy::current() == (CNodeLists{{8, 9}, {5}}));
    }

    void aNodeWithoutChildrenGetsAnEmptyList()
    {
        pass({1}, 0, 2);
        pass({}, 0, 2);
        const int aiUnused[] = {4};
        nodehierarchy::pass(aiUnused, -1, 1, 2);
        QVERIFY(*nodehierarchy::current() == (CNodeLists{{}, {}}));
    }

    void noNodesLeaveTheTableEmpty()
    {
        const auto oPassed = pass({1}, 0, 0);
        QVERIFY(!oPassed.bResized);
        QVERIFY(!oPassed.bComplete);
        QVERIFY(nodehierarchy::current()->empty());
    }

    void aNodeOutsideIsDropped_data()
    {
        QTest::addColumn<int>("iNode");
        QTest::newRow("just beyond") << 3;
        QTest::newRow("far beyond") << 1000000;
        QTest::newRow("negative") << -1;
    }

    void aNodeOutsideIsDropped()
    {
        QFETCH(int, iNode);
        QVERIFY(!pass({1}, iNode, 3).bComplete);
        QVERIFY(*nodehierarchy::current() == (CNodeLists{{}, {}, {}}));
    }

    void aNegativeNumberOfNodesCountsAsNone()
    {
        QVERIFY(!pass({1}, -6, -5).bComplete);
        QVERIFY(nodehierarchy::current()->empty());
    }

    void aTableInUseDoesNotChange()
    {
        pass({1}, 0, 2);
        const auto pBefore = nodehierarchy::current();
        pass({2}, 0, 3);
        QVERIFY(*pBefore == (CNodeLists{{1}, {}}));
        QVERIFY(*nodehierarchy::current() == (CNodeLists{{2}, {}, {}}));
    }

    void oneThreadReadsWhileAnotherPasses()
    {
        constexpr int NumNodes = 200;
        std::thread oHost([] {
            for (int iNode = 0; iNode < NumNodes; iNode++)
                pass({iNode, iNode}, iNode, NumNodes);
        });
        bool bWhole = true;
        bool bComplete = false;
        while (!bComplete) {
            const auto pvviNodes = nodehierarchy::current();
            for (std::size_t i = 0; i < pvviNodes->size(); i++)
                bWhole = bWhole && ((*pvviNodes)[i].empty() || (*pvviNodes)[i].size() == 2);
            bComplete = !pvviNodes->empty() && !(*pvviNodes)[NumNodes - 1].empty();
        }
        oHost.join();
        QVERIFY(bWhole);
    }

private:
    static nodehierarchy::Passed pass(std::vector<int> viChildren, int iNode, int iNumNodes)
    {
        return nodehierarchy::pass(viChildren.data(), int(viChildren.size()), iNode, iNumNodes);
    }
};

QTEST_GUILESS_MAIN(TestNodeHierarchy)
#include "tst_nodehierarchy.moc"
