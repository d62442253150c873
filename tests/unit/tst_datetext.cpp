// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "data/datetext.h"

#include <QTest>

#include <array>
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

    void aServersDateIsReadByPosition_data()
    {
        QTest::addColumn<QByteArray>("oDate");
        QTest::addColumn<qint64>("iSeconds"); // of a world without zones
        QTest::newRow("first day") << "1970-01-01 00:00:00"_ba << qint64(0);
        QTest::newRow("afternoon") << "2005-03-01 13:05:07"_ba << qint64(1109682307);
        QTest::newRow("with a fraction") << "2005-03-01 13:05:07.999999"_ba << qint64(1109682307);
        QTest::newRow("before the first day") << "1969-12-31 23:59:58"_ba << qint64(-2);
        QTest::newRow("leap day") << "2000-02-29 00:00:00"_ba << qint64(951782400);
        QTest::newRow("first year") << "0001-01-01 00:00:00"_ba << qint64(-62135596800);
        QTest::newRow("last second") << "9999-12-31 23:59:59"_ba << qint64(253402300799);
    }

    void aServersDateIsReadByPosition()
    {
        QFETCH(QByteArray, oDate);
        const auto oStamp = datetext::stamp(oDate.toStdString());
        QVERIFY(oStamp.has_value());
        QTEST(qint64(oStamp->iDay) * 86400 + oStamp->iSecond, "iSeconds");
        const std::tm oFields = datetext::fields(*oStamp);
        std::array<char, 20> acText{};
        std::strftime(acText.data(), acText.size(), "%Y-%m-%d %H:%M:%S", &oFields);
        QCOMPARE(QByteArray(acText.data()).rightJustified(19, '0'), oDate.first(19));
    }

    void otherTextsAreNoServersDate_data()
    {
        QTest::addColumn<QByteArray>("oDate");
        for (const char* pcDate :
            {"", "2005-03-01", "2005-03-01T13:05:07", "2005-03-01 13:05", "2005-03-01 13:05:07 ",
                "2005-03-01 13:05:0x", "2005-0a-01 13:05:07", "0000-00-00 00:00:00", "0000-01-01 00:00:00",
                "2005-00-01 00:00:00", "2005-13-01 00:00:00", "2005-02-29 00:00:00", "2005-03-00 00:00:00",
                "2005-03-01 24:00:00", "2005-03-01 13:60:00", "2005-03-01 13:00:60", "-005-03-01 13:05:07"})
            QTest::newRow(pcDate) << QByteArray(pcDate);
    }

    void otherTextsAreNoServersDate()
    {
        QFETCH(QByteArray, oDate);
        QVERIFY(!datetext::stamp(oDate.toStdString()));
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
        QTest::newRow("greatest") << std::numeric_limits<qint64>::max() << std::numeric_limits<int>::max();
        QTest::newRow("least") << std::numeric_limits<qint64>::min() << std::numeric_limits<int>::min();
    }

    void minutesRoundHalvesAwayFromZero()
    {
        QFETCH(qint64, iSeconds);
        QTEST(datetext::minutes(iSeconds), "iMinutes");
    }
};

QTEST_GUILESS_MAIN(TestDateText)
#include "tst_datetext.moc"
