// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CPlainHost.h"
#include "CScreen.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

#include <QDateTime>

namespace {

QByteArray minutes(const QDateTime& oUtc)
{
    return QByteArray::number(oUtc.toSecsSinceEpoch() / 60);
}

QByteArray minutes(int iYear, int iMonth, int iDay, int iHour, int iMinute)
{
    return minutes({QDate(iYear, iMonth, iDay), QTime(iHour, iMinute), Qt::UTC});
}

} // namespace

class TestModuleCalls : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { oServer.load(QStringLiteral("news.sql")); }

    void theNumberOfRowsIsThatOfTheChosenNode_data()
    {
        QTest::addColumn<QByteArray>("oNode");
        QTest::addColumn<int>("iRows");
        QTest::newRow("root") << QByteArray("i:0") << 1;
        QTest::newRow("several") << QByteArray("i:1") << 5;
        QTest::newRow("none") << QByteArray("i:3") << 0;
        QTest::newRow("no such node") << QByteArray("i:99") << 0;
    }

    void theNumberOfRowsIsThatOfTheChosenNode()
    {
        QFETCH(QByteArray, oNode);
        CPlainHost oHost;
        oHost.start();
        oHost.call("select", {oNode});
        QTEST(oHost.numRows(), "iRows");
    }

    void aNegativeNodeChangesNothing()
    {
        CPlainHost oHost;
        oHost.start();
        oHost.call("select", {"i:2"});
        oHost.call("select", {"i:-1"});
        QCOMPARE(oHost.numRows(), 2);
    }

    void everySelectionIsCarriedOutInItsOrder()
    {
        // given
        CPlainHost oHost;
        oHost.start();
        oServer.startLog();
        // when
        for (const char* pcNode : {"i:1", "i:2", "i:0", "i:3"})
            oHost.call("select", {pcNode});
        QCOMPARE(oHost.numRows(), 0);
        // then
        QStringList slExpected;
        for (const int iNode : {1, 2, 0, 3})
            slExpected << documentsOf(iNode);
        QCOMPARE(oServer.log(), slExpected);
    }

    void aConstructionAsksForTheColumnsOnly()
    {
        // given
        CPlainHost oHost;
        oHost.load();
        oHost.call("setSOMTable", {"t:news_train"});
        oServer.startLog();
        // when
        oHost.construct();
        oHost.call("show");
        QTUTILS_WAIT_FOR(oScreen.isActive("Ombrel"));
        // then
        QCOMPARE(oServer.log(), QStringList({Probe}));
    }

    void theHierarchyAsksForTheKeywordsOnce()
    {
        CPlainHost oHost;
        oHost.start();
        oServer.startLog();
        oHost.announceErrors({"Database is open. Commencing."});
        oHost.passHierarchy();
        oHost.numRows();
        QCOMPARE(
            oServer.log(), QStringList({QStringLiteral("SELECT _assigned_topic, _keywords FROM news_som")}));
    }

    void aTableNameTakesEffectWithTheNextSelection()
    {
        // given
        oServer.sql(QStringLiteral("CREATE OR REPLACE VIEW som.others AS SELECT 1 node, 0.5 dist, 7 item"));
        CPlainHost oHost;
        oHost.start();
        oHost.call("select", {"i:1"});
        // when, then
        oHost.announceErrors({"CNodeBrowser: Changed Table to others"});
        oHost.call("setSOMTable", {"t:others"});
        QCOMPARE(oHost.numRows(), 5);
        oHost.call("select", {"i:1"});
        QCOMPARE(oHost.numRows(), 1);
    }

    void aHostsChoiceRunsTheQueryOnceAndMarksTheTreesItem()
    {
        // given
        CPlainHost oHost;
        oHost.start();
        oHost.call("show");
        QTUTILS_WAIT_FOR(oScreen.isActive("Ombrel"));
        oScreen.click(oScreen.place("Ombrel").topLeft() + RootItem);
        QTUTILS_WAIT_FOR(oHost.numRows() == 1);
        oServer.startLog();
        // when
        oHost.call("select", {"i:2"});
        QCOMPARE(oHost.numRows(), 2);
        // then
        QCOMPARE(oServer.log(), QStringList({documentsOf(2)}));
        // The next item is that behind the marked one.
        oScreen.press({"Down"});
        QTUTILS_WAIT_FOR(oServer.log() == QStringList({documentsOf(2), documentsOf(3)}));
    }

    void datesOfTheRowsAreMinutesAfterTheFirst()
    {
        CPlainHost oHost;
        oHost.start();
        oHost.call("select", {"i:1"});
        QCOMPARE(oHost.call("fillDate", {"oi:6"}), "0 2010 2220 3376 4320 -7777");
        oHost.call("setRowColors", {"c:5x0,0,0"});
    }

    void theFirstDateInTheSelectionIsAText()
    {
        CPlainHost oHost;
        oHost.start();
        oHost.call("select", {"i:1"});
        QCOMPARE(oHost.call("getFirstDateInSelection", {"ot:20"}), "2005-02-27T23:59:59");
        oHost.call("select", {"i:3"});
        oHost.announceErrors(
            {"CTable: An Error occurred while getting first date in selection                ",
                "SelectCursor is empty!"});
        QCOMPARE(oHost.call("getFirstDateInSelection", {"ot:20"}), "untouched");
    }

    void aMarkedRowIsTheFirstOneInItsFrame_data()
    {
        QTest::addColumn<QByteArray>("oDate");
        QTest::addColumn<QByteArray>("oFrame");
        QTest::addColumn<QByteArray>("oFound");
        const QByteArray oDay = minutes(2005, 3, 1, 8, 30); // 09:30 in winter
        QTest::newRow("no frame: ten days")
            << QByteArray("k:2005-03-11 00:00:00") << QByteArray("null") << oDay;
        QTest::newRow("0: ten days") << QByteArray("k:2005-03-11 00:00:00") << QByteArray("i:0") << oDay;
        QTest::newRow("-5: ten days") << QByteArray("k:2005-03-11 00:00:00") << QByteArray("i:-5") << oDay;
        QTest::newRow("one unit") << QByteArray("k:2005-03-01 10:30:59") << QByteArray("i:1") << oDay;
        QTest::newRow("just outside")
            << QByteArray("k:2005-03-01 10:31:00") << QByteArray("i:1") << minutes(2005, 3, 1, 12, 0);
        QTest::newRow("none: the last row")
            << QByteArray("k:2006-01-01 00:00:00") << QByteArray("i:1") << minutes(2005, 3, 2, 23, 0);
    }

    void aMarkedRowIsTheFirstOneInItsFrame()
    {
        QFETCH(QByteArray, oDate);
        QFETCH(QByteArray, oFrame);
        CPlainHost oHost;
        oHost.start();
        oHost.call("select", {"i:1"});
        oHost.call("markRow", {oDate, oFrame});
        QTEST(oHost.call("getFirstDateInFrame", {"oi:1"}), "oFound");
    }

    void beforeAnyMarkTheFirstDateInTheFrameIs0()
    {
        CPlainHost oHost;
        oHost.start();
        QCOMPARE(oHost.call("getFirstDateInFrame", {"oi:1"}), "0");
    }

    void aDateBecomesWholeMinutes_data()
    {
        QTest::addColumn<QByteArray>("oDate");
        QTest::addColumn<QByteArray>("oMinutes");
        QTest::newRow("29 seconds") << QByteArray("t:2005-03-01 12:30:29") << minutes(2005, 3, 1, 11, 30);
        QTest::newRow("30 seconds") << QByteArray("t:2005-03-01 12:30:30") << minutes(2005, 3, 1, 11, 31);
        QTest::newRow("summer") << QByteArray("t:2005-07-01 12:00:00") << minutes(2005, 7, 1, 10, 0);
        QTest::newRow("before the epoch") << QByteArray("t:1969-12-31 23:59:30") << QByteArray("-60");
        QTest::newRow("a day only") << QByteArray("t:2005-03-01") << minutes(2005, 2, 28, 23, 0);
        QTest::newRow("nonsense") << QByteArray("t:nonsense") << minutes(1899, 12, 30, 23, 0);
        QTest::newRow("empty") << QByteArray("t:") << minutes(1899, 12, 30, 23, 0);
    }

    void aDateBecomesWholeMinutes()
    {
        QFETCH(QByteArray, oDate);
        CPlainHost oHost;
        oHost.load();
        QTEST(oHost.call("dateToInt", {oDate, "oi:1"}), "oMinutes");
    }

    void nullPointersAreIgnored()
    {
        // given
        CPlainHost oHost;
        oHost.start();
        oHost.call("select", {"i:1"});
        oServer.startLog();
        // when
        for (const char* pcMethod : {"select", "getNumRows", "fillDate", "setRowColors",
                 "getFirstDateInFrame", "getFirstDateInSelection", "setSOMTable"})
            QCOMPARE(oHost.call(pcMethod, {"null"}), "");
        oHost.call("markRow", {"null", "i:1"});
        QCOMPARE(oHost.call("dateToInt", {"null", "oi:1"}), "-7777");
        oHost.call("dateToInt", {"t:2005-03-01 12:30:29", "null"});
        for (const char* pcPlace : {"n:1", "n:"})
            oHost.call("passNodeHierarchy", {pcPlace, "null", "null", "null"});
        // then
        QCOMPARE(oHost.numRows(), 5);
        QCOMPARE(oServer.log(), QStringList());
        QCOMPARE(oHost.output(), QByteArrayList());
    }

    void aHierarchyWithoutChildrenIsRefused()
    {
        // given
        CPlainHost oHost;
        oHost.start();
        oServer.startLog();
        // when
        oHost.call("passNodeHierarchy", {"null", "i:1", "i:3", "i:4"});
        oHost.numRows();
        // then
        QCOMPARE(oHost.output(), QByteArrayList({"mirta_passNodeHierarchy: passed Array is NULL!"}));
        QCOMPARE(oServer.log(), QStringList());
    }

    void anotherNumberOfNodesIsWarnedOf()
    {
        CPlainHost oHost;
        oHost.load();
        oHost.call("passNodeHierarchy", {"n:1", "i:1", "i:0", "i:2"});
        QCOMPARE(oHost.errors(), QByteArrayList());
        oHost.call("passNodeHierarchy", {"n:", "i:0", "i:2", "i:3"});
        QTUTILS_WAIT_FOR(!oHost.errors().isEmpty());
        QCOMPARE(oHost.errors(),
            QByteArrayList(
                {"mirta_passNodeHierarchy: WARNING: Number of nodes has                    changed "
                 "during runtime or you a not using this function                    in its planned "
                 "way! The array containing all children                    for each node has been "
                 "resized, but the data may be corrupted!"}));
    }

private:
    static QString documentsOf(int iNode)
    {
        return QStringLiteral("SELECT node, dist, document.* FROM news_train, news.document "
                              "WHERE news.document.id=news_train.item AND node=%1 ORDER BY date")
            .arg(iNode);
    }

    const QString Probe =
        QStringLiteral("SELECT node, dist, document.* FROM news_train, news.document LIMIT 1");
    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleCalls)
#include "tst_module_calls.moc"
