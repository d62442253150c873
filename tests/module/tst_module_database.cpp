// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "listening.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

#include <arpa/inet.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

/// A port of this machine that accepts connections and ends them.
class CPort
{
public:
    CPort()
    {
        sockaddr_in oAddress{};
        socklen_t uSize = sizeof oAddress;
        oAddress.sin_family = AF_INET;
        oAddress.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        listenAt(iSocket, oAddress);
        getsockname(iSocket, reinterpret_cast<sockaddr*>(&oAddress), &uSize);
        iNumber = ntohs(oAddress.sin_port);
    }
    ~CPort() { close(iSocket); }
    CPort(const CPort&) = delete;
    CPort& operator=(const CPort&) = delete;

    int number() const { return iNumber; }
    /// Waits for a connection and ends it; false if none comes.
    bool refuse() const
    {
        pollfd oWaiting{iSocket, POLLIN, 0};
        return poll(&oWaiting, 1, 20000) == 1 && close(accept(iSocket, nullptr, nullptr)) == 0;
    }

private:
    int iSocket = socket(AF_INET, SOCK_STREAM, 0);
    int iNumber = 0;
};

} // namespace

/// The connection to the database, and what is said when there is none.
class TestModuleDatabase : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        oServer.sql(u"SET GLOBAL innodb_flush_log_at_trx_commit=1"_s); // so that the data outlive a crash
        oServer.load(u"news.sql"_s);
        oServer.sql(u"CREATE USER 'guest'@'localhost' IDENTIFIED BY 'a password'"_s); // the reader's
    }

    void theBoxSaysWhyTheDatabaseIsNotOpen_data()
    {
        QTest::addColumn<QByteArrayList>("lSetting");
        QTest::addColumn<QByteArray>("oDatabase");
        QTest::addColumn<QByteArray>("oReason");
        QTest::newRow("wrong password")
            << QByteArrayList{"MYSQL_PWD", "wrong"} << "som"_ba
            << "Access denied for user 'reader'@'localhost' (using password: YES)"_ba;
        QTest::newRow("unknown user")
            << QByteArrayList{"MYSQL_USER", "nobody"} << "som"_ba
            << "Access denied for user 'nobody'@'localhost' (using password: YES)"_ba;
        QTest::newRow("no right") << QByteArrayList{"MYSQL_USER", "guest"} << "som"_ba
                                  << "Access denied for user 'guest'@'localhost' to database 'som'"_ba;
        QTest::newRow("missing database") << QByteArrayList{"LANG", "C"} << "nowhere"_ba
                                          << "Unknown database 'nowhere'"_ba;
        QTest::newRow("no server") << QByteArrayList{"MYSQL_UNIX_PORT", "/nowhere"} << "som"_ba
                                   << "Can't connect to local server through socket '/nowhere' (2)"_ba;
    }

    void theBoxSaysWhyTheDatabaseIsNotOpen()
    {
        // given
        QFETCH(QByteArrayList, lSetting);
        QFETCH(QByteArray, oDatabase);
        QFETCH(QByteArray, oReason);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oHost.command(QByteArrayList{"env"} + lSetting);
        // when
        construct(oHost, oDatabase);
        // then
        QCOMPARE(oAnalyst.dialog(),
            "SQL Error: Could not open SOM Database!\n\n" + oReason + " QMYSQL: Unable to connect");
        QCOMPARE(oScreen.shown(), QByteArrayList{"SQL Error"});
        QCOMPARE(oHost.output(), QByteArrayList{"show error"});
        // when
        oAnalyst.click(oAnalyst.button("OK"));
        // then
        QCOMPARE(oHost.command({"join", "1"}), "window");
        QCOMPARE(oAnalyst.dialog(), "none");
    }

    void theBoxCanBeEndedInSeveralWays_data()
    {
        QTest::addColumn<QByteArray>("oKey"); ///< or none, for the window manager's button
        QTest::newRow("Return") << "Return"_ba;
        QTest::newRow("keypad Enter") << "KP_Enter"_ba;
        QTest::newRow("Space") << "space"_ba;
        QTest::newRow("Escape") << "Escape"_ba;
        QTest::newRow("close button") << ""_ba;
    }

    void theBoxCanBeEndedInSeveralWays()
    {
        QFETCH(QByteArray, oKey);
        CPlainHost oHost;
        oHost.announceOutput({"show error"});
        construct(oHost, "nowhere");
        QCOMPARE(oHost.command({"finished", "1"}), "no");
        if (oKey.isEmpty())
            oScreen.close("SQL Error");
        else
            oScreen.press({oKey});
        QCOMPARE(oHost.command({"join", "1"}), "window");
    }

    void withoutADatabaseTheWindowIsEmptyAndAnswers()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        constructInVain(oHost, "nowhere");
        // when
        oAnalyst.showWindow();
        oHost.announceErrors({"CNodeBrowser: Changed Table to news_train"});
        oHost.call("setSOMTable", {"t:news_train"});
        oHost.call("select", {"i:1"});
        // then
        QCOMPARE(oAnalyst.table(), QByteArrayList{""});
        QCOMPARE(oAnalyst.menu("ShowMenu"), QByteArrayList{""});
        QCOMPARE(oAnalyst.menu("SortMenu"), QByteArrayList{""});
        QCOMPARE(oAnalyst.text("texteditor"), "no article selected");
        oHost.call("markRow", {"k:2005-03-01 12:00:00", "i:1"});
        QCOMPARE(oHost.numRows(), 0);
        QCOMPARE(oHost.call("getFirstDateInFrame", {"oi:1"}), "0");
        QCOMPARE(oHost.call("fillDate", {"oi:2"}), "-7777 -7777");
        oHost.call("setRowColors", {"c:1x0,0,0"});
        // and the user can do no harm
        oAnalyst.click(oAnalyst.part("table"));
        oAnalyst.click(oAnalyst.part("checkdate"));
        oAnalyst.press({"Tab", "End", "Down"});
        QCOMPARE(oAnalyst.currentCell(), "none");
        QCOMPARE(oAnalyst.dialog(), "none");
    }

    void aServerThatComesLaterIsOpenedForTheTree()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oServer.kill();
        constructInVain(oHost, "som");
        for (const char* pcVariable : {"MYSQL_HOST", "MYSQL_USER", "MYSQL_PWD"})
            oHost.command({"unenv", pcVariable}); // no longer needed
        oServer.restart();
        // when
        oHost.announceErrors(
            {"CNodeBrowser: Changed Table to news_train", "Database has been opened successfully"});
        oHost.call("setSOMTable", {"t:news_train"});
        oHost.passHierarchy();
        // then
        oAnalyst.showWindow();
        QVERIFY(oAnalyst.tree().first().endsWith("alles, viel, mehr"));
        // and the table takes part from its next table on
        oHost.announceErrors({"CNodeBrowser: Changed Table to news_train"});
        oHost.call("setSOMTable", {"t:news_train"});
        oHost.call("select", {"i:2"});
        QCOMPARE(oAnalyst.table(),
            QByteArrayList({"date | title", "10.05.06 12:00 | Sommer", "11.05.06 12:00 | Herbst"}));
    }

    void aDatabaseThatStaysAwayIsToldForEachHierarchy()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        constructInVain(oHost, "nowhere");
        oHost.announceErrors({"CNodeBrowser: Changed Table to news_train"});
        oHost.call("setSOMTable", {"t:news_train"});
        // when
        oHost.announceOutput({"show error"});
        oHost.passHierarchy();
        // then
        QTUTILS_WAIT_FOR(oScreen.isActive("SQL Error"));
        QCOMPARE(oAnalyst.dialog(),
            "SQL Error: Could not open SOM Database!\n\nUnknown database 'nowhere' QMYSQL: Unable to "
            "connect");
        // when
        oAnalyst.press({"Return"});
        // then
        QCOMPARE(oAnalyst.dialog(), "none");
        oAnalyst.showWindow();
        QCOMPARE(oAnalyst.tree(), QByteArrayList({"v 0 | ", "  - 1 | ", "  - 2 | ", "  - 3 | "}));
    }

    void treeAndTableShareOneConnection()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        oHost.announceErrors({"Database is open. Commencing."});
        oHost.passHierarchy();
        oAnalyst.click(oAnalyst.item(0));
        QCOMPARE(oAnalyst.table().size(), 2);
        QCOMPARE(connections(), QStringList{u"som"_s});
    }

    void aNewWindowHasTheOnlyConnection()
    {
        CPlainHost oHost;
        oHost.start();
        oHost.announceErrors({"Terminating QApplication"});
        oHost.free();
        oHost.call("CNodeBrowser", {"t:news", "t:news"});
        QTRY_COMPARE_WITH_TIMEOUT(connections(), QStringList{u"news"_s}, 20000);
    }

    void aHostThatIsNotThisMachineIsReachedByItsPort()
    {
        // given
        const CPort oOther;
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oHost.command({"env", "MYSQL_HOST", "127.0.0.1"});
        oHost.command({"env", "MYSQL_TCP_PORT", QByteArray::number(oOther.number())});
        oHost.announceOutput({"show error"});
        // when
        oHost.load();
        oHost.command({"start", "1", "call", "CNodeBrowser", "t:som", "t:news"});
        // then
        QVERIFY(oOther.refuse());
        QTUTILS_WAIT_FOR(oScreen.isActive("SQL Error"));
        QVERIFY(oAnalyst.dialog().startsWith("SQL Error: Could not open SOM Database!\n\nLost connection"));
        oAnalyst.press({"Return"});
        QCOMPARE(oHost.command({"join", "1"}), "window");
    }

private:
    /// Begins a construction that fails to open the database; the box is there then.
    void construct(CPlainHost& oHost, const QByteArray& oDatabase) const
    {
        oHost.load();
        oHost.command({"start", "1", "call", "CNodeBrowser", "t:" + oDatabase, "t:news"});
        QTUTILS_WAIT_FOR(oScreen.isActive("SQL Error"));
    }

    /// A window without a database.
    void constructInVain(CPlainHost& oHost, const QByteArray& oDatabase) const
    {
        oHost.announceOutput({"show error"});
        construct(oHost, oDatabase);
        oScreen.press({"Return"});
        QCOMPARE(oHost.command({"join", "1"}), "window");
    }

    /// The databases that the hosts' connections use.
    QStringList connections() const
    {
        return oServer.sql(u"SELECT db FROM information_schema.processlist WHERE user='reader'"_s);
    }

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleDatabase)
#include "tst_module_database.moc"
