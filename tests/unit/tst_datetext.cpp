// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "data/datetext.h"

#include <QTest>

#include <ctime>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 Unreadable = -1;

} // namespace

class TestDateText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        qputenv("TZ", "Europe/Berlin");
        tzset();
    }

    void aRowsDateIsReadAsLocalTime_data()
    {
        QTest::addColumn<QByteArray>("oDate");
        QTest::addColumn<qint64>("iSeconds");
        QTest::newRow("winter") << "2005-03-01T13:00:00"_ba << qint64(1109678400);
        QTest::newRow("summer") << "2005-07-01T13:00:00"_ba << qint64(1120215600);
        QTest::newRow("with a fraction") << "2005-03-01T13:00:00.999"_ba << qint64(1109678400);
        QTest::newRow("blank for T") << "2005-03-01 13:00:00"_ba << Unreadable;
        QTest::newRow("day only") << "2005-03-01"_ba << Unreadable;
        QTest::newRow("no seconds") << "2005-03-01T13:00"_ba << Unreadable;
        QTest::newRow("month 13") << "2005-13-01T13:00:00"_ba << Unreadable;
        QTest::newRow("words") << "yesterday"_ba << Unreadable;
        QTest::newRow("empty") << ""_ba << Unreadable;
    }

    void aRowsDateIsReadAsLocalTime()
    {
        QFETCH(QByteArray, oDate);
        const auto iTime = datetext::rowTime(oDate.constData());
        QTEST(qint64(iTime.value_or(Unreadable)), "iSeconds");
    }

    void aTimeThatSummerTimeSkipsIsReadable()
    {
        // 01:00 UTC is the moment of the change; the skipped hour may count from either side of it
        const auto iTime = datetext::rowTime("2005-03-27T02:30:00");
        QVERIFY(iTime.has_value());
        QVERIFY(*iTime == 1111885200 - 1800 || *iTime == 1111885200 + 1800);
    }

    void aHostsDateIsReadAsLocalTime_data()
    {
        QTest::addColumn<QByteArray>("oDate");
        QTest::addColumn<qint64>("iSeconds");
        QTest::newRow("winter") << "2005-03-01 13:00:00"_ba << qint64(1109678400);
        QTest::newRow("summer") << "2006-05-10 12:00:00"_ba << qint64(1147255200);
        QTest::newRow("day only") << "2005-03-01"_ba << qint64(1109678400 - 13 * 3600);
        QTest::newRow("T ends it") << "2005-03-01T13:00:00"_ba << qint64(1109678400 - 13 * 3600);
    }

    void aHostsDateIsReadAsLocalTime()
    {
        QFETCH(QByteArray, oDate);
        QTEST(qint64(datetext::hostTime(oDate.constData())), "iSeconds");
    }

    void aHostsDateWithoutAnyNumberHasATime()
    {
        QCOMPARE(datetext::hostTime("nonsense"), datetext::hostTime(""));
    }

    void aHostsDateInMinutesRoundsHalvesUpward_data()
    {
        QTest::addColumn<QByteArray>("oDate");
        QTest::addColumn<int>("iMinutes");
        QTest::newRow("whole minute") << "1970-01-01 01:02:00"_ba << 2;
        QTest::newRow("29 seconds") << "1970-01-01 01:02:29"_ba << 2;
        QTest::newRow("30 seconds") << "1970-01-01 01:02:30"_ba << 3;
        QTest::newRow("30 seconds before the epoch") << "1970-01-01 00:59:30"_ba << 0;
        QTest::newRow("31 seconds before the epoch") << "1970-01-01 00:59:29"_ba << -1;
        QTest::newRow("beyond the range") << "9999-12-31 23:59:59"_ba << std::numeric_limits<int>::max();
    }

    void aHostsDateInMinutesRoundsHalvesUpward()
    {
        QFETCH(QByteArray, oDate);
        QTEST(datetext::hostMinutes(oDate.constData()), "iMinutes");
    }

    void minutesRoundHalvesAwayFromZero_data()
    {
        QTest::addColumn<qint64>("iSeconds");
        QTest::addColumn<int>("iMinutes");
        QTest::newRow("nothing") << qint64(0) << 0;
        QTest::newRow("never marked") << qint64(-1) << 0;
        QTest::newRow("29 seconds") << qint64(29) << 0;
        QTest::newRow("30 seconds") << qint64(30) << 1;
        QTest::newRow("90 seconds") << qint64(90) << 2;
        QTest::newRow("30 seconds less") << qint64(-30) << -1;
        QTest::newRow("90 seconds less") << qint64(-90) << -2;
        QTest::newRow("beyond the range") << (qint64(1) << 40) << std::numeric_limits<int>::max();
        QTest::newRow("below the range") << -(qint64(1) << 40) << std::numeric_limits<int>::min();
    }

    void minutesRoundHalvesAwayFromZero()
    {
        QFETCH(qint64, iSeconds);
        QTEST(datetext::minutes(iSeconds), "iMinutes");
    }
};

QTEST_GUILESS_MAIN(TestDateText)
#include "tst_datetext.moc"
