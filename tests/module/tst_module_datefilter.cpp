// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CDateFilter.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

using namespace Qt::StringLiterals;

/// What the date filter lets through, and how long it counts.
class TestModuleDateFilter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { oServer.load(u"news.sql"_s); }

    void anUntouchedFieldFiltersNothing()
    {
        CDateFilter oFilter(oServer, oScreen);
        QCOMPARE(oFilter.box(), "select by date [ ]");
        oFilter.clickBox();
        QCOMPARE(oFilter.box(), "select by date [x]");
        QCOMPARE(oFilter.oAnalyst.table().size(), 6);
        QCOMPARE(oFilter.conditions(), QStringList{QString()});
    }

    void theFilterShowsTheDayOrTheInstant_data()
    {
        QTest::addColumn<QByteArray>("oDigits");
        QTest::addColumn<QString>("sCondition");
        QTest::addColumn<QByteArrayList>("lRows");
        QTest::newRow("a day") << "01032005"_ba << day(u"2005-03-01"_s)
                               << QByteArrayList{
                                      "01.03.05 09:30 | Neue Brücke", "01.03.05 13:00 | Schnee im März"};
        QTest::newRow("a day up to its last second")
            << "27022005"_ba << day(u"2005-02-27"_s) << QByteArrayList{"27.02.05 23:59 | Zug entgleist"};
        QTest::newRow("a day from midnight on") << "03032005000000"_ba << day(u"2005-03-03"_s)
                                                << QByteArrayList{"03.03.05 00:00 | Äpfel werden teurer"};
        QTest::newRow("an instant") << "01032005130000"_ba << instant(u"2005-03-01T13:00:00"_s)
                                    << QByteArrayList{"01.03.05 13:00 | Schnee im März"};
        QTest::newRow("a second before midnight") << "27022005235959"_ba << instant(u"2005-02-27T23:59:59"_s)
                                                  << QByteArrayList{"27.02.05 23:59 | Zug entgleist"};
        QTest::newRow("a second after midnight")
            << "03032005000001"_ba << instant(u"2005-03-03T00:00:01"_s) << QByteArrayList{};
        QTest::newRow("a day without documents") << "04032005"_ba << day(u"2005-03-04"_s) << QByteArrayList{};
    }

    void theFilterShowsTheDayOrTheInstant()
    {
        QFETCH(QByteArray, oDigits);
        QFETCH(QString, sCondition);
        QFETCH(QByteArrayList, lRows);
        CDateFilter oFilter(oServer, oScreen);
        oFilter.fillIn(oDigits);
        QCOMPARE(oFilter.oAnalyst.table(), QByteArrayList{"date | title"} + lRows);
        QCOMPARE(oFilter.conditions().last(), sCondition);
        QCOMPARE(oFilter.oHost.numRows(), lRows.size());
    }

    void theConditionStandsBeforeTheOrder()
    {
        CDateFilter oFilter(oServer, oScreen);
        oFilter.fillIn("01032005");
        QCOMPARE(oServer.log().last(),
            u"SELECT node, dist, document.* FROM news_train, news.document "
            "WHERE news.document.id=news_train.item AND node=1 "
            "AND news.document.date like \"2005-03-01%\" ORDER BY date"_s);
    }

    void theHostsDatesAreThoseOfTheFilteredRows()
    {
        CDateFilter oFilter(oServer, oScreen);
        oFilter.fillIn("01032005");
        QCOMPARE(oFilter.oHost.call("fillDate", {"oi:3"}), "0 210 -7777");
        oFilter.oHost.call("setRowColors", {"c:2x0,0,0"});
        QCOMPARE(oFilter.oHost.call("getFirstDateInSelection", {"ot:20"}), "2005-03-01T09:30:00");
    }

    void withTheBoxOffEveryChangeSelectsAnewAndFiltersNothing()
    {
        // given
        CDateFilter oFilter(oServer, oScreen);
        oFilter.clickBox();
        oFilter.clickBox();
        QCOMPARE(oFilter.box(), "select by date [ ]");
        // when
        oFilter.oAnalyst.press({"Tab"});
        oFilter.oAnalyst.type("01032005");
        // then
        QCOMPARE(oFilter.field(), "01.03.2005 00:00:00");
        QCOMPARE(oFilter.oAnalyst.table().size(), 6);
        QCOMPARE(oFilter.conditions(), QStringList(4, QString()));
        // when
        oFilter.clickBox();
        // then
        QCOMPARE(oFilter.oAnalyst.table().size(), 3);
        QCOMPARE(oFilter.conditions(), QStringList(4, QString()) << day(u"2005-03-01"_s));
    }

    void spaceTurnsTheBoxOnAndOff()
    {
        // given
        CDateFilter oFilter(oServer, oScreen);
        oFilter.fillIn("01032005", {"shift+Tab", "shift+Tab", "shift+Tab", "shift+Tab"});
        QCOMPARE(oFilter.oAnalyst.focus(), "checkdate");
        oServer.startLog();
        // when, then
        oFilter.oAnalyst.press({"space"});
        QCOMPARE(oFilter.box(), "select by date [ ]");
        QCOMPARE(oFilter.oAnalyst.table().size(), 6);
        oFilter.oAnalyst.press({"space"});
        QCOMPARE(oFilter.box(), "select by date [x]");
        QCOMPARE(oFilter.oAnalyst.table().size(), 3);
        QCOMPARE(oFilter.conditions(), QStringList({QString(), day(u"2005-03-01"_s)}));
    }

    void theFilterStaysForEveryFurtherSelection()
    {
        // given
        CDateFilter oFilter(oServer, oScreen);
        oFilter.fillIn("10052006");
        QCOMPARE(oFilter.oAnalyst.table(), QByteArrayList{"date | title"});
        oServer.startLog();
        // when the host chooses a node
        oFilter.oHost.call("select", {"i:2"});
        // then
        QCOMPARE(oFilter.oAnalyst.table(), QByteArrayList({"date | title", "10.05.06 12:00 | Sommer"}));
        // when the analyst chooses an order, columns and a node
        oFilter.oAnalyst.choose("Sort", "id");
        oFilter.oAnalyst.choose("Show", "title");
        oFilter.oAnalyst.click(oFilter.oAnalyst.item(1));
        // then
        QCOMPARE(oFilter.oAnalyst.table(), QByteArrayList{"date"});
        QCOMPARE(oFilter.conditions(), QStringList(4, day(u"2006-05-10"_s)));
        QVERIFY(oServer.log().last().endsWith(u"AND node=1 AND news.document.date "
                                              "like \"2006-05-10%\" ORDER BY id"_s));
        // when
        oFilter.clickBox();
        // then
        QCOMPARE(oFilter.oAnalyst.table().size(), 6);
        QCOMPARE(oFilter.conditions().last(), QString());
    }

    void theFilterStaysForAnotherTable()
    {
        // given
        oServer.sql(u"CREATE OR REPLACE VIEW som.others AS SELECT 1 node, 0.5 dist, id item "
                    "FROM news.document"_s);
        CDateFilter oFilter(oServer, oScreen);
        oFilter.fillIn("10052006");
        // when
        oFilter.oHost.announceErrors({"CNodeBrowser: Changed Table to others"});
        oFilter.oHost.call("setSOMTable", {"t:others"});
        oFilter.oHost.call("select", {"i:1"});
        // then
        QCOMPARE(oFilter.oAnalyst.table(), QByteArrayList({"date | title", "10.05.06 12:00 | Sommer"}));
        QCOMPARE(oFilter.box(), "select by date [x]");
        QCOMPARE(oFilter.field(), "10.05.2006 00:00:00");
    }

    void aFilterThatIsSetBeforeANodeIsChosenWaitsForIt()
    {
        // given a further window, without a node
        CDateFilter oFilter(oServer, oScreen);
        oFilter.fillIn("02032005");
        oFilter.oHost.free();
        oFilter.oHost.announceErrors({"Terminating QApplication"});
        oFilter.oHost.call("setSOMTable", {"t:news_train"});
        oFilter.oHost.construct();
        oFilter.oAnalyst.showWindow();
        QCOMPARE(oFilter.field(), "01.01.2000 00:00:00");
        QCOMPARE(oFilter.box(), "select by date [ ]");
        oServer.startLog();
        // when
        oFilter.fillIn("01032005");
        QCOMPARE(oFilter.oAnalyst.table(), QByteArrayList{""});
        QCOMPARE(oServer.log(), QStringList());
        oFilter.oHost.call("select", {"i:1"});
        // then
        QCOMPARE(oFilter.oAnalyst.table().size(), 3);
        QCOMPARE(oFilter.conditions(), QStringList{day(u"2005-03-01"_s)});
    }

private:
    static QString day(const QString& sDay) { return CDateFilter::day(sDay); }
    static QString instant(const QString& sInstant) { return CDateFilter::instant(sInstant); }

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleDateFilter)
#include "tst_module_datefilter.moc"
