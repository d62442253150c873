// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "data/CLocalTimes.h"

#include "tests/support/CStrictTest.h"

#include <QTest>

#include <random>

namespace {

constexpr std::time_t Day = 86400; ///< seconds
constexpr std::int32_t FirstDay = 0; ///< 1970-01-01
constexpr std::int32_t LastDay = 24837; ///< 2038-01-01

std::time_t judge(std::tm oFields)
{
    oFields.tm_isdst = -1;
    return std::mktime(&oFields);
}

long offsetAt(std::time_t t)
{
    std::tm oFields{};
    localtime_r(&t, &oFields);
    return oFields.tm_gmtoff;
}

} // namespace

/// mktime() is the judge.
class TestLocalTimes : public CStrictTest
{
    Q_OBJECT

private Q_SLOTS:
    void eachMinuteAroundAChangeIsThatOfTheZone_data()
    {
        QTest::addColumn<QByteArray>("oZone");
        for (const char* pcZone :
            {"Europe/Berlin", "America/New_York", "America/Sao_Paulo", "Asia/Kolkata", "Australia/Lord_Howe",
                "Africa/Casablanca", "Pacific/Apia", "Asia/Gaza", "America/Havana", "Antarctica/Troll",
                "America/Caracas", "UTC", "right/Europe/Berlin", "NST3:30NDT,M3.2.0,M11.1.0"})
            QTest::newRow(pcZone) << QByteArray(pcZone);
    }

    void eachMinuteAroundAChangeIsThatOfTheZone()
    {
        setZone();
        CLocalTimes oTimes;
        for (std::int32_t iDay = FirstDay; iDay < LastDay; iDay++)
            if (offsetAt(iDay * Day) != offsetAt((iDay + 1) * Day))
                for (std::int32_t i = iDay - 2; i < iDay + 4; i++)
                    compareDay(oTimes, i);
    }

    void anyOrderGivesTheSame_data() { eachMinuteAroundAChangeIsThatOfTheZone_data(); }

    void anyOrderGivesTheSame()
    {
        setZone();
        std::mt19937 oRandom(3);
        std::uniform_int_distribution<std::int32_t> oDay(FirstDay, LastDay);
        std::uniform_int_distribution<int> oSecond(0, int(Day) - 1);
        std::vector<datetext::Stamp> vStamps;
        for (int i = 0; i < 20000; i++)
            vStamps.push_back({oDay(oRandom), oSecond(oRandom)});
        compare(vStamps);
    }

    void anHourThatComesTwiceGoesOnAsTheDateBefore()
    {
        qputenv("TZ", "Europe/Berlin");
        const std::int32_t iDay = 13451; // 2006-10-30 is winter, the change was on the day before
        const datetext::Stamp oTwice{iDay - 1, 2 * 3600 + 1800};
        compare({{iDay - 100, 0}, oTwice, {iDay + 1, 0}, oTwice, oTwice, {iDay - 100, 1}, oTwice});
    }

    void farYearsAreThoseOfTheZone()
    {
        qputenv("TZ", "Europe/Berlin");
        compare({{-719162, 0}, {-719161, 43200}, {-28000, 5}, {-25000, 7}, {-1, 0}, {2932896, 86399}});
    }

    void aChangedZoneCountsForTheNextObject()
    {
        qputenv("TZ", "UTC");
        QCOMPARE(CLocalTimes().time({13000, 0}), 13000 * Day);
        qputenv("TZ", "Europe/Berlin");
        QCOMPARE(CLocalTimes().time({13000, 0}), 13000 * Day - 7200);
    }

private:
    static void setZone()
    {
        QFETCH(QByteArray, oZone);
        qputenv("TZ", oZone);
    }

    static void compareDay(CLocalTimes& oTimes, std::int32_t iDay)
    {
        std::vector<std::time_t> vtTimes;
        for (int iSecond = 0; iSecond < Day; iSecond += 60)
            vtTimes.push_back(oTimes.time({iDay, iSecond}));
        judge(datetext::fields({iDay - 1, int(Day) - 60}));
        for (int iSecond = 0; iSecond < Day; iSecond += 60)
            QCOMPARE(vtTimes[std::size_t(iSecond / 60)], judge(datetext::fields({iDay, iSecond})));
    }

    static void compare(const std::vector<datetext::Stamp>& vStamps)
    {
        CLocalTimes oTimes;
        std::vector<std::time_t> vtTimes;
        for (const auto& oStamp : vStamps)
            vtTimes.push_back(oTimes.time(oStamp));
        for (std::size_t i = 0; i < vStamps.size(); i++)
            QCOMPARE(vtTimes[i], judge(datetext::fields(vStamps[i])));
    }
};

QTEST_GUILESS_MAIN(TestLocalTimes)
#include "tst_localtimes.moc"
