// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CDateFilter.h"
#include "datedhost.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

#include <QDateTime>

#include <ctime>

using namespace Qt::StringLiterals;

namespace {

/// What the host writes into TZ, and how many minutes the zone is ahead of UTC in the middles of January and
/// July.
struct Zone
{
    QByteArray oName;
    int iJanuary;
    int iJuly;
};

QList<Zone> zones()
{
    QList<Zone> lZones{
        {"UTC0", 0, 0}, {"CET-1CEST,M3.5.0,M10.5.0/3", 60, 120}, {"CET-1CEST", 60, 120},
        {"AEST-10AEDT,M10.1.0,M4.1.0/3", 660, 600}, {"<+0530>-5:30", 330, 330}, {"<-0930>9:30", -570, -570},
        {"XXX-14", 840, 840}, {"XXX12", -720, -720}, {"XXX24", -1440, -1440},
        {"XXX0YYY-12,M3.5.0,M10.5.0", 0, 720},
        {"IST-1GMT0,M10.5.0,M3.5.0/1", 0, 60}, // summer time is the usual one here
        {"XXX-1YYY,0/0,J365/25", 120, 120}, // no end
    };
    const QByteArrayList lNone{"", ":", ":nonsense", "nonsense", "Nowhere/Village", "XXX", "X1", "12345",
        ",M3.5.0,M10.5.0", "%s%n", "\xff\xfe", "/dev/null", "/etc/passwd", "../../../etc/passwd",
        QByteArray(4000, 'X')};
    for (const QByteArray& oName : lNone)
        lZones << Zone{oName, 0, 0};
    return lZones;
}

QByteArray minutes(const QDate& oDate, int iAhead)
{
    return QByteArray::number(QDateTime(oDate, QTime(12, 0), Qt::UTC).toSecsSinceEpoch() / 60 - iAhead);
}

} // namespace

/// The time zone that the host sets in TZ, which counts for each call anew.
class TestModuleBadInputZones : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { oServer.load(u"news.sql"_s); }

    void everyCallReadsTheZoneAnew()
    {
        // given
        constexpr int Days = 181; // between them
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        datedhost::show(oHost, oServer, {{u"2005-01-15 12:00:00"_s, u"2005-07-15 12:00:00"_s}});
        for (const Zone& oZone : zones()) {
            // when
            oHost.command({"env", "TZ", oZone.oName});
            // then
            const QByteArray oJuly = minutes({2005, 7, 15}, oZone.iJuly);
            QCOMPARE(oHost.call("dateToInt", {"t:2005-01-15 12:00:00", "oi:1"}),
                minutes({2005, 1, 15}, oZone.iJanuary));
            QCOMPARE(oHost.call("dateToInt", {"t:2005-07-15 12:00:00", "oi:1"}), oJuly);
            oHost.call("markRow", {"k:2005-07-15 12:00:00", "i:1"});
            QCOMPARE(oHost.call("getFirstDateInFrame", {"oi:1"}), oJuly);
            QCOMPARE(oHost.call("fillDate", {"oi:2"}),
                "0 " + QByteArray::number(Days * 1440 + oZone.iJanuary - oZone.iJuly));
            oHost.call("setRowColors", {"c:2x0,0,0"});
        }
        QCOMPARE(oAnalyst.currentCell(), "1 0");
    }

    void withoutAZoneItIsTheMachines()
    {
        CPlainHost oHost;
        oHost.command({"unenv", "TZ"});
        oHost.load();
        QCOMPARE(oHost.call("dateToInt", {"t:2005-01-15 12:00:00", "oi:1"}), machinesMinutes());
    }

    void aFrameCountsElapsedTime_data()
    {
        QTest::addColumn<QByteArray>("oZone");
        QTest::addColumn<QByteArray>("oDate");
        QTest::addColumn<QByteArray>("oFrame");
        QTest::addColumn<QString>("sStart");
        const QByteArray oBerlin = "CET-1CEST,M3.5.0,M10.5.0/3";
        QTest::newRow("over a gap") << oBerlin << "k:2005-03-27 03:00:30"_ba
                                    << "i:1"_ba << u"2005-03-27 00:59:30"_s;
        QTest::newRow("over an overlap") << oBerlin << "k:2005-10-30 04:00:30"_ba
                                         << "i:3"_ba << u"2005-10-30 01:57:30"_s;
        // Before 1970 such a zone has no summer time.
        QTest::newRow("in 1901") << oBerlin << "k:1901-03-31 03:00:30"_ba
                                 << "i:1"_ba << u"1901-03-31 01:59:30"_s;
        QTest::newRow("over a gap in 2039") << oBerlin << "k:2039-03-27 03:00:30"_ba
                                            << "i:1"_ba << u"2039-03-27 00:59:30"_s;
        QTest::newRow("over an overlap in 2039") << oBerlin << "k:2039-10-30 04:00:30"_ba
                                                 << "i:3"_ba << u"2039-10-30 01:57:30"_s;
        QTest::newRow("over a gap of half an hour") << "LHST-10:30LHDT-11,M10.1.0,M4.1.0"_ba
                                                    << "k:2005-10-02 02:30:30"_ba
                                                    << "i:1"_ba << u"2005-10-02 00:59:30"_s;
        QTest::newRow("over a gap at midnight") << "BRT3BRST,M10.3.0/0,M2.3.0/0"_ba
                                                << "k:2005-10-16 01:00:30"_ba
                                                << "i:1"_ba << u"2005-10-15 22:59:30"_s;
        QTest::newRow("ten days over a gap") << oBerlin << "k:2005-04-01 12:00:00"_ba
                                             << "i:0"_ba << u"2005-03-22 11:00:00"_s;
    }

    void aFrameCountsElapsedTime()
    {
        QFETCH(QByteArray, oZone);
        QFETCH(QByteArray, oDate);
        QFETCH(QByteArray, oFrame);
        QFETCH(QString, sStart);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oHost.command({"env", "TZ", oZone});
        datedhost::show(oHost, oServer, {{sStart, QString(sStart).replace(sStart.size() - 1, 1, u"1"_s)}});
        oHost.call("markRow", {oDate, oFrame});
        QCOMPARE(oAnalyst.currentCell(), "1 0");
    }

    void aZoneChangesNoText()
    {
        // given times that one zone or another skips or has twice
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        datedhost::show(
            oHost, oServer, {{u"2005-03-27 02:30:00"_s, u"2005-10-16 00:30:00"_s, u"2005-10-30 02:30:00"_s}});
        for (const char* pcZone :
            {"CET-1CEST,M3.5.0,M10.5.0/3", "BRT3BRST,M10.3.0/0,M2.3.0/0", "XXX24", ":nonsense"}) {
            // when
            oHost.command({"env", "TZ", pcZone});
            oHost.call("select", {"i:0"});
            // then
            QCOMPARE(oAnalyst.table(),
                QByteArrayList({"date | title", "27.03.05 02:30 | row 1", "16.10.05 00:30 | row 2",
                    "30.10.05 02:30 | row 3"}));
            QCOMPARE(oHost.call("getFirstDateInSelection", {"ot:20"}), "2005-03-27T02:30:00");
        }
    }

    // As every time that summer time skips.
    void aDayWhoseMidnightIsSkippedCantBeFiltered()
    {
        CDateFilter oFilter(oServer, oScreen);
        oFilter.oHost.command({"env", "TZ", "BRT3BRST,M10.3.0/0,M2.3.0/0"});
        oFilter.fillIn("16102005", {"Tab"});
        QCOMPARE(oFilter.field(), "16.10.2000 00:00:00");
        QCOMPARE(oFilter.conditions().last(), CDateFilter::day(u"2000-10-16"_s));
    }

private:
    /// Noon of 2005-01-15 in the zone of the machine.
    static QByteArray machinesMinutes()
    {
        const QByteArray oZone = qgetenv("TZ");
        qunsetenv("TZ");
        std::tm oNoon{};
        oNoon.tm_year = 105;
        oNoon.tm_mday = 15;
        oNoon.tm_hour = 12;
        oNoon.tm_isdst = -1;
        const std::time_t iNoon = std::mktime(&oNoon);
        qputenv("TZ", oZone);
        return QByteArray::number(qint64(iNoon) / 60);
    }

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleBadInputZones)
#include "tst_module_badinput_zones.moc"
