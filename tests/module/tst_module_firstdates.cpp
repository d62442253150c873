// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "datedhost.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

#include <QDateTime>

using namespace Qt::StringLiterals;
using datedhost::Dates;

namespace {

const QByteArrayList NoFirstDate{
    "CTable: An Error occurred while getting first date in selection                ",
    "SelectCursor is empty!"};

QByteArray minutes(const QDate& oUtcDate, const QTime& oUtcTime)
{
    return QByteArray::number(QDateTime(oUtcDate, oUtcTime, Qt::UTC).toSecsSinceEpoch() / 60);
}

} // namespace

/// The first date of the selection, and that of the time frame.
class TestModuleFirstDates : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { oServer.load(u"news.sql"_s); }

    void theFirstDateInTheSelectionIsAText_data()
    {
        QTest::addColumn<QString>("sType");
        QTest::addColumn<QStringList>("slDates");
        QTest::addColumn<QByteArray>("oText");
        const QString sDateTime = u"DATETIME"_s;
        QTest::newRow("of several") << sDateTime
                                    << QStringList{u"2006-05-10 12:00:05"_s, u"2006-05-09 12:00:00"_s}
                                    << "2006-05-09T12:00:00"_ba;
        QTest::newRow("midnight") << sDateTime << QStringList{u"2006-05-10"_s} << "2006-05-10T00:00:00"_ba;
        QTest::newRow("fraction") << u"DATETIME(3)"_s << QStringList{u"2006-05-10 12:00:05.999"_s}
                                  << "2006-05-10T12:00:05"_ba;
        QTest::newRow("long fraction")
            << u"DATETIME(6)"_s << QStringList{u"2006-05-10 12:00:05.000001"_s} << "2006-05-10T12:00:05"_ba;
        QTest::newRow("time stamp") << u"TIMESTAMP(3)"_s << QStringList{u"2006-05-10 12:00:05.5"_s}
                                    << "2006-05-10T12:00:05"_ba;
        QTest::newRow("time that summer time skips")
            << sDateTime << QStringList{u"2005-03-27 02:30:00"_s} << "2005-03-27T02:30:00"_ba;
        QTest::newRow("time that comes twice")
            << sDateTime << QStringList{u"2005-10-30 02:30:00"_s} << "2005-10-30T02:30:00"_ba;
        QTest::newRow("long ago") << sDateTime << QStringList{u"1000-01-01 00:00:00"_s}
                                  << "1000-01-01T00:00:00"_ba;
        QTest::newRow("far away") << sDateTime << QStringList{u"9999-12-31 23:59:59"_s}
                                  << "9999-12-31T23:59:59"_ba;
        QTest::newRow("NULL") << sDateTime << QStringList{QString(), u"2006-05-10"_s} << ""_ba;
        QTest::newRow("zeros") << sDateTime << QStringList{u"0000-00-00"_s, u"2006-05-10"_s} << ""_ba;
        QTest::newRow("day") << u"DATE"_s << QStringList{u"2006-05-10"_s} << "2006-05-10"_ba;
        QTest::newRow("NULL for a day") << u"DATE"_s << QStringList{QString()} << ""_ba;
        QTest::newRow("text") << u"VARCHAR(99)"_s << QStringList{u"10. März 2006"_s} << "10. M\xe4rz 2006"_ba;
    }

    void theFirstDateInTheSelectionIsAText()
    {
        QFETCH(QString, sType);
        QFETCH(QStringList, slDates);
        CPlainHost oHost;
        datedhost::show(oHost, oServer, {slDates, sType});
        QTEST(oHost.call("getFirstDateInSelection", {"ot:20"}), "oText");
        QCOMPARE(oHost.errors(), QByteArrayList());
    }

    void aLongTextIsCopiedInFull()
    {
        CPlainHost oHost;
        datedhost::show(oHost, oServer, {{QString(300, u'x')}, u"VARCHAR(300)"_s});
        QCOMPARE(oHost.call("getFirstDateInSelection", {"ot:301"}), QByteArray(300, 'x'));
    }

    void theFirstDateFollowsTheOrderOfTheTable()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        datedhost::show(oHost, oServer, {{u"2006-05-10"_s, u"2006-05-09"_s}});
        oAnalyst.showWindow();
        // when
        oAnalyst.choose("Sort", "id");
        oAnalyst.table();
        // then
        QCOMPARE(oHost.call("getFirstDateInSelection", {"ot:20"}), "2006-05-10T00:00:00");
    }

    void withoutARowTheTextIsLeftAlone()
    {
        CPlainHost oHost;
        datedhost::show(oHost, oServer, {{u"2006-05-10"_s}});
        for (int i = 0; i < 2; i++) {
            oHost.call("select", {"i:1"});
            QCOMPARE(oHost.call("getFirstDateInSelection", {"ot:20"}), "untouched");
            oHost.announceErrors(NoFirstDate);
        }
        QCOMPARE(oHost.numRows(), 0);
    }

    void afterANewTableItIsADateOfThatTable()
    {
        CPlainHost oHost;
        datedhost::show(oHost, oServer, {{u"2006-05-10"_s}});
        oHost.call("select", {"i:1"});
        oHost.announceErrors({"CNodeBrowser: Changed Table to dates"});
        oHost.call("setSOMTable", {"t:dates"});
        QCOMPARE(oHost.call("getFirstDateInSelection", {"ot:20"}), "2006-05-10T00:00:00");
    }

    void aSelectionThatFailsHasNoRow()
    {
        CPlainHost oHost;
        datedhost::show(oHost, oServer, {{u"2006-05-10"_s}});
        oServer.sql(u"DROP DATABASE dated"_s);
        oHost.call("select", {"i:0"});
        QCOMPARE(oHost.call("getFirstDateInSelection", {"ot:20"}), "untouched");
        oHost.announceErrors(NoFirstDate);
        QCOMPARE(oHost.numRows(), 0);
    }

    void aColumnWithAnotherNameIsNoDateColumn_data()
    {
        QTest::addColumn<QString>("sColumn");
        QTest::newRow("same letters") << u"Date"_s;
        QTest::newRow("none like it") << u"day"_s;
    }

    void aColumnWithAnotherNameIsNoDateColumn()
    {
        // given
        QFETCH(QString, sColumn);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        datedhost::make(oServer, {{u"2006-05-10"_s}, u"DATETIME"_s, sColumn});
        oServer.sql(u"CREATE OR REPLACE VIEW som.dates AS SELECT 4711 node, 0.5 dist, 1 item"_s);
        datedhost::choose(oHost);
        oAnalyst.showWindow();
        oAnalyst.choose("Sort", "id");
        // when
        oHost.call("select", {"i:4711"});
        // then the node stands in
        QCOMPARE(oHost.call("getFirstDateInSelection", {"ot:20"}), "4711");
        oHost.call("markRow", {"k:1970-01-01 00:00:00", "i:0"});
        QCOMPARE(oAnalyst.currentCell(), "none");
        QCOMPARE(oHost.output(), QByteArrayList({datedhost::warning("4711")}));
    }

    void theFirstDateInTheFrameIsThatOfTheMarkedRow_data()
    {
        QTest::addColumn<QByteArray>("oDate");
        QTest::addColumn<QStringList>("slDates");
        QTest::addColumn<QByteArray>("oMinutes");
        const QByteArray oNoon = "2006-05-10 12:00:00";
        QTest::newRow("found") << oNoon
                               << QStringList{u"2006-05-10 10:00:00"_s, u"2006-05-10 11:30:00"_s,
                                      u"2006-05-10 11:40:00"_s}
                               << minutes({2006, 5, 10}, {9, 30});
        QTest::newRow("29 seconds") << oNoon << QStringList{u"2006-05-10 11:30:29"_s}
                                    << minutes({2006, 5, 10}, {9, 30});
        QTest::newRow("30 seconds") << oNoon << QStringList{u"2006-05-10 11:30:30"_s}
                                    << minutes({2006, 5, 10}, {9, 31});
        QTest::newRow("30 seconds before the epoch")
            << "1970-01-01 01:00:00"_ba << QStringList{u"1970-01-01 00:59:30"_s} << "-1"_ba;
        QTest::newRow("long before the epoch")
            << "1950-01-01 01:00:00"_ba << QStringList{u"1950-01-01 00:59:00"_s} << "-10519201"_ba;
        QTest::newRow("beyond an int") << oNoon << QStringList{u"9999-12-31 23:59:59"_s} << "2147483647"_ba;
        QTest::newRow("none found: the last one")
            << oNoon << QStringList{u"2006-05-10 10:00:00"_s, u"2006-05-10 10:30:00"_s}
            << minutes({2006, 5, 10}, {8, 30});
        QTest::newRow("none readable") << oNoon << QStringList{QString(), QString()} << "0"_ba;
        QTest::newRow("one readable")
            << oNoon << QStringList{QString(), u"2006-05-10 10:00:00"_s} << minutes({2006, 5, 10}, {8, 0});
    }

    void theFirstDateInTheFrameIsThatOfTheMarkedRow()
    {
        // given
        QFETCH(QByteArray, oDate);
        QFETCH(QStringList, slDates);
        CPlainHost oHost;
        datedhost::show(oHost, oServer, {slDates});
        QCOMPARE(oHost.call("getFirstDateInFrame", {"oi:2"}), "0 -7777");
        oHost.announceOutput(QByteArrayList(slDates.count(QString()), datedhost::warning()));
        // when
        oHost.call("markRow", {"k:" + oDate, "i:1"});
        // then
        QTEST(oHost.call("getFirstDateInFrame", {"oi:1"}), "oMinutes");
    }

    void theLastReadableRowCountsWhenUnreadableOnesFollow()
    {
        CPlainHost oHost;
        datedhost::show(oHost, oServer, {{u"2006-05-10T10:00:00"_s, u"later"_s}, u"VARCHAR(99)"_s});
        oHost.announceOutput({datedhost::warning("later")});
        oHost.call("markRow", {"k:2006-05-10 12:00:00", "i:1"});
        QCOMPARE(oHost.call("getFirstDateInFrame", {"oi:1"}), minutes({2006, 5, 10}, {8, 0}));
    }

    void theFirstDateInTheFrameStaysUntilTheNextMark()
    {
        // given
        CPlainHost oHost;
        datedhost::show(oHost, oServer, {{u"2006-05-10 10:00:00"_s, u"2006-05-11 10:00:00"_s}});
        const QByteArray oFirst = minutes({2006, 5, 10}, {8, 0});
        const QByteArray oSecond = minutes({2006, 5, 11}, {8, 0});
        oHost.call("markRow", {"k:2006-05-11 10:00:00", "i:1"});
        QCOMPARE(oHost.call("getFirstDateInFrame", {"oi:1"}), oSecond);
        // when, then: another selection, a mark in it, a null date, and a mark at last
        oHost.call("select", {"i:3"});
        QCOMPARE(oHost.call("getFirstDateInFrame", {"oi:1"}), oSecond);
        oHost.call("markRow", {"k:2006-05-10 10:00:00", "i:1"});
        QCOMPARE(oHost.call("getFirstDateInFrame", {"oi:1"}), oSecond);
        oHost.call("select", {"i:0"});
        oHost.call("markRow", {"null", "i:1"});
        QCOMPARE(oHost.call("getFirstDateInFrame", {"oi:1"}), oSecond);
        oHost.call("markRow", {"k:2006-05-10 10:00:00", "i:1"});
        QCOMPARE(oHost.call("getFirstDateInFrame", {"oi:1"}), oFirst);
    }

private:
    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleFirstDates)
#include "tst_module_firstdates.moc"
