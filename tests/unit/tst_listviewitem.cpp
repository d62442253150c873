// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "tree/CListViewItem.h"

#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;

class TestListViewItem : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void numbersCompareAsNumbers()
    {
        const CListViewItem oTwo(2, u"b"_s);
        const CListViewItem oTen(10, u"a"_s);
        QVERIFY(oTwo.compare(oTen, CListViewItem::NodeColumn) < 0);
        QVERIFY(oTen.compare(oTwo, CListViewItem::NodeColumn) > 0);
        QCOMPARE(oTwo.compare(CListViewItem(2), CListViewItem::NodeColumn), 0);
    }

    void theGreatestNumbersCompareToo()
    {
        const CListViewItem oLeast(std::numeric_limits<int>::min());
        const CListViewItem oGreatest(std::numeric_limits<int>::max());
        QVERIFY(oLeast.compare(oGreatest, CListViewItem::NodeColumn) < 0);
    }

    void keywordsCompareAsTexts()
    {
        const CListViewItem oFirst(2, u"a"_s);
        const CListViewItem oSecond(1, u"b"_s);
        QVERIFY(oFirst.compare(oSecond, CListViewItem::KeywordColumn) < 0);
        QVERIFY(oSecond.compare(oFirst, CListViewItem::KeywordColumn) > 0);
        QCOMPARE(oFirst.compare(CListViewItem(9, u"a"_s), CListViewItem::KeywordColumn), 0);
    }

    void anItemSaysItsTexts()
    {
        const CListViewItem oItem(-7, u"warm"_s);
        QCOMPARE(oItem.text(CListViewItem::NodeColumn), u"-7"_s);
        QCOMPARE(oItem.text(CListViewItem::KeywordColumn), u"warm"_s);
    }
};

QTEST_GUILESS_MAIN(TestListViewItem)
#include "tst_listviewitem.moc"
