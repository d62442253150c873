// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CPlainHost.h"
#include "moduletest.h"

#include <QDateTime>

using namespace Qt::StringLiterals;

namespace {

QByteArray minutes(const QDate& oDate, const QTime& oTime)
{
    return QByteArray::number(QDateTime(oDate, oTime, Qt::UTC).toSecsSinceEpoch() / 60);
}

const QByteArray Berlin = "CET-1CEST,M3.5.0,M10.5.0/3";

} // namespace

/// Date texts of the host in minutes. There is no window.
class TestModuleMinutes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyTextBecomesMinutes_data()
    {
        QTest::addColumn<QByteArray>("oText");
        QTest::addColumn<QByteArray>("oMinutes");
        const QByteArray oRead = minutes({2005, 3, 1}, {11, 30});
        const QByteArray oDay = minutes({2005, 2, 28}, {23, 0});
        const QByteArray oYearOnly = minutes({2004, 12, 30}, {23, 0}); // the day before the first one
        const QByteArray oYearOne = "-1035594780"; // year 1 begins a year after the year 0 of 366 days
        const QByteArray oNothing = minutes({1899, 12, 30}, {23, 0});
        QTest::newRow("complete") << "t:2005-03-01 12:30:00"_ba << oRead;
        QTest::newRow("surplus fraction") << "t:2005-03-01 12:30:00.999"_ba << oRead;
        QTest::newRow("surplus words") << "t:2005-03-01 12:30:00 or so"_ba << oRead;
        QTest::newRow("surplus digits") << "t:2005-03-01 12:30:0012345"_ba << oRead;
        QTest::newRow("surplus bytes") << "t:2005-03-01 12:30:00\xff\xfe\xe4"_ba << oRead;
        QTest::newRow("leading blanks") << "t:   2005-03-01 12:30:00"_ba << oRead;
        QTest::newRow("blanks between") << "t:2005- 3- 1    12: 30: 0"_ba << oRead;
        QTest::newRow("no blank between") << "t:2005-03-0112:30:00"_ba << oRead;
        QTest::newRow("single digits") << "t:2005-3-1 12:30:0"_ba << oRead;
        QTest::newRow("no seconds") << "t:2005-03-01 12:30"_ba << oRead;
        QTest::newRow("no time") << "t:2005-03-01"_ba << oDay;
        QTest::newRow("a T between") << "t:2005-03-01T12:30:00"_ba << oDay;
        QTest::newRow("a hard blank between") << "t:2005-03-01\xc2\xa0"
                                                 "12:30:00"_ba
                                              << oDay;
        QTest::newRow("hour 24") << "t:2005-03-01 24:00:00"_ba << oDay;
        QTest::newRow("minute 60 is a 6 and more")
            << "t:2005-03-01 12:60:00"_ba << minutes({2005, 3, 1}, {11, 6});
        QTest::newRow("second 60") << "t:2005-03-01 12:30:60"_ba << minutes({2005, 3, 1}, {11, 31});
        QTest::newRow("second 62") << "t:2005-03-01 12:30:62"_ba << oRead;
        QTest::newRow("February 30") << "t:2005-02-30 12:30:00"_ba << minutes({2005, 3, 2}, {11, 30});
        QTest::newRow("day 32") << "t:2005-03-32 12:30:00"_ba << minutes({2005, 2, 27}, {23, 0});
        QTest::newRow("day 0") << "t:2005-03-00 12:30:00"_ba << minutes({2005, 2, 27}, {23, 0});
        QTest::newRow("month 13") << "t:2005-13-01 12:30:00"_ba << oYearOnly;
        QTest::newRow("month 0") << "t:2005-00-01 12:30:00"_ba << oYearOnly;
        QTest::newRow("negative month") << "t:2005--3-01 12:30:00"_ba << oYearOnly;
        QTest::newRow("year only") << "t:2005"_ba << oYearOnly;
        QTest::newRow("two digits of the year") << "t:05-03-01 12:30:00"_ba << minutes({5, 3, 1}, {11, 30});
        QTest::newRow("year 0") << "t:0000-01-01 00:00:00"_ba
                                << "-1036120380"_ba;
        QTest::newRow("year 12005") << "t:12005-03-01 12:30:00"_ba << minutes({1199, 12, 30}, {23, 0});
        QTest::newRow("negative year") << "t:-2005-03-01 12:30:00"_ba << oNothing;
        QTest::newRow("nothing") << "t:"_ba << oNothing;
        QTest::newRow("blanks") << "t:   "_ba << oNothing;
        QTest::newRow("words") << "t:the day before yesterday"_ba << oNothing;
        QTest::newRow("umlauts") << "t:1. M\xc3\xa4rz 2005"_ba << oYearOne;
        QTest::newRow("bytes that are no text") << "t:\xff\xfe\x80\xc3"_ba << oNothing;
        QTest::newRow("percent signs") << "t:%Y-%m-%d %s%n%n"_ba << oNothing;
        QTest::newRow("a million letters") << "r:1000000xa"_ba << oNothing;
        QTest::newRow("a million blanks") << "r:1000000x "_ba << oNothing;
        QTest::newRow("a million digits") << "r:1000000x1"_ba << minutes({1110, 12, 30}, {23, 0});
        QTest::newRow("a million characters of dates") << "r:50000x2005-03-01 12:30:00 "_ba << oRead;
    }

    void everyTextBecomesMinutes()
    {
        QFETCH(QByteArray, oText);
        QTEST(minutesOf(Berlin, oText), "oMinutes");
    }

    void theTimeIsThatOfTheHostsZone_data()
    {
        QTest::addColumn<QByteArray>("oZone");
        QTest::addColumn<QByteArray>("oText");
        QTest::addColumn<QByteArray>("oMinutes");
        const QByteArray oSydney = "AEST-10AEDT,M10.1.0,M4.1.0/3";
        const auto row = [](const char* pcName, const QByteArray& oZone, const QByteArray& oText,
                             const QByteArray& oMinutes) {
            QTest::newRow(pcName) << oZone << QByteArray("t:" + oText) << oMinutes;
        };
        row("winter", Berlin, "2005-03-01 12:00:00", minutes({2005, 3, 1}, {11, 0}));
        row("summer", Berlin, "2005-07-01 12:00:00", minutes({2005, 7, 1}, {10, 0}));
        row("before the gap", Berlin, "2005-03-27 01:59:29", minutes({2005, 3, 27}, {0, 59}));
        row("after the gap", Berlin, "2005-03-27 03:00:00", minutes({2005, 3, 27}, {1, 0}));
        row("before the overlap", Berlin, "2005-10-30 01:59:29", minutes({2005, 10, 29}, {23, 59}));
        row("after the overlap", Berlin, "2005-10-30 03:00:00", minutes({2005, 10, 30}, {2, 0}));
        row("no zone", "", "2005-07-01 12:00:00", minutes({2005, 7, 1}, {12, 0}));
        row("no such zone", "Nowhere/Village", "2005-07-01 12:00:00", minutes({2005, 7, 1}, {12, 0}));
        row("New York", "EST5EDT,M3.2.0,M11.1.0", "2010-07-01 21:00:00", minutes({2010, 7, 2}, {1, 0}));
        row("India", "IST-5:30", "2005-03-01 05:30:00", minutes({2005, 3, 1}, {0, 0}));
        row("summer in the south", oSydney, "2005-01-01 11:00:00", minutes({2005, 1, 1}, {0, 0}));
        row("winter in the south", oSydney, "2005-07-01 10:00:00", minutes({2005, 7, 1}, {0, 0}));
        row("a zone with seconds, down", "XXX-0:19:31", "2005-03-01 12:00:00",
            minutes({2005, 3, 1}, {11, 40}));
        row("a zone with seconds, up", "XXX-0:19:30", "2005-03-01 12:00:00", minutes({2005, 3, 1}, {11, 41}));
        row("29 seconds", "UTC0", "2005-03-01 12:30:29", minutes({2005, 3, 1}, {12, 30}));
        row("30 seconds", "UTC0", "2005-03-01 12:30:30", minutes({2005, 3, 1}, {12, 31}));
        row("epoch", "UTC0", "1970-01-01 00:00:29", "0");
        row("30 seconds before the epoch", "UTC0", "1969-12-31 23:59:30", "0");
        row("31 seconds before the epoch", "UTC0", "1969-12-31 23:59:29", "-1");
        row("90 seconds before the epoch", "UTC0", "1969-12-31 23:58:30", "-1");
        row("in the year before", "UTC0", "1969-01-01 00:00:00", "-525600");
        row("after 2038", "UTC0", "2100-01-01 00:00:00", minutes({2100, 1, 1}, {0, 0}));
        row("last minute of an int", "UTC0", "6053-01-23 02:07:29", "2147483647");
        row("beyond an int", "UTC0", "9999-12-31 23:59:59", "2147483647");
    }

    void theTimeIsThatOfTheHostsZone()
    {
        QFETCH(QByteArray, oZone);
        QFETCH(QByteArray, oText);
        QTEST(minutesOf(oZone, oText), "oMinutes");
    }

    void aTimeThatIsSkippedOrComesTwiceIsOneOfTwo_data()
    {
        QTest::addColumn<QByteArray>("oZone");
        QTest::addColumn<QByteArray>("oText");
        QTest::addColumn<QByteArray>("oEarlier");
        QTest::addColumn<QByteArray>("oLater");
        const QByteArray oLordHowe = "LHST-10:30LHDT-11,M10.1.0,M4.1.0";
        QTest::newRow("gap") << Berlin << "t:2005-03-27 02:30:00"_ba << minutes({2005, 3, 27}, {0, 30})
                             << minutes({2005, 3, 27}, {1, 30});
        QTest::newRow("overlap") << Berlin << "t:2005-10-30 02:30:00"_ba << minutes({2005, 10, 30}, {0, 30})
                                 << minutes({2005, 10, 30}, {1, 30});
        QTest::newRow("gap of half an hour")
            << oLordHowe << "t:2005-10-02 02:15:00"_ba << minutes({2005, 10, 1}, {15, 15})
            << minutes({2005, 10, 1}, {15, 45});
    }

    void aTimeThatIsSkippedOrComesTwiceIsOneOfTwo()
    {
        QFETCH(QByteArray, oZone);
        QFETCH(QByteArray, oText);
        QFETCH(QByteArray, oEarlier);
        QFETCH(QByteArray, oLater);
        const QByteArray oMinutes = minutesOf(oZone, oText);
        QVERIFY2(oMinutes == oEarlier || oMinutes == oLater, oMinutes);
    }

    void aZoneThatTheHostChangesCountsAtOnce()
    {
        CPlainHost oHost;
        oHost.load();
        const QByteArrayList lQuestion{"t:2005-07-01 12:00:00", "oi:1"};
        QCOMPARE(oHost.call("dateToInt", lQuestion), minutes({2005, 7, 1}, {10, 0}));
        oHost.command({"env", "TZ", "UTC0"});
        QCOMPARE(oHost.call("dateToInt", lQuestion), minutes({2005, 7, 1}, {12, 0}));
    }

private:
    static QByteArray minutesOf(const QByteArray& oZone, const QByteArray& oText)
    {
        CPlainHost oHost;
        oHost.command({"env", "TZ", oZone});
        oHost.load();
        return oHost.call("dateToInt", {oText, "oi:1"});
    }
};

QTUTILS_MODULE_TEST_MAIN(TestModuleMinutes)
#include "tst_module_minutes.moc"
