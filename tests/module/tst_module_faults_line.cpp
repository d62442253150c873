// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "CFaultyLine.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"
#include "treehost.h"

#include <sys/syscall.h>

using namespace Qt::StringLiterals;

/// The line to the database breaks, or falls silent, while the server speaks.
class TestModuleFaultsLine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { oServer.load(u"news.sql"_s); }

    void init()
    {
        pLine = std::make_unique<CFaultyLine>(oServer.socket(), oFolder);
        qputenv("MYSQL_UNIX_PORT", pLine->socket());
    }

    void aSelectionThatIsCutOffHasNoRows_data() { addPlaces(); }

    void aSelectionThatIsCutOffHasNoRows()
    {
        // given
        QFETCH(int, iPlace);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(2);
        const qint64 iAll = bytesOf([&] { oHost.call("select", {"i:1"}); }, oHost);
        QCOMPARE(oHost.numRows(), 5);
        // when
        pLine->breakBehind(placeIn(iAll, iPlace));
        oHost.call("select", {"i:1"});
        // then
        QCOMPARE(oHost.numRows(), 0);
        QCOMPARE(oAnalyst.table(), QByteArrayList{"date | title"});
        QCOMPARE(oHost.call("fillDate", {"oi:1"}), "-7777");
        oHost.call("setRowColors", {"c:5x0,0,0"});
        // and nobody connects anew behind the host's back
        oAnalyst.click(oAnalyst.item(2));
        QCOMPARE(oHost.numRows(), 0);
        QCOMPARE(pLine->connections(), 1);
        QCOMPARE(oAnalyst.dialog(), "none");
        checkNextWindow(oHost);
    }

    void columnsThatAreCutOffAreNone_data() { addPlaces(); }

    void columnsThatAreCutOffAreNone()
    {
        // given
        QFETCH(int, iPlace);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        const qint64 iAll = bytesOf([&] { changeTable(oHost); }, oHost);
        // when
        pLine->breakBehind(placeIn(iAll, iPlace));
        changeTable(oHost);
        // then
        QCOMPARE(oAnalyst.menu("ShowMenu"), QByteArrayList{""});
        QCOMPARE(oAnalyst.menu("SortMenu"), QByteArrayList{""});
        QCOMPARE(oHost.numRows(), 5); // still those of the selection before
        oHost.call("select", {"i:1"});
        QCOMPARE(oAnalyst.table(), QByteArrayList{""});
        QCOMPARE(oHost.numRows(), 0);
        QCOMPARE(pLine->connections(), 1);
        checkNextWindow(oHost);
    }

    void keywordsThatAreCutOffLeaveTheNumbers_data() { addPlaces(); }

    void keywordsThatAreCutOffLeaveTheNumbers()
    {
        // given
        QFETCH(int, iPlace);
        const QByteArrayList lNodes{"1,2", "", ""};
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        treehost::show(oAnalyst, lNodes);
        const qint64 iAll = bytesOf([&] { treehost::pass(oHost, lNodes); }, oHost);
        QCOMPARE(oAnalyst.tree().first(), "v 0 | alles, viel, mehr");
        // when
        pLine->breakBehind(placeIn(iAll, iPlace));
        treehost::pass(oHost, lNodes);
        oHost.announceErrors({"CListView: WARNING: Could not connect to Database, using               "
                              "select-statement: SELECT _assigned_topic, _keywords FROM news_som "});
        // then
        QCOMPARE(oAnalyst.tree(), QByteArrayList({"v 0 | ", "  - 1 | ", "  - 2 | "}));
        QCOMPARE(pLine->connections(), 1);
        checkNextWindow(oHost);
    }

    void aGreetingThatIsCutOffIsSaidInTheBox_data()
    {
        QTest::addColumn<int>("iPlace");
        QTest::addColumn<QByteArray>("oReason");
        QTest::addColumn<QByteArrayList>("lLines"); ///< Qt's own
        const QByteArray oUnconnected = "Lost connection to server at '";
        QTest::newRow("before the first byte") << 0 << oUnconnected << QByteArrayList();
        QTest::newRow("in the header") << 2 << oUnconnected << QByteArrayList();
        QTest::newRow("in the server's version") << 12 << oUnconnected << QByteArrayList();
        QTest::newRow("in the password's salt") << 40 << oUnconnected << QByteArrayList();
        // The client library counts as connected then.
        QTest::newRow("behind the password")
            << 150 << "Server has gone away QMYSQL: Unable to open database 'som'"_ba
            << QByteArrayList{
                   "MySQL: Unable to set the client character set to utf8 (\"Server has gone away\"). "
                   "Using 'utf8mb4' instead."};
    }

    void aGreetingThatIsCutOffIsSaidInTheBox()
    {
        // given
        QFETCH(int, iPlace);
        QFETCH(QByteArray, oReason);
        QFETCH(QByteArrayList, lLines);
        qputenv("MALLOC_MMAP_THRESHOLD_", "1000"); // the use of a connection that was freed is a crash then
        CPlainHost oHost;
        qunsetenv("MALLOC_MMAP_THRESHOLD_");
        CAnalyst oAnalyst(oHost, oScreen);
        oHost.load();
        oHost.call("setSOMTable", {"t:news_train"});
        // when
        pLine->breakBehind(iPlace);
        oHost.announceOutput({"show error"});
        oHost.announceErrors(lLines);
        oHost.command({"start", "1", "call", "CNodeBrowser", "t:som", "t:news"});
        // then
        QTUTILS_WAIT_FOR(oScreen.isActive("SQL Error"));
        QVERIFY2(oAnalyst.dialog().startsWith("SQL Error: Could not open SOM Database!\n\n" + oReason),
            oAnalyst.dialog().constData());
        // when
        oAnalyst.press({"Return"});
        // then
        QCOMPARE(oHost.command({"join", "1"}), "window");
        oHost.call("select", {"i:1"});
        oHost.call("select", {"i:2"});
        QCOMPARE(oHost.numRows(), 0);
        QCOMPARE(oAnalyst.menu("ShowMenu"), QByteArrayList{""});
        checkNextWindow(oHost);
    }

    void aQuestionWaitsUntilTheLineSpeaksAgain_data() { addPlaces(); }

    void aQuestionWaitsUntilTheLineSpeaksAgain()
    {
        // given
        QFETCH(int, iPlace);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(2);
        const qint64 iAll = bytesOf([&] { oHost.call("select", {"i:1"}); }, oHost);
        // when
        pLine->fallSilentBehind(placeIn(iAll, iPlace));
        oHost.call("select", {"i:1"});
        const int iThread = oHost.command({"start", "1", "call", "getNumRows", "oi:1"}).toInt();
        // then
        QTUTILS_WAIT_FOR(pLine->isSilent());
        QTUTILS_WAIT_FOR(oHost.sleepsIn(iThread, SYS_futex));
        QCOMPARE(oHost.command({"finished", "1"}), "no");
        // and who wants no answer doesn't wait
        oHost.call("markRow", {"k:2005-03-02 00:00:00", "i:1"});
        oHost.call("setRowColors", {"c:5x120,255,255"});
        oHost.call("show");
        // when
        pLine->goOn();
        // then
        QCOMPARE(oHost.command({"join", "1"}), "5");
        QCOMPARE(oAnalyst.table().size(), 6);
        QCOMPARE(oAnalyst.text("texteditor"), "Die Wahl ist vorbei.");
        QCOMPARE(pLine->connections(), 1);
    }

    void aConstructionWaitsUntilTheLineSpeaksAgain()
    {
        CPlainHost oHost;
        oHost.load();
        pLine->fallSilentBehind(12);
        oHost.call("setSOMTable", {"t:news_train"});
        oHost.command({"start", "1", "call", "CNodeBrowser", "t:som", "t:news"});
        QTUTILS_WAIT_FOR(pLine->isSilent());
        QCOMPARE(oHost.command({"finished", "1"}), "no");
        pLine->goOn();
        QCOMPARE(oHost.command({"join", "1"}), "window");
        oHost.call("select", {"i:1"});
        QCOMPARE(oHost.numRows(), 5);
    }

private:
    static void addPlaces()
    {
        QTest::addColumn<int>("iPlace"); ///< from the answer's beginning, or from its end
        QTest::newRow("before the first byte") << 0;
        QTest::newRow("in the first header") << 2;
        QTest::newRow("behind the number of columns") << 5;
        QTest::newRow("in a column's name") << 25;
        QTest::newRow("in the last row") << -30;
        QTest::newRow("before the last byte") << -1;
    }

    /// The byte of an answer that the test's row means.
    static qint64 placeIn(qint64 iAll, int iPlace) { return iPlace < 0 ? iAll + iPlace : iPlace; }

    /// How many bytes the server sends for an action.
    template <typename Action> qint64 bytesOf(Action action, CPlainHost& oHost)
    {
        oHost.numRows();
        pLine->passed();
        action();
        oHost.numRows();
        return pLine->passed();
    }

    static void changeTable(CPlainHost& oHost)
    {
        oHost.announceErrors({"CNodeBrowser: Changed Table to news_train"});
        oHost.call("setSOMTable", {"t:news_train"});
    }

    /// The window is worth nothing any more, but the next one works.
    void checkNextWindow(CPlainHost& oHost)
    {
        oHost.announceErrors({"Terminating QApplication"});
        oHost.free();
        oHost.call("setSOMTable", {"t:news_train"});
        QVERIFY(oHost.construct().endsWith("window"));
        oHost.call("select", {"i:1"});
        QCOMPARE(oHost.numRows(), 5);
    }

    CPrivateServer oServer;
    CScreen oScreen;
    QTemporaryDir oFolder;
    std::unique_ptr<CFaultyLine> pLine;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleFaultsLine)
#include "tst_module_faults_line.moc"
