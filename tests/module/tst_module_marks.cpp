// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "datedhost.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

using namespace Qt::StringLiterals;
using datedhost::Dates;

/// The row that the host marks by a date.
class TestModuleMarks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { oServer.load(u"news.sql"_s); }

    void theFirstRowAfterTheStartOfTheFrameIsMarked_data()
    {
        QTest::addColumn<QByteArray>("oDate");
        QTest::addColumn<QByteArray>("oFrame");
        QTest::addColumn<QStringList>("slDates");
        QTest::addColumn<QByteArray>("oCurrent");
        const QByteArray oNoon = "2006-05-10 12:00:00";
        const QStringList slMorning{
            u"2006-05-10 10:58:59"_s, u"2006-05-10 10:59:00"_s, u"2006-05-10 10:59:01"_s};
        const QStringList slNoons{u"2006-04-30 12:00:00"_s, u"2006-04-30 12:00:01"_s};
        QTest::newRow("a unit is 3660 seconds") << oNoon << "i:1"_ba << slMorning << "2 0"_ba;
        QTest::newRow("two units") << oNoon << "i:2"_ba << slMorning << "0 0"_ba;
        QTest::newRow("many units") << oNoon << "i:2147483647"_ba << slMorning << "0 0"_ba;
        QTest::newRow("0: ten days") << oNoon << "i:0"_ba << slNoons << "1 0"_ba;
        QTest::newRow("negative: ten days") << oNoon << "i:-5"_ba << slNoons << "1 0"_ba;
        QTest::newRow("no frame: ten days") << oNoon << "null"_ba << slNoons << "1 0"_ba;
        QTest::newRow("later than the date")
            << oNoon << "i:1"_ba << QStringList{u"2009-01-01 00:00:00"_s} << "0 0"_ba;
        QTest::newRow("all before the frame")
            << oNoon << "i:1"_ba << QStringList{u"2006-05-10 10:30:00"_s} << "none"_ba;
        QTest::newRow("unreadable rows before")
            << oNoon << "i:1"_ba << QStringList{QString(), u"0000-00-00"_s, u"2006-05-10 11:00:00"_s}
            << "2 0"_ba;
        QTest::newRow("unreadable rows only") << oNoon << "i:1"_ba << QStringList{QString()} << "none"_ba;
        QTest::newRow("a date that is none") << "nonsense"_ba
                                             << "i:1"_ba << slMorning << "0 0"_ba;
        QTest::newRow("a day") << "2006-05-10"_ba
                               << "i:1"_ba << QStringList{u"2006-05-09 22:59:00"_s, u"2006-05-09 22:59:01"_s}
                               << "1 0"_ba;
        QTest::newRow("in winter time and summer time")
            << "2006-03-26 03:30:00"_ba
            << "i:1"_ba << QStringList{u"2006-03-26 01:29:00"_s, u"2006-03-26 01:29:01"_s} << "1 0"_ba;
    }

    void theFirstRowAfterTheStartOfTheFrameIsMarked()
    {
        // given
        QFETCH(QByteArray, oDate);
        QFETCH(QByteArray, oFrame);
        QFETCH(QStringList, slDates);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        datedhost::show(oHost, oServer, {slDates});
        oHost.announceOutput(
            QByteArrayList(slDates.count(QString()) + slDates.count(u"0000-00-00"_s), datedhost::warning()));
        // when
        oHost.call("markRow", {"k:" + oDate, oFrame});
        // then
        QTEST(oAnalyst.currentCell(), "oCurrent");
    }

    void itIsTheFirstOneOfTheDisplayNotTheEarliest()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        datedhost::show(
            oHost, oServer, {{u"2006-05-01 00:00:00"_s, u"2006-05-12 00:00:00"_s, u"2006-05-11 00:00:00"_s}});
        oAnalyst.showWindow();
        oHost.call("markRow", {"k:2006-05-20 12:00:00", "i:0"});
        QCOMPARE(oAnalyst.text("texteditor"), "text 3");
        // when
        oAnalyst.choose("Sort", "id");
        // then
        QCOMPARE(oAnalyst.currentCell(), "none");
        oHost.call("markRow", {"k:2006-05-20 12:00:00", "i:0"});
        QCOMPARE(oAnalyst.currentCell(), "1 0");
        QCOMPARE(oAnalyst.text("texteditor"), "text 2");
    }

    void everyMarkPutsTheTextIntoThePanelAnew()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        datedhost::show(oHost, oServer, {{u"2006-05-10 12:00:00"_s}});
        QCOMPARE(oAnalyst.text("texteditor"), "no article selected");
        oHost.call("markRow", {"k:2006-05-10 12:00:00", "i:0"});
        oAnalyst.showWindow();
        oAnalyst.doubleClick(firstWord(oAnalyst));
        QCOMPARE(oAnalyst.selectedText("texteditor"), "0-4: text");
        // when
        oHost.call("markRow", {"k:2006-05-10 12:00:00", "i:0"});
        // then
        QCOMPARE(oAnalyst.selectedText("texteditor"), "0-0: ");
        QCOMPARE(oAnalyst.text("texteditor"), "text 1");
    }

    void aMarkKeepsTheColumn()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        datedhost::show(oHost, oServer, datedhost::days(3));
        oAnalyst.showWindow();
        oAnalyst.clickCell(1, "title");
        oHost.call("markRow", {"k:2006-01-12 12:00:00", "i:0"});
        QCOMPARE(oAnalyst.currentCell(), "2 1");
    }

    void withoutARowInTheFrameTheCurrentOneStays()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        datedhost::show(oHost, oServer, datedhost::days(100));
        oAnalyst.showWindow();
        oAnalyst.clickCell(1, "title");
        const QByteArray oInSight = oAnalyst.rowsInSight();
        // when
        oHost.call("markRow", {"k:2010-01-01 00:00:00", "i:1"});
        // then
        QCOMPARE(oAnalyst.currentCell(), "1 1");
        QCOMPARE(oAnalyst.rowsInSight(), oInSight);
        QCOMPARE(oAnalyst.text("texteditor"), "text 2");
    }

    void fiveRowsBehindAMarkedOneComeIntoSight_data()
    {
        QTest::addColumn<int>("iDays");
        QTest::addColumn<bool>("bShown");
        QTest::addColumn<int>("iRow");
        QTest::addColumn<int>("iLast");
        QTest::newRow("in the middle") << 100 << true << 50 << 55;
        QTest::newRow("near the end") << 52 << true << 50 << 51;
        QTest::newRow("at the end") << 100 << true << 99 << 99;
        QTest::newRow("of many rows") << 20000 << true << 15000 << 15005;
        QTest::newRow("not shown yet") << 100 << false << 50 << 55;
        QTest::newRow("not shown yet, near the end") << 52 << false << 50 << 51;
        QTest::newRow("not shown yet, many rows") << 20000 << false << 15000 << 15005;
    }

    void fiveRowsBehindAMarkedOneComeIntoSight()
    {
        // given
        QFETCH(int, iDays);
        QFETCH(bool, bShown);
        QFETCH(int, iRow);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        datedhost::show(oHost, oServer, datedhost::days(iDays));
        if (bShown)
            oAnalyst.showWindow();
        // when
        oHost.call("markRow", {markOf(iRow), "i:0"});
        if (!bShown)
            oAnalyst.showWindow();
        // then
        QCOMPARE(oAnalyst.currentCell(), QByteArray::number(iRow) + " 0");
        QTEST(oAnalyst.rowsInSight().split(' ')[1].toInt(), "iLast");
        QVERIFY(oAnalyst.rowsInSight().split(' ')[0].toInt() < iRow);
    }

    void aRowAboveThoseInSightComesToTheTop()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        datedhost::show(oHost, oServer, datedhost::days(100));
        oAnalyst.showWindow();
        oAnalyst.clickCell(0, "title");
        oAnalyst.press({"End"});
        QCOMPARE(oAnalyst.currentCell(), "99 1");
        // when
        oHost.call("markRow", {markOf(40), "i:0"});
        // then
        QVERIFY2(oAnalyst.rowsInSight().startsWith("40 "), oAnalyst.rowsInSight());
        QVERIFY(oAnalyst.rowsInSight().split(' ')[1].toInt() >= 45);
    }

    void aRowThatIsInSightScrollsNothing_data()
    {
        QTest::addColumn<bool>("bShown");
        QTest::newRow("shown") << true;
        QTest::newRow("not shown yet") << false;
    }

    void aRowThatIsInSightScrollsNothing()
    {
        QFETCH(bool, bShown);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        datedhost::show(oHost, oServer, datedhost::days(100));
        if (bShown)
            oAnalyst.showWindow();
        oHost.call("markRow", {markOf(2), "i:0"});
        if (!bShown)
            oAnalyst.showWindow();
        QCOMPARE(oAnalyst.currentCell(), "2 0");
        QVERIFY(oAnalyst.rowsInSight().startsWith("0 "));
    }

    void aRowMarkedInAClosedWindowIsInSightWhenItIsShownAgain()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        datedhost::show(oHost, oServer, datedhost::days(100));
        oAnalyst.showWindow();
        oScreen.close("Ombrel");
        QTUTILS_WAIT_FOR(!oScreen.isShown("Ombrel"));
        // when
        oHost.call("markRow", {markOf(50), "i:0"});
        oAnalyst.showWindow();
        // then
        QVERIFY2(oAnalyst.rowsInSight().endsWith(" 55"), oAnalyst.rowsInSight());
    }

    void aSelectionDropsTheMark()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        datedhost::show(oHost, oServer, datedhost::days(100));
        oHost.call("markRow", {markOf(50), "i:0"});
        oHost.call("select", {"i:0"});
        oAnalyst.showWindow();
        QCOMPARE(oAnalyst.currentCell(), "none");
        QVERIFY(oAnalyst.rowsInSight().startsWith("0 "));
    }

    void aMarkStaysWithinTheRowsOnDisplay()
    {
        // given a table that has a row, though none is on display
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        datedhost::show(oHost, oServer, datedhost::days(1));
        oHost.call("select", {"i:1"});
        oHost.announceErrors({"CNodeBrowser: Changed Table to dates"});
        oHost.call("setSOMTable", {"t:dates"});
        // when
        oHost.call("markRow", {markOf(0), "i:0"});
        // then
        QCOMPARE(oAnalyst.currentCell(), "none");
        QCOMPARE(oAnalyst.text("texteditor"), "no article selected");
    }

    void rowsOfAHiddenTableAreMarkedStill()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        datedhost::show(oHost, oServer, datedhost::days(100));
        oAnalyst.showWindow();
        oHost.call("hideTable");
        oHost.call("markRow", {markOf(50), "i:0"});
        QCOMPARE(oAnalyst.currentCell(), "50 0");
        QCOMPARE(oAnalyst.text("texteditor"), "text 51");
    }

private:
    /// A date ten days after the row before that of datedhost::days().
    static QByteArray markOf(int iRow)
    {
        return "k:" + QDate(2006, 1, 1).addDays(iRow - 1 + 10).toString(Qt::ISODate).toUtf8() + " 00:00:00";
    }

    /// Where the first word of the text panel is.
    static QRect firstWord(CAnalyst& oAnalyst)
    {
        return {oAnalyst.part("texteditor").topLeft(), QSize(24, 24)};
    }

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleMarks)
#include "tst_module_marks.moc"
