// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CDateFilter.h"
#include "datedhost.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

#include <QDateTime>

#include <algorithm>
#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;
using datedhost::Dates;

namespace {

/// Instants where somebody's calendar or number ends, in their order, with the seconds between them and UTC.
const QList<std::pair<QString, int>> FarAway{{u"0001-01-01 00:00:00"_s, 3600},
    {u"1000-01-01 00:00:00"_s, 3600}, {u"1582-10-10 12:00:00"_s, 3600}, {u"1901-12-13 21:45:51"_s, 3600},
    {u"1901-12-13 23:45:53"_s, 3600}, {u"1969-12-31 23:59:59"_s, 3600}, {u"2000-02-29 12:00:00"_s, 3600},
    {u"2038-01-19 04:14:07"_s, 3600}, {u"2038-01-19 06:14:09"_s, 3600}, {u"2039-07-01 12:00:00"_s, 7200},
    {u"9999-12-31 23:59:59"_s, 3600}};

double seconds(int iInstant)
{
    const auto& [sText, iOffset] = FarAway[iInstant];
    const QDateTime oLocal = QDateTime::fromString(sText, Qt::ISODate);
    return double(QDateTime(oLocal.date(), oLocal.time(), Qt::OffsetFromUTC, iOffset).toSecsSinceEpoch());
}

QByteArray minutes(double fSeconds)
{
    return QByteArray::number(
        qint64(std::min<double>(std::round(fSeconds / 60), std::numeric_limits<int>::max())));
}

QStringList texts()
{
    QStringList slTexts;
    for (const auto& [sText, iOffset] : FarAway)
        slTexts << sText;
    return slTexts;
}

} // namespace

/// Dates that are none, or far away: the host's, the database's and those of the date filter.
class TestModuleBadInputDates : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        oServer.load(u"news.sql"_s);
        for (int i = 0; i < FarAway.size(); i++)
            oServer.sql(u"INSERT INTO news.document (id, date, title) VALUES (%1, '%2', 'far away'); "
                        "INSERT INTO som.news_train VALUES (1, 0.5, %1)"_s.arg(100 + i)
                            .arg(FarAway[i].first));
    }

    void datesFarAwayAreMarkedAndCounted()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        datedhost::show(oHost, oServer, {texts()});
        QByteArrayList lMinutes;
        for (int i = 0; i < FarAway.size(); i++) {
            // when
            oHost.call("markRow", {"k:" + FarAway[i].first.toUtf8(), "i:1"});
            // then
            QCOMPARE(oAnalyst.currentCell(), QByteArray::number(i) + " 0");
            QCOMPARE(oHost.call("getFirstDateInFrame", {"oi:1"}), minutes(seconds(i)));
            QCOMPARE(
                oHost.call("dateToInt", {"t:" + FarAway[i].first.toUtf8(), "oi:1"}), minutes(seconds(i)));
            lMinutes << minutes(seconds(i) - seconds(0));
        }
        QCOMPARE(fillDate(oHost, FarAway.size()), lMinutes.join(' '));
    }

    void aHostsOddYearMarksARow_data()
    {
        QTest::addColumn<QByteArray>("oDate");
        QTest::addColumn<QByteArray>("oCurrent");
        // What can't be read is the last day of 1899, what can be read counts.
        QTest::newRow("year 0") << "k:0000-01-01 00:00:00"_ba
                                << "0 0"_ba;
        QTest::newRow("negative year") << "k:-2005-01-01 00:00:00"_ba
                                       << "2 0"_ba;
        QTest::newRow("five digits of the year: year 1000") << "k:10000-01-01 00:00:00"_ba
                                                            << "1 0"_ba;
        QTest::newRow("year 9999") << "k:9999-12-31 23:59:59"_ba
                                   << "none"_ba;
    }

    void aHostsOddYearMarksARow()
    {
        QFETCH(QByteArray, oDate);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        datedhost::show(oHost, oServer,
            {{u"0900-01-01 00:00:00"_s, u"1500-01-01 00:00:00"_s, u"1900-01-01 00:00:00"_s,
                u"2005-03-01 12:00:00"_s}});
        oHost.call("markRow", {oDate, "i:1"});
        QTEST(oAnalyst.currentCell(), "oCurrent");
    }

    void aColumnOfAnotherTypeIsReadByItsText_data()
    {
        QTest::addColumn<QString>("sType");
        QTest::addColumn<QStringList>("slDates");
        QTest::addColumn<QByteArray>("oFirst");
        QTest::addColumn<QByteArray>("oMinutes");
        QTest::addColumn<QByteArrayList>("lUnreadable");
        const QStringList slTexts{u"0000-01-01T00:00:00"_s, u"0001-01-01T00:00:00"_s,
            u"1970-01-01T01:00:00"_s, u"1970-01-01T01:00:00\\n2006"_s, u"1970-01-01T01:00:60"_s,
            u"1970-01-01T24:00:00"_s, u"1970-01-01t01:00:00"_s, u"1970-02-31T01:00:00"_s,
            u"9999-12-31T23:59:59"_s};
        QTest::newRow("time") << u"TIME"_s << QStringList{u"12:00:00"_s, u"-838:59:59"_s} << "-838:59:59"_ba
                              << "-7777 -7777"_ba << QByteArrayList{"-838:59:59", "12:00:00"};
        QTest::newRow("year") << u"YEAR"_s << QStringList{u"2005"_s} << "2005"_ba
                              << "-7777"_ba << QByteArrayList{"2005"};
        QTest::newRow("number") << u"BIGINT"_s << QStringList{u"20050301120000"_s} << "20050301120000"_ba
                                << "-7777"_ba << QByteArrayList{"20050301120000"};
        QTest::newRow("bits") << u"BIT(8)"_s << QStringList{u"A"_s} << "A"_ba
                              << "-7777"_ba << QByteArrayList{"A"};
        QTest::newRow("enum") << u"ENUM('2005-03-01T12:00:00')"_s
                              << QStringList{u"2005-03-01T12:00:00"_s, u"x"_s} << ""_ba
                              << "-7777 0"_ba << QByteArrayList{""};
        QTest::newRow("bytes, read up to a NUL")
            << u"BLOB"_s
            << QStringList{u"2005-03-01T12:01:00"_s, u"2005-03-01T12:00:00\\0z"_s, u"\\0"_s, u"1\\0"_s}
            << ""_ba
            << "-7777 -7777 0 1"_ba << QByteArrayList{"", "1"};
        QTest::newRow("texts")
            << u"TEXT"_s << slTexts << "0000-01-01T00:00:00"_ba
            << "0 527040 1036120380 1036120380 -7777 1036120381 -7777 1036208220 2147483647"_ba
            << QByteArrayList{"1970-01-01t01:00:00", "1970-01-01T24:00:00"};
    }

    void aColumnOfAnotherTypeIsReadByItsText()
    {
        QFETCH(QString, sType);
        QFETCH(QStringList, slDates);
        QFETCH(QByteArrayList, lUnreadable);
        CPlainHost oHost;
        datedhost::show(oHost, oServer, {slDates, sType});
        QTEST(oHost.call("getFirstDateInSelection", {"ot:20"}), "oFirst");
        QTEST(fillDate(oHost, slDates.size()), "oMinutes");
        for (QByteArray& oDate : lUnreadable)
            oDate = datedhost::warning(oDate);
        QCOMPARE(oHost.output(), lUnreadable);
    }

    void aDateOfAMegabyteIsSaidAndCopied()
    {
        CPlainHost oHost;
        datedhost::show(oHost, oServer, {{QString(1 << 20, u'x')}, u"MEDIUMTEXT"_s});
        const qsizetype iLongestAnswer = 4095; // of the host
        QCOMPARE(oHost.call("getFirstDateInSelection", {"ot:1048577"}), QByteArray(iLongestAnswer, 'x'));
        QCOMPARE(fillDate(oHost, 1), "-7777");
        QCOMPARE(oHost.output(), QByteArrayList{datedhost::warning(QByteArray(1 << 20, 'x'))});
    }

    void theFilterFindsDatesFarAway_data()
    {
        QTest::addColumn<QByteArray>("oDigits");
        QTest::addColumn<QByteArray>("oField");
        QTest::addColumn<QString>("sCondition");
        QTest::addColumn<QByteArrayList>("lRows");
        const auto none = [](const char* pcName, const QByteArray& oDigits) { // the years begin with 1752
            QTest::newRow(pcName) << oDigits << "02.01.2000 00:00:00"_ba << CDateFilter::day(u"2000-01-02"_s)
                                  << QByteArrayList{};
        };
        none("year 0", "02010000");
        none("year 1", "02010001");
        none("year 1000", "02011000");
        QTest::newRow("1901") << "13121901214551"_ba
                              << "13.12.1901 21:45:51"_ba << CDateFilter::instant(u"1901-12-13T21:45:51"_s)
                              << QByteArrayList{"13.12.01 21:45 | far away"};
        QTest::newRow("2038") << "19012038061409"_ba
                              << "19.01.2038 06:14:09"_ba << CDateFilter::instant(u"2038-01-19T06:14:09"_s)
                              << QByteArrayList{"19.01.38 06:14 | far away"};
        QTest::newRow("2039") << "01072039"_ba
                              << "01.07.2039 00:00:00"_ba << CDateFilter::day(u"2039-07-01"_s)
                              << QByteArrayList{"01.07.39 12:00 | far away"};
        QTest::newRow("9999") << "31129999235959"_ba
                              << "31.12.9999 23:59:59"_ba << CDateFilter::instant(u"9999-12-31T23:59:59"_s)
                              << QByteArrayList{"31.12.99 23:59 | far away"};
    }

    void theFilterFindsDatesFarAway()
    {
        QFETCH(QByteArray, oDigits);
        QFETCH(QByteArrayList, lRows);
        CDateFilter oFilter(oServer, oScreen);
        oFilter.fillIn(oDigits, {"Tab"});
        QTEST(oFilter.field(), "oField");
        QTEST(oFilter.conditions().last(), "sCondition");
        QCOMPARE(oFilter.oAnalyst.table(), QByteArrayList{"date | title"} + lRows);
    }

private:
    static QByteArray fillDate(CPlainHost& oHost, qsizetype iRows)
    {
        const QByteArray oMinutes = oHost.call("fillDate", {"oi:" + QByteArray::number(iRows)});
        oHost.call("setRowColors", {"c:20x0,0,0"});
        return oMinutes;
    }

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleBadInputDates)
#include "tst_module_badinput_dates.moc"
