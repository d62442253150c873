// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "table/selectionquery.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestSelectionQuery : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aProbeAsksForOneRowOfTheJoin()
    {
        QCOMPARE(selectionquery::probe(oTables),
            u"SELECT node, dist, articles.* FROM som_result, news.articles LIMIT 1"_s);
    }

    void theLengthOfTheDateFilterChoosesTheTail_data()
    {
        QTest::addColumn<QString>("sDateFilter");
        QTest::addColumn<QString>("sTail");
        QTest::newRow("null") << QString() << u" ORDER BY date"_s;
        QTest::newRow("empty") << u""_s << u" ORDER BY date"_s;
        QTest::newRow("1 character") << u"2"_s << uR"( AND news.articles.date like "2%" ORDER BY date)"_s;
        QTest::newRow("10 characters, a day")
            << u"2005-03-01"_s << uR"( AND news.articles.date like "2005-03-01%" ORDER BY date)"_s;
        QTest::newRow("11 characters")
            << u"2005-03-01T"_s << uR"( AND news.articles.date ="2005-03-01T" ORDER BY date)"_s;
        QTest::newRow("19 characters, an instant")
            << u"2005-03-01T12:30:00"_s
            << uR"( AND news.articles.date ="2005-03-01T12:30:00" ORDER BY date)"_s;
    }

    void theLengthOfTheDateFilterChoosesTheTail()
    {
        QFETCH(QString, sDateFilter);
        QFETCH(QString, sTail);
        QCOMPARE(selectionquery::documents(oTables, 17, u"date"_s, sDateFilter),
            u"SELECT node, dist, articles.* FROM som_result, news.articles "
            "WHERE news.articles.id=som_result.item AND node=17"_s
                + sTail);
    }

    void theNodeIsADecimalNumber_data()
    {
        QTest::addColumn<int>("iNode");
        QTest::addColumn<QString>("sNode");
        QTest::newRow("root") << 0 << u"0"_s;
        QTest::newRow("one digit") << 7 << u"7"_s;
        QTest::newRow("many digits") << 1234567 << u"1234567"_s;
    }

    void theNodeIsADecimalNumber()
    {
        QFETCH(int, iNode);
        QFETCH(QString, sNode);
        QCOMPARE(selectionquery::documents(oTables, iNode, u"date"_s, QString()),
            u"SELECT node, dist, articles.* FROM som_result, news.articles "
            "WHERE news.articles.id=som_result.item AND node="_s
                + sNode + u" ORDER BY date"_s);
    }

    void theSortColumnStandsAlone()
    {
        QCOMPARE(selectionquery::documents(oTables, 0, u"title"_s, QString()),
            u"SELECT node, dist, articles.* FROM som_result, news.articles "
            "WHERE news.articles.id=som_result.item AND node=0 ORDER BY title"_s);
    }

    void namesAndTextsGoInAsTheyStand()
    {
        const selectionquery::Tables oOdd{u"s'o`m"_s, u"a b"_s, u"ä;--"_s};
        QCOMPARE(selectionquery::probe(oOdd), u"SELECT node, dist, ä;--.* FROM s'o`m, a b.ä;-- LIMIT 1"_s);
        QCOMPARE(selectionquery::documents(oOdd, 1, u"x\\y"_s, uR"("quoted"%)"_s),
            u"SELECT node, dist, ä;--.* FROM s'o`m, a b.ä;-- WHERE a b.ä;--.id=s'o`m.item AND node=1"
            " AND a b.ä;--.date like \"\"quoted\"%%\" ORDER BY x\\y"_s);
    }

    void namesThatLookLikePlaceholdersStay()
    {
        const selectionquery::Tables oOdd{u"%1"_s, u"%2"_s, u"%3"_s};
        QCOMPARE(selectionquery::documents(oOdd, 4, u"%5"_s, u"%6"_s),
            u"SELECT node, dist, %3.* FROM %1, %2.%3 WHERE %2.%3.id=%1.item AND node=4"
            " AND %2.%3.date like \"%6%\" ORDER BY %5"_s);
    }

private:
    const selectionquery::Tables oTables{u"som_result"_s, u"news"_s, u"articles"_s};
};

QTEST_GUILESS_MAIN(TestSelectionQuery)
#include "tst_selectionquery.moc"
