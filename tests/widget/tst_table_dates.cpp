// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CTestTable.h"

#include "tests/support/CPrivateServer.h"
#include "tests/support/CStandardOutput.h"
#include "tests/support/CStrictTest.h"
#include "tests/support/testmain.h"
#include "tests/support/threadstate.h"

#include <QDateTime>

#include <future>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int Untouched = -999;
const QString Unparsable = u"CNodeBrowser->CTable: Warning: The                        following Date could "
                           "not be parsed: "_s;

} // namespace

class TestTableDates : public CStrictTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { oServer.load(u"news.sql"_s); }

    void fillDateGivesMinutesAfterTheFirstRow()
    {
        CTestTable oTable;
        oTable.showDates(
            oServer, {u"2006-05-10 10:00:00"_s, u"2006-05-10 10:00:30"_s, u"2006-05-10 10:01:30"_s});
        QCOMPARE(fillDate(oTable, 3), (std::vector<int>{0, 1, 2, Untouched}));
    }

    void fillDateLeavesUnreadableRowsAlone()
    {
        CTestTable oTable;
        oTable.showDates(
            oServer, {QString(), u"2006-05-10 10:00:00"_s, u"0000-00-00"_s, u"2006-05-10 11:00:00"_s});
        CStandardOutput output;
        const auto viDates = fillDate(oTable, 4);
        QCOMPARE(output.lines(), (QStringList{Unparsable, Unparsable}));
        QCOMPARE(viDates, (std::vector<int>{Untouched, 0, Untouched, 60, Untouched}));
    }

    void fillDateSaysWhatItCannotRead()
    {
        oServer.sql(u"CREATE OR REPLACE TABLE news.dateless AS SELECT id, title FROM news.document"_s);
        CTestTable oTable;
        oTable.setTables(u"dateless"_s);
        oTable->changeSort(2);
        oTable->selection(2);
        CStandardOutput output;
        fillDate(oTable, 2);
        QCOMPARE(output.lines(), (QStringList{Unparsable + u"2"_s, Unparsable + u"2"_s}));
    }

    void fillDateIsNegativeForEarlierRows()
    {
        CTestTable oTable;
        oTable.showDates(oServer, {u"2006-05-10 10:00:00"_s, u"2006-05-09 10:00:00"_s});
        QCOMPARE(fillDate(oTable, 2), (std::vector<int>{0, -1440, Untouched}));
    }

    void fillDateCountsAcrossSummerTime()
    {
        CTestTable oTable;
        oTable.showDates(oServer, {u"2005-03-27 01:30:00"_s, u"2005-03-27 03:30:00"_s});
        QCOMPARE(fillDate(oTable, 2), (std::vector<int>{0, 60, Untouched}));
    }

    void fillDateOnAnEmptySelectionAnswersStill()
    {
        CTestTable oTable;
        oTable.setTables();
        QCOMPARE(fillDate(oTable, 0), std::vector<int>{Untouched});
        oTable->selection(3);
        QCOMPARE(fillDate(oTable, 0), std::vector<int>{Untouched});
    }

    void fillDateStaysWithinTheRowsOnDisplay()
    {
        CTestTable oTable;
        oTable.setTables();
        oTable->selection(3);
        oTable->setSOMTable(u"news_train"_s); // its probe has a row
        QCOMPARE(fillDate(oTable, 0), std::vector<int>{Untouched});
    }

    void fillDateBlocksUntilItIsReleased()
    {
        CTestTable oTable;
        oTable.showDates(oServer, {u"2006-05-10 10:00:00"_s});
        oTable.oHandover.open();
        // given a host that asks, and releases once the table sleeps or has gone on
        const pid_t iThread = gettid();
        std::atomic<bool> bGoneOn = false;
        bool bGoneOnTooEarly = false;
        int iSeen = Untouched;
        int iDate = Untouched;
        std::promise<void> oPosted;
        const auto oHost = std::async(std::launch::async, [&] {
            oTable.oHandover.ask(
                [&] {
                    oPosted.set_value();
                    return true;
                },
                CHandover::After::WaitsForRelease);
            iSeen = iDate;
            waitUntilAsleep(iThread, [&] { return bGoneOn.load(); });
            bGoneOnTooEarly = bGoneOn;
            oTable.oHandover.release();
        });
        // when the table answers
        oPosted.get_future().wait();
        oTable->fillDate(&iDate);
        bGoneOn = true;
        oHost.wait();
        // then the host has its answer, and the table has waited
        QCOMPARE(iSeen, 0);
        QVERIFY(!bGoneOnTooEarly);
    }

    void aTimeFrameCountsUnitsOf3660Seconds()
    {
        CTestTable oTable;
        oTable.showDates(oServer,
            {u"2006-05-10 10:58:59"_s, u"2006-05-10 10:59:00"_s, u"2006-05-10 10:59:01"_s,
                u"2006-05-10 11:01:01"_s});
        mark(oTable, "2006-05-10 12:00:00", 1);
        QCOMPARE(oTable->currentRow(), 2);
    }

    void aTimeFrameOfNoneIsTenDays_data()
    {
        QTest::addColumn<int>("iTimeFrame");
        QTest::newRow("none") << 0;
        QTest::newRow("negative") << -5;
    }

    void aTimeFrameOfNoneIsTenDays()
    {
        QFETCH(int, iTimeFrame);
        CTestTable oTable;
        oTable.showDates(oServer, {u"2006-05-10 12:00:00"_s, u"2006-05-10 12:00:01"_s});
        mark(oTable, "2006-05-20 12:00:00", iTimeFrame);
        QCOMPARE(oTable->currentRow(), 1);
    }

    void theFirstRowOfTheDisplayIsMarkedNotTheEarliest()
    {
        CTestTable oTable;
        oTable.showDates(
            oServer, {u"2006-05-01 00:00:00"_s, u"2006-05-12 00:00:00"_s, u"2006-05-11 00:00:00"_s});
        mark(oTable, "2006-05-20 12:00:00", 0);
        QCOMPARE(oTable->currentRow(), 1);
    }

    void aMarkIsAnnouncedOnce()
    {
        CTestTable oTable;
        QStringList slTitles;
        oTable.showDates(oServer, {u"2006-05-10 12:00:00"_s, u"2006-05-11 12:00:00"_s});
        oTable.recordCurrentTitles(slTitles);
        mark(oTable, "2006-05-20 13:00:00", 0);
        QCOMPARE(slTitles, QStringList{u"row 2"_s});
    }

    void theSameMarkIsAnnouncedAgain()
    {
        CTestTable oTable;
        QStringList slTitles;
        oTable.showDates(oServer, {u"2006-05-10 12:00:00"_s});
        oTable.recordCurrentTitles(slTitles);
        mark(oTable, "2006-05-11 12:00:00", 0);
        mark(oTable, "2006-05-11 12:00:00", 0);
        QCOMPARE(slTitles, (QStringList{u"row 1"_s, u"row 1"_s}));
    }

    void withoutARowInTheFrameNothingIsMarkedButTheLastTimeIsKept()
    {
        CTestTable oTable;
        oTable.showDates(oServer, {u"2006-05-10 10:00:00"_s, u"2006-05-10 10:30:00"_s});
        mark(oTable, "2006-05-10 12:00:00", 1);
        QCOMPARE(oTable->currentRow(), -1);
        QCOMPARE(firstDateInFrame(oTable), minutesOf({2006, 5, 10}, {10, 30}));
    }

    void theTimeOfTheMarkedRowIsAnswered()
    {
        CTestTable oTable;
        QCOMPARE(firstDateInFrame(oTable), 0);
        oTable.showDates(
            oServer, {u"2006-05-10 10:00:00"_s, u"2006-05-10 11:30:29"_s, u"2006-05-10 11:40:00"_s});
        mark(oTable, "2006-05-10 12:00:00", 1);
        QCOMPARE(firstDateInFrame(oTable), minutesOf({2006, 5, 10}, {11, 30}));
        oTable->selection(3);
        QCOMPARE(firstDateInFrame(oTable), minutesOf({2006, 5, 10}, {11, 30}));
    }

    void anUnreadableRowIsNotMarked()
    {
        CTestTable oTable;
        oTable.showDates(oServer, {QString(), u"2006-05-10 12:00:00"_s});
        CStandardOutput output;
        mark(oTable, "2006-05-11 12:00:00", 0);
        QCOMPARE(output.lines(), QStringList{Unparsable});
        QCOMPARE(oTable->currentRow(), 1);
    }

    void aMarkOnAnEmptySelectionDoesNothing()
    {
        CTestTable oTable;
        mark(oTable, "2006-05-11 12:00:00", 0);
        oTable.setTables();
        oTable->selection(3);
        mark(oTable, "2006-05-11 12:00:00", 0);
        QCOMPARE(oTable->currentRow(), -1);
        QCOMPARE(firstDateInFrame(oTable), 0);
    }

private:
    /// As a host that releases at once: the flag is cleared as soon as the table waits for that.
    static std::vector<int> fillDate(CTestTable& oTable, int iRows)
    {
        std::vector<int> viDates(std::size_t(iRows) + 1, Untouched);
        oTable.oHandover.open();
        std::promise<void> oPosted;
        const auto oHost = std::async(std::launch::async, [&] {
            oTable.oHandover.ask(
                [&] {
                    oPosted.set_value();
                    return true;
                },
                CHandover::After::WaitsForRelease);
            oTable.oHandover.release();
        });
        oPosted.get_future().wait();
        oTable->fillDate(viDates.data());
        oHost.wait();
        return viDates;
    }

    static void mark(CTestTable& oTable, const char* pcDate, int iTimeFrame)
    {
        QByteArray oDate(pcDate);
        oTable->markRow(oDate.data(), iTimeFrame);
    }

    static int firstDateInFrame(CTestTable& oTable)
    {
        int iMinutes = Untouched;
        oTable->getFirstDateInFrame(&iMinutes);
        return iMinutes;
    }

    static int minutesOf(const QDate& oDate, const QTime& oTime)
    {
        return int(QDateTime(oDate, oTime).toSecsSinceEpoch() / 60);
    }

    CPrivateServer oServer;
};

QTUTILS_WIDGET_TEST_MAIN(TestTableDates, CPrivateDisplay::Manager::None)
#include "tst_table_dates.moc"
