// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "CFakeBrowser.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

#include <sys/syscall.h>

using namespace Qt::StringLiterals;

/// The server, or the connection to it, ends while a window is in use. What the window has, it keeps.
class TestModuleFaultsServer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        oServer.sql(u"SET GLOBAL innodb_flush_log_at_trx_commit=1"_s); // so that the data outlive a crash
        oServer.load(u"news.sql"_s);
        oServer.sql(u"CREATE VIEW som.endless AS "
                    "SELECT node, dist, item FROM som.news_train WHERE node<>1 OR SLEEP(3600)=0"_s);
    }

    void whatIsShownStays_data() { addWays(); }

    void whatIsShownStays()
    {
        // given
        QFETCH(QByteArray, oWay);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        const CFakeBrowser oBrowser(oHost, CFakeBrowser::State::Running);
        startUntil(oAnalyst, oWay);
        oAnalyst.choose("Show", "URL");
        const QByteArrayList lTable = oAnalyst.table();
        // when
        end(oWay);
        // then
        QCOMPARE(oHost.numRows(), 5);
        QCOMPARE(oHost.call("fillDate", {"oi:5"}), "0 2010 2220 3376 4320");
        oHost.call("setRowColors", {"c:5x120,255,255"});
        oHost.call("markRow", {"k:2005-03-01 13:00:00", "i:1"});
        QCOMPARE(oHost.call("getFirstDateInFrame", {"oi:1"}), "18494640");
        QCOMPARE(oHost.call("getFirstDateInSelection", {"ot:20"}), "2005-02-27T23:59:59");
        QCOMPARE(oAnalyst.text("texteditor"), "Es schneit in Zürich.");
        QCOMPARE(oAnalyst.table(), lTable);
        oAnalyst.clickCell(3, "title");
        QCOMPARE(oAnalyst.text("texteditor"), "Die Wahl ist vorbei.");
        oAnalyst.openViewer(4);
        QCOMPARE(oAnalyst.text("0/fullEdit"), "Ein Apfel kostet mehr.");
        oScreen.press({"alt+F4"});
        QTUTILS_WAIT_FOR(oAnalyst.viewers() == QByteArrayList{"hidden"});
        // No broken pipe waits for the moment in which the host's signals are let through.
        oAnalyst.doubleClickCell(0, "URL");
        QCOMPARE(oHost.numRows(), 5);
        QCOMPARE(oBrowser.calls(), QByteArrayList{"<-remote> <openURL(http://news.example/4,new-tab)>"});
        QCOMPARE(oAnalyst.dialog(), "none");
    }

    void whatIsAskedForIsEmptyAndNobodySaysSo_data() { addWays(); }

    void whatIsAskedForIsEmptyAndNobodySaysSo()
    {
        // given
        QFETCH(QByteArray, oWay);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        startUntil(oAnalyst, oWay);
        oAnalyst.clickCell(0, "title");
        // when
        end(oWay);
        oHost.call("select", {"i:2"});
        // then
        QCOMPARE(oHost.numRows(), 0);
        QCOMPARE(oAnalyst.table(), QByteArrayList{"date | title"});
        QCOMPARE(oAnalyst.text("texteditor"), "Niemand wurde verletzt.");
        QCOMPARE(oHost.call("fillDate", {"oi:1"}), "-7777");
        oHost.call("setRowColors", {"c:5x120,255,255"});
        oHost.announceErrors(
            {"CTable: An Error occurred while getting first date in selection                ",
                "SelectCursor is empty!"});
        QCOMPARE(oHost.call("getFirstDateInSelection", {"ot:20"}), "untouched");
        // and so it is for the user, who is told nothing
        oAnalyst.click(oAnalyst.item(0));
        oAnalyst.choose("Sort", "title");
        oAnalyst.click(oAnalyst.part("checkdate"));
        QCOMPARE(oAnalyst.table(), QByteArrayList{"date | title"});
        QCOMPARE(oAnalyst.dialog(), "none");
        // when: the server is there again
        come(oWay);
        passHierarchyInVain(oHost);
        changeTable(oHost, "news_train");
        oHost.call("select", {"i:1"});
        // then: nobody connects anew behind the host's back
        QCOMPARE(oHost.numRows(), 0);
        QCOMPARE(oAnalyst.menu("ShowMenu"), QByteArrayList{""});
        QCOMPARE(oAnalyst.tree().value(1), "  - 1 |  <");
        QCOMPARE(connections(), QStringList());
        checkNextWindow(oHost);
    }

    void aQueryThatIsEndedHasNoRows_data()
    {
        QTest::addColumn<QByteArray>("oWay");
        for (const char* pcWay :
            {"statement killed", "time limit", "connection killed", "server killed", "server stopped"})
            QTest::newRow(pcWay) << QByteArray(pcWay);
    }

    void aQueryThatIsEndedHasNoRows()
    {
        // given
        QFETCH(QByteArray, oWay);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        startUntil(oAnalyst, oWay);
        changeTable(oHost, "endless");
        oHost.call("select", {"i:1"});
        oHost.command({"start", "1", "call", "getNumRows", "oi:1"});
        // when
        QTUTILS_WAIT_FOR(oWay == "time limit" || isQueryRunning());
        end(oWay);
        // then
        QCOMPARE(oHost.command({"join", "1"}), "0");
        QCOMPARE(oAnalyst.table(), QByteArrayList{"date | title"});
        QCOMPARE(oAnalyst.dialog(), "none");
        // when, then
        come(oWay);
        if (!connections().isEmpty()) {
            changeTable(oHost, "news_train");
            oHost.call("select", {"i:1"});
            QCOMPARE(oHost.numRows(), 5);
        }
        QCOMPARE(connections().size(), oWay == "statement killed" || oWay == "time limit" ? 1 : 0);
        checkNextWindow(oHost);
    }

    void everyThreadHasItsAnswerWhenAQueryIsEnded_data()
    {
        QTest::addColumn<QByteArray>("oWay");
        for (const char* pcWay : {"statement killed", "connection killed", "server killed"})
            QTest::newRow(pcWay) << QByteArray(pcWay);
    }

    void everyThreadHasItsAnswerWhenAQueryIsEnded()
    {
        // given
        QFETCH(QByteArray, oWay);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        startUntil(oAnalyst, oWay);
        oHost.call("markRow", {"k:2005-03-01 13:00:00", "i:1"});
        changeTable(oHost, "endless");
        oHost.call("select", {"i:1"});
        const QList<QByteArrayList> lQuestions{
            {"getNumRows", "0"}, {"getFirstDateInFrame", "18494640"}, {"getNumRows", "0"}};
        const auto number = [](qsizetype i) { return QByteArray::number(i + 1); };
        for (qsizetype i = 0; i < lQuestions.size(); i++) {
            const int iThread = oHost.command({"start", number(i), "call", lQuestions[i][0], "oi:1"}).toInt();
            QTUTILS_WAIT_FOR(oHost.sleepsIn(iThread, SYS_futex));
        }
        QTUTILS_WAIT_FOR(isQueryRunning());
        // when
        end(oWay);
        // then
        for (qsizetype i = 0; i < lQuestions.size(); i++)
            QCOMPARE(oHost.command({"join", number(i)}), lQuestions[i][1]);
        QCOMPARE(oHost.numRows(), 0);
    }

    void cleanup()
    {
        if (!oServer.isRunning())
            oServer.restart();
        oServer.sql(u"SET GLOBAL wait_timeout=28800"_s);
    }

private:
    static void addWays()
    {
        QTest::addColumn<QByteArray>("oWay");
        for (const char* pcWay :
            {"connection killed", "idle for too long", "server killed", "server stopped"})
            QTest::newRow(pcWay) << QByteArray(pcWay);
    }

    /// A window with node 1 on a connection that can end in that way.
    void startUntil(CAnalyst& oAnalyst, const QByteArray& oWay) const
    {
        if (oWay == "idle for too long")
            oServer.sql(u"SET GLOBAL wait_timeout=1"_s);
        const QString sLimit = oWay == "time limit" ? u"0.3"_s : u"0"_s; // seconds, for each statement
        oServer.sql(u"ALTER USER reader@localhost WITH MAX_STATEMENT_TIME "_s + sLimit);
        oAnalyst.startAt(1);
    }

    /// Ends a connection, or what it does; returns when it has ended.
    void end(const QByteArray& oWay)
    {
        if (oWay == "server killed")
            oServer.kill();
        else if (oWay == "server stopped")
            oServer.stop();
        else if (oWay.endsWith("killed"))
            oServer.sql(u"KILL %1 %2"_s.arg(
                oWay.startsWith("statement") ? u"QUERY"_s : u"CONNECTION"_s, connections().value(0)));
        if (oWay == "connection killed" || oWay == "idle for too long")
            QTUTILS_WAIT_FOR(connections().isEmpty());
    }

    /// The server is there again.
    void come(const QByteArray& oWay)
    {
        if (oWay.startsWith("server"))
            oServer.restart();
    }

    /// Numbers of the hosts' connections.
    QStringList connections() const
    {
        return oServer.sql(u"SELECT id FROM information_schema.processlist WHERE user='reader'"_s);
    }

    bool isQueryRunning() const
    {
        return !oServer
                    .sql(u"SELECT id FROM information_schema.processlist WHERE user='reader' AND "
                         "state='User sleep'"_s)
                    .isEmpty();
    }

    static void changeTable(CPlainHost& oHost, const QByteArray& oTable)
    {
        oHost.announceErrors({"CNodeBrowser: Changed Table to " + oTable});
        oHost.call("setSOMTable", {"t:" + oTable});
    }

    static void passHierarchyInVain(CPlainHost& oHost)
    {
        oHost.announceErrors({"Database is open. Commencing.",
            "CListView: WARNING: Could not connect to Database, using               "
            "select-statement: SELECT _assigned_topic, _keywords FROM news_som "});
        oHost.passHierarchy();
    }

    /// The window is worth nothing any more, but the next one works.
    static void checkNextWindow(CPlainHost& oHost)
    {
        oHost.announceErrors({"Terminating QApplication"});
        oHost.free();
        oHost.call("setSOMTable", {"t:news_train"});
        QVERIFY(oHost.construct().endsWith("window"));
        oHost.call("select", {"i:1"});
        QCOMPARE(oHost.numRows(), 5);
    }

    // Without a join buffer, which the server fills with all rows of a table first: asking for the columns of
    // the endless table would take for ever then, if the server happened to begin with it.
    CPrivateServer oServer{{u"--join-cache-level=0"_s}};
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleFaultsServer)
#include "tst_module_faults_server.moc"
