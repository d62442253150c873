// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "binding/CNodeLists.h"

#include <QTest>

#include <new>
#include <random>

class TestNodeLists : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void listsCompareByTheirChildren()
    {
        const CNodeLists vviOne{{1, 2}, {}, {3}};
        QVERIFY(vviOne == (CNodeLists{{1, 2}, {}, {3}}));
        QVERIFY(!(vviOne == (CNodeLists{{1, 2}, {}, {4}})));
        QVERIFY(!(vviOne == (CNodeLists{{1}, {2}, {3}})));
        QVERIFY(!(vviOne == (CNodeLists{{1, 2}, {}})));
    }

    void thePlaceOfAReplacedListDoesNotMatter()
    {
        CNodeLists vviNodes{{1, 2}, {3}};
        set(vviNodes, 0, {4, 5, 6});
        set(vviNodes, 0, {7});
        QVERIFY(vviNodes == (CNodeLists{{7}, {3}}));
        set(vviNodes, 1, {});
        QVERIFY(vviNodes == (CNodeLists{{7}, {}}));
    }

    void childrenAreCounted()
    {
        CNodeLists vviNodes{{1, 2}, {}, {3}};
        QCOMPARE(vviNodes.numChildren(), std::size_t(3));
        set(vviNodes, 0, {9});
        QCOMPARE(vviNodes.numChildren(), std::size_t(2));
        vviNodes.resize(2);
        QCOMPARE(vviNodes.numChildren(), std::size_t(1));
    }

    void aListThatComesBackIsEmpty()
    {
        CNodeLists vviNodes{{1}, {2}};
        vviNodes.resize(1);
        vviNodes.resize(3);
        QVERIFY(vviNodes == (CNodeLists{{1}, {}, {}}));
    }

    void manyChangesGiveTheSameAsSeparateLists()
    {
        std::mt19937 oRandom(7);
        const auto number = [&](int iMost) { return std::uniform_int_distribution<int>(0, iMost)(oRandom); };
        std::vector<std::vector<int>> vviExpected(20);
        CNodeLists vviNodes;
        vviNodes.resize(20);
        for (int i = 0; i < 5000; i++) {
            const auto uNode = std::size_t(number(19));
            vviExpected[uNode].resize(std::size_t(number(30)));
            for (int& iChild : vviExpected[uNode])
                iChild = number(1000);
            set(vviNodes, uNode, vviExpected[uNode]);
        }
        for (std::size_t uNode = 0; uNode < vviExpected.size(); uNode++)
            QVERIFY(std::ranges::equal(vviNodes[uNode], vviExpected[uNode]));
    }

    void tooManyChildrenChangeNothing()
    {
        CNodeLists vviNodes{{1}, {2, 3}};
        QVERIFY_THROWS_EXCEPTION(std::bad_alloc, vviNodes.makeRoom(3'000'000'000));
        QVERIFY(vviNodes == (CNodeLists{{1}, {2, 3}}));
    }

private:
    static void set(CNodeLists& vviNodes, std::size_t uNode, const std::vector<int>& viChildren)
    {
        vviNodes.set(uNode, viChildren);
    }
};

QTEST_GUILESS_MAIN(TestNodeLists)
#include "tst_nodelists.moc"
