// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "datedhost.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

#include <sys/syscall.h>

using namespace Qt::StringLiterals;
using datedhost::Dates;

/// The minutes of the rows, and the window that waits until they have been taken.
class TestModuleDates : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { oServer.load(u"news.sql"_s); }

    void fillDateGivesMinutesAfterTheFirstRow_data()
    {
        QTest::addColumn<QString>("sType");
        QTest::addColumn<QStringList>("slDates");
        QTest::addColumn<QByteArray>("oMinutes");
        const QString sDateTime = u"DATETIME"_s;
        QTest::newRow("halves away from zero")
            << sDateTime
            << QStringList{u"2006-05-10 10:00:00"_s, u"2006-05-10 10:00:29"_s, u"2006-05-10 10:00:30"_s,
                   u"2006-05-10 10:01:30"_s}
            << "0 0 1 2"_ba;
        QTest::newRow("fractions don't count")
            << u"DATETIME(3)"_s << QStringList{u"2006-05-10 10:00:00.999"_s, u"2006-05-10 10:00:30.000"_s}
            << "0 1"_ba;
        QTest::newRow("of a time stamp")
            << u"TIMESTAMP"_s << QStringList{u"2006-05-10 10:00:00"_s, u"2006-05-11 10:00:00"_s}
            << "0 1440"_ba;
        QTest::newRow("of a text") << u"VARCHAR(99)"_s
                                   << QStringList{u"2006-05-10T10:00:00"_s,
                                          u"2006-05-10T11:00:00.500+02:00"_s}
                                   << "0 60"_ba;
        QTest::newRow("across the hour that summer time skips")
            << sDateTime << QStringList{u"2005-03-27 01:30:00"_s, u"2005-03-27 03:30:00"_s} << "0 60"_ba;
        QTest::newRow("across the hour that comes twice")
            << sDateTime << QStringList{u"2005-10-30 01:30:00"_s, u"2005-10-30 03:30:00"_s} << "0 180"_ba;
        QTest::newRow("before 1970") << sDateTime
                                     << QStringList{u"1950-01-01 00:00:00"_s, u"1970-01-01 01:00:00"_s}
                                     << "0 10519260"_ba;
        QTest::newRow("beyond an int's range")
            << sDateTime << QStringList{u"1000-01-01 00:00:00"_s, u"9999-12-31 23:59:59"_s}
            << "0 2147483647"_ba;
        QTest::newRow("one row") << sDateTime << QStringList{u"2006-05-10 10:00:00"_s} << "0"_ba;
    }

    void fillDateGivesMinutesAfterTheFirstRow()
    {
        QFETCH(QString, sType);
        QFETCH(QStringList, slDates);
        QFETCH(QByteArray, oMinutes);
        CPlainHost oHost;
        datedhost::show(oHost, oServer, {slDates, sType});
        QCOMPARE(fillDate(oHost, slDates.size()), oMinutes + " -7777");
    }

    void aTimeThatSummerTimeSkipsIsReadable()
    {
        CPlainHost oHost;
        datedhost::show(oHost, oServer, {{u"2005-03-27 01:30:00"_s, u"2005-03-27 02:30:00"_s}});
        const QByteArray oMinutes = fillDate(oHost, 2);
        QVERIFY2(oMinutes == "0 0 -7777" || oMinutes == "0 60 -7777", oMinutes);
        QCOMPARE(oHost.output(), QByteArrayList());
    }

    void unreadableRowsAreLeftAloneAndWarnedOf_data()
    {
        QTest::addColumn<QString>("sType");
        QTest::addColumn<QStringList>("slDates");
        QTest::addColumn<QByteArray>("oMinutes");
        QTest::addColumn<QByteArrayList>("lUnreadable");
        QTest::newRow("NULL and zeros") << u"DATETIME"_s
                                        << QStringList{QString(), QString(), u"0000-00-00"_s,
                                               u"2006-05-10 10:00:00"_s, u"2006-05-10 11:00:00"_s}
                                        << "-7777 -7777 -7777 0 60 -7777"_ba << QByteArrayList{"", "", ""};
        QTest::newRow("a month without day")
            << u"DATETIME"_s << QStringList{u"2006-05-00"_s, u"2006-05-10 10:00:00"_s} << "-7777 0 -7777"_ba
            << QByteArrayList{""};
        QTest::newRow("days") << u"DATE"_s << QStringList{u"2006-05-10"_s, u"2006-05-11"_s}
                              << "-7777 -7777 -7777"_ba << QByteArrayList{"2006-05-10", "2006-05-11"};
        QTest::newRow("texts between others")
            << u"VARCHAR(99)"_s
            << QStringList{u"2006-05-09"_s, u"2006-05-10T10:00:00"_s, u"2006-05-10T11"_s,
                   u"2006-05-10T11:00:00"_s, u"2006-13-10T11:00:00"_s, u"März"_s, u"дата"_s}
            << "-7777 0 -7777 60 -7777 -7777 -7777 -7777"_ba
            << QByteArrayList{"2006-05-09", "2006-05-10T11", "2006-13-10T11:00:00", "M\xe4rz", "????"};
    }

    void unreadableRowsAreLeftAloneAndWarnedOf()
    {
        // given
        QFETCH(QString, sType);
        QFETCH(QStringList, slDates);
        QFETCH(QByteArray, oMinutes);
        QFETCH(QByteArrayList, lUnreadable);
        CPlainHost oHost;
        datedhost::show(oHost, oServer, {slDates, sType});
        QByteArrayList lWarnings;
        for (const QByteArray& oDate : lUnreadable)
            lWarnings << datedhost::warning(oDate);
        // when, then
        QCOMPARE(fillDate(oHost, slDates.size()), oMinutes);
        QCOMPARE(oHost.output(), lWarnings);
        // and again
        QCOMPARE(fillDate(oHost, slDates.size()), oMinutes);
        QCOMPARE(oHost.output(), lWarnings + lWarnings);
    }

    void anUnreadableRowIsWarnedOfAtOnce()
    {
        // given a host that prints nothing itself any more when the walk over many rows ends
        Dates oDates = datedhost::days(20000);
        oDates.slDates[19999] = u"tomorrow"_s;
        oDates.sType = u"VARCHAR(99)"_s;
        for (int i = 0; i < 19999; i++)
            oDates.slDates[i] += u"T12:00:00"_s;
        CPlainHost oHost;
        datedhost::show(oHost, oServer, oDates);
        // when
        oHost.call("markRow", {"k:2999-01-01 00:00:00", "i:1"});
        // then
        QTUTILS_WAIT_FOR(oHost.output() == QByteArrayList({datedhost::warning("tomorrow")}));
    }

    void earlierRowsInTheOrderOfTheTableAreNegative()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        datedhost::show(
            oHost, oServer, {{u"2006-05-10 10:00:00"_s, u"2006-05-09 10:00:00"_s, u"2006-05-10 09:58:30"_s}});
        oAnalyst.showWindow();
        QCOMPARE(fillDate(oHost, 3), "0 1439 1440 -7777");
        // when
        oAnalyst.choose("Sort", "id");
        QCOMPARE(oAnalyst.menu("SortMenu"),
            QByteArrayList({"[ ] node", "[ ] dist", "[x] id", "[ ] date", "[ ] title", "[ ] text"}));
        // then
        QCOMPARE(fillDate(oHost, 3), "0 -1440 -2 -7777");
    }

    void withoutARowFillDateWritesNothingAndWaitsStill()
    {
        // given
        CPlainHost oHost;
        oHost.start();
        // when nothing was chosen, then a node without documents, then also another table was named
        QCOMPARE(fillDate(oHost, 0), "-7777");
        oHost.call("select", {"i:3"});
        QCOMPARE(oHost.call("fillDate", {"oi:1"}), "-7777");
        oHost.command({"start", "1", "call", "getNumRows", "oi:1"});
        QCOMPARE(oHost.command({"finished", "1"}), "no");
        oHost.call("setRowColors", {"c:1x0,0,0"});
        QCOMPARE(oHost.command({"join", "1"}), "0");
        oHost.announceErrors({"CNodeBrowser: Changed Table to news_train"});
        oHost.call("setSOMTable", {"t:news_train"});
        QCOMPARE(fillDate(oHost, 0), "-7777");
    }

    void withoutADateColumnTheNodeStandsIn()
    {
        // given a column that is no "date", though the server sorts by it
        CPlainHost oHost;
        datedhost::show(
            oHost, oServer, {{u"2006-05-10 10:00:00"_s, u"2006-05-10 10:00:00"_s}, u"DATETIME"_s, u"Date"_s});
        // when, then
        QCOMPARE(fillDate(oHost, 2), "-7777 -7777 -7777");
        QCOMPARE(oHost.output(), QByteArrayList(2, datedhost::warning("0")));
    }

    void aWindowThatWaitsDoesNothingUntilAnotherThreadSetsTheColors()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        datedhost::show(oHost, oServer, {{u"2006-05-10 10:00:00"_s, u"2006-05-10 11:00:00"_s}});
        oAnalyst.showWindow();
        const int iWindowThread = oHost.threads().at(1);
        oAnalyst.table();
        // when
        QCOMPARE(oHost.call("fillDate", {"oi:2"}), "0 60");
        QTUTILS_WAIT_FOR(oHost.sleepsIn(iWindowThread, SYS_futex));
        oServer.startLog();
        const QImage oBefore = windowPicture();
        oAnalyst.press({"alt+f"});
        oHost.call("select", {"i:1"});
        oHost.command({"start", "1", "ask", "open menu"});
        // then
        QVERIFY(oHost.sleepsIn(iWindowThread, SYS_futex));
        QCOMPARE(oHost.command({"finished", "1"}), "no");
        QCOMPARE(oServer.log(), QStringList());
        QCOMPARE(windowPicture(), oBefore);
        // when
        oHost.command({"start", "2", "call", "setRowColors", "c:2x120,255,255"});
        oHost.command({"join", "2"});
        // then all that was asked for meanwhile is carried out
        QCOMPARE(oHost.command({"join", "1"}), "&Quit");
        QCOMPARE(oHost.numRows(), 0);
        QCOMPARE(oServer.log().size(), 1);
    }

    void theColorsThatReleaseTheWindowArePainted()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        datedhost::show(oHost, oServer, {{u"2006-05-10 10:00:00"_s, u"2006-05-10 11:00:00"_s}});
        oHost.call("fillDate", {"oi:2"});
        // when
        oHost.call("setRowColors", {"c:2x120,255,255"});
        oAnalyst.showWindow();
        // then
        QTUTILS_WAIT_FOR(oScreen.pixels(qRgb(0, 255, 0)) > 1000);
        oAnalyst.table();
    }

private:
    /// As a host that needs the dates only: one element more than there are rows.
    static QByteArray fillDate(CPlainHost& oHost, qsizetype iRows)
    {
        const QByteArray oElements = QByteArray::number(iRows + 1);
        const QByteArray oMinutes = oHost.call("fillDate", {"oi:" + oElements});
        oHost.call("setRowColors", {"c:" + oElements + "x0,0,0"});
        return oMinutes;
    }

    QImage windowPicture() const { return oScreen.picture().copy(oScreen.place("Ombrel")); }

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleDates)
#include "tst_module_dates.moc"
