// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CTestTree.h"

#include "tests/support/CPrivateServer.h"
#include "tests/support/CStrictTest.h"
#include "tests/support/testmain.h"

#include <QDir>

#include <numeric>

using namespace Qt::StringLiterals;

/// The order of the tree's rows, and where they are.
class TestListViewSort : public CStrictTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QDir::setCurrent(QDir::rootPath()); // no signs there
        oServer.load(u"news.sql"_s);
    }

    void keywordsStandInTheOrderOfTheLocale()
    {
        // given
        QStringList slKeywords{u"b"_s, u"B"_s, u"a"_s, u"Ä"_s, u"ä"_s, u"z"_s, u""_s, u"A b"_s, u"Ab"_s};
        CTestTree oTree;
        fill(oTree, {{1, 2, 3, 4, 5, 6, 7, 8, 9}}, QStringList{u"root"_s} + slKeywords);
        // when
        oTree->sortByColumn(1, Qt::AscendingOrder);
        // then
        std::stable_sort(slKeywords.begin(), slKeywords.end(),
            [](const QString& sOne, const QString& sOther) { return sOne.localeAwareCompare(sOther) < 0; });
        QStringList slShown;
        for (int iRow = 0; iRow < slKeywords.size(); iRow++)
            slShown << oTree->model()->index(iRow, 1, oTree.root()).data().toString();
        QCOMPARE(slShown, slKeywords);
    }

    void equalKeywordsKeepTheOrderBefore()
    {
        CTestTree oTree;
        fill(oTree, {{1, 2, 3, 4}}, {u"root"_s, u"x"_s, u"a"_s, u"x"_s, u"x"_s});
        oTree->sortByColumn(1, Qt::AscendingOrder);
        QCOMPARE(children(oTree), (QList<int>{2, 1, 3, 4}));
        oTree->sortByColumn(1, Qt::DescendingOrder);
        QCOMPARE(children(oTree), (QList<int>{1, 3, 4, 2}));
        oTree->sortByColumn(0, Qt::DescendingOrder);
        oTree->sortByColumn(1, Qt::AscendingOrder);
        QCOMPARE(children(oTree), (QList<int>{2, 4, 3, 1}));
    }

    void sortingKeepsWhatIsOpenAndCurrent()
    {
        CTestTree oTree;
        oTree.fill({{1, 2, 3}, {4}, {5, 6}, {7}, {}, {}, {}, {}}, QString());
        oTree->expand(oTree.item(2));
        oTree->setCurrentIndex(oTree.item(6));
        oTree->sortByColumn(0, Qt::DescendingOrder);
        QCOMPARE(oTree.picture(),
            (QStringList{u"v 0 | "_s, u"  > 3 | "_s, u"    - 7 | "_s, u"  v 2 | "_s, u"    - 6 |  <"_s,
                u"    - 5 | "_s, u"  > 1 | "_s, u"    - 4 | "_s}));
    }

    void ofTwoItemsOfANodeTheFirstShownIsFound()
    {
        CTestTree oTree;
        oTree.fill({{1, 2}, {3}, {3}, {}}, QString());
        QCOMPARE(oTree->find(3), oTree.item(3));
        QCOMPARE(oTree->node(oTree->find(3).parent()), 1);
        oTree->sortByColumn(0, Qt::DescendingOrder);
        QCOMPARE(oTree->find(3), oTree.item(3));
        QCOMPARE(oTree->node(oTree->find(3).parent()), 2);
        QVERIFY(!oTree->find(4).isValid());
    }

    void onlyRowsInSightHaveAPlace()
    {
        // given
        std::vector<int> viChildren(499);
        std::iota(viChildren.begin(), viChildren.end(), 1);
        CTestTree oTree;
        oTree.fill({viChildren}, QString());
        oTree.show();
        // then: the same row is found at the place
        QCOMPARE(oTree->indexAt(oTree.place(5)), oTree.item(5));
        QVERIFY(!oTree->visualRect(oTree.item(400)).isValid());
        // when
        oTree->scrollTo(oTree.item(400));
        // then
        QCOMPARE(oTree->indexAt(oTree.place(400)), oTree.item(400));
        QVERIFY(!oTree->visualRect(oTree.item(5)).isValid());
    }

private:
    // Row k of the table for node k.
    void fill(CTestTree& oTree, CNodeLists vviNodes, const QStringList& slKeywords)
    {
        QString sRows;
        for (const QString& sKeywords : slKeywords)
            sRows += u", (0, '%1')"_s.arg(sKeywords);
        oServer.sql(u"CREATE OR REPLACE TABLE som.sorted (_assigned_topic INT, _keywords TEXT);"
                    "INSERT INTO som.sorted VALUES "_s
            + sRows.mid(2));
        vviNodes.resize(std::size_t(slKeywords.size()));
        oTree.connectTo(u"som"_s);
        oTree.fill(vviNodes, u"sorted"_s);
    }

    static QList<int> children(const CTestTree& oTree)
    {
        QList<int> liNodes;
        for (int iRow = 0; iRow < oTree->model()->rowCount(oTree.root()); iRow++)
            liNodes << oTree->model()->index(iRow, 0, oTree.root()).data().toInt();
        return liNodes;
    }

    CPrivateServer oServer;
};

QTUTILS_WIDGET_TEST_MAIN(TestListViewSort, CPrivateDisplay::Manager::Running)
#include "tst_listview_sort.moc"
