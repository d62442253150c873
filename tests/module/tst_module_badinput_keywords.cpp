// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"
#include "treehost.h"

using namespace Qt::StringLiterals;

/// Keyword tables of other types, in another order, of odd or very long texts, or that fail half way.
class TestModuleBadInputKeywords : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        oServer.load(u"news.sql"_s);
        oServer.sql(u"USE som; CREATE TABLE digits (d INT); "
                    "INSERT INTO digits VALUES (0), (1), (2), (3), (4), (5), (6), (7), (8), (9)"_s);
    }

    void keywordsOfAnyTypeAreTexts_data()
    {
        QTest::addColumn<QString>("sType");
        QTest::addColumn<QString>("sValue");
        QTest::addColumn<QByteArray>("oShown");
        QTest::newRow("int") << u"INT"_s << u"-42"_s << "-42"_ba;
        QTest::newRow("great int") << u"BIGINT UNSIGNED"_s << u"18446744073709551615"_s
                                   << "18446744073709551615"_ba;
        QTest::newRow("double") << u"DOUBLE"_s << u"1.5"_s << "1.5"_ba;
        QTest::newRow("day") << u"DATE"_s << u"'2005-03-01'"_s << "2005-03-01"_ba;
        QTest::newRow("bytes") << u"BLOB"_s << u"'red\\ngreen\\nblue'"_s << "red, green, blue"_ba;
        QTest::newRow("bytes that are no UTF-8") << u"BLOB"_s << u"X'61ff62'"_s
                                                 << "a\xef\xbf\xbd"
                                                    "b"_ba;
        QTest::newRow("Latin-1") << u"TEXT CHARSET latin1"_s << u"'K\u00f6ln'"_s << "K\xc3\xb6ln"_ba;
        QTest::newRow("a NUL ends what a C text shows") << u"BLOB"_s << u"X'610062'"_s << "a"_ba;
        QTest::newRow("tab and bell") << u"TEXT"_s << u"X'610962070d'"_s << "a\tb\a\r"_ba;
        QTest::newRow("right to left") << u"TEXT"_s << u"'\u202eabc'"_s
                                       << "\xe2\x80\xae"
                                          "abc"_ba;
    }

    void keywordsOfAnyTypeAreTexts()
    {
        // given
        QFETCH(QString, sType);
        QFETCH(QString, sValue);
        makeTable(u"_assigned_topic INT, _keywords %1"_s.arg(sType), u"(1, %1), (1, %1)"_s.arg(sValue));
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        // when
        treehost::show(oAnalyst, {"1", ""}, "odd_train");
        // then
        QTEST(QByteArray(oAnalyst.tree().value(0).mid(6)), "oShown");
    }

    void theRowsAreThoseOfTheNodesInTheirOrderWhateverTheirTopics()
    {
        makeTable(u"_assigned_topic INT, _keywords TEXT"_s, u"(7, 'c'), (0, 'a'), (-5, 'b'), (7, 'c')"_s);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::fill(oHost, {"3,2,1", "", "", ""}, "odd_train");
        QCOMPARE(oAnalyst.tree(), QByteArrayList({"v 0 | c", "  - 1 | a", "  - 2 | b", "  - 3 | c"}));
    }

    void aHundredThousandRowsForTwoNodesAreLeftOut()
    {
        oServer.sql(u"DROP TABLE IF EXISTS som.odd_som; CREATE VIEW som.odd_som AS SELECT 1 _assigned_topic, "
                    u"'many' _keywords "
                    "FROM som.digits a, som.digits b, som.digits c, som.digits d, som.digits e"_s);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::fill(oHost, {"1", ""}, "odd_train");
        QCOMPARE(oAnalyst.tree(), QByteArrayList({"v 0 | many", "  - 1 | many"}));
        oServer.sql(u"DROP VIEW som.odd_som"_s);
    }

    void aTableThatFailsHalfWayLeavesTheNumbers()
    {
        // given
        oServer.sql(
            u"DROP TABLE IF EXISTS som.odd_som; CREATE VIEW som.odd_som AS SELECT node _assigned_topic, "
            "IF(node < 2, _keywords, (SELECT d FROM som.digits)) _keywords FROM som.news_som"_s);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        // when
        treehost::fill(oHost, {"1", ""}, "odd_train");
        oHost.announceErrors(
            {"CListView: WARNING: Could not connect to Database, using               select-statement: "
             "SELECT _assigned_topic, _keywords FROM odd_som "});
        // then
        QCOMPARE(oAnalyst.tree(), QByteArrayList({"v 0 | ", "  - 1 | "}));
        oServer.sql(u"DROP VIEW som.odd_som"_s);
    }

    void aVeryLongKeywordIsShown_data()
    {
        QTest::addColumn<QString>("sText");
        QTest::newRow("letters") << u"REPEAT('m', 1000000)"_s;
        QTest::newRow("line feeds") << u"REPEAT('\\n', 1000000)"_s;
    }

    void aVeryLongKeywordIsShown()
    {
        // given
        QFETCH(QString, sText);
        makeTable(
            u"_assigned_topic INT, _keywords LONGTEXT"_s, u"(1, 'first'), (1, %1), (1, 'last')"_s.arg(sText));
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        // when
        treehost::show(oAnalyst, {"1,2", "", ""}, "odd_train");
        // then
        QVERIFY(!oAnalyst.header("Keywords").isEmpty());
        oServer.startLog();
        oAnalyst.click(oAnalyst.item(1));
        oAnalyst.click(oAnalyst.item(2));
        QCOMPARE(oHost.numRows(), 0);
        QCOMPARE(oServer.log().size(), 2);
    }

private:
    void makeTable(const QString& sColumns, const QString& sRows) const
    {
        oServer.sql(u"USE som; CREATE OR REPLACE TABLE odd_som (%1) CHARSET utf8mb4; INSERT INTO odd_som "
                    "VALUES %2"_s.arg(sColumns, sRows));
    }

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleBadInputKeywords)
#include "tst_module_badinput_keywords.moc"
