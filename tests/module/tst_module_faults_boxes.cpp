// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"
#include "treehost.h"

using namespace Qt::StringLiterals;

/// The box that says that there is no database, while the host goes on. It stands because of the tree here:
/// the window was made without a database.
class TestModuleFaultsBoxes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        oServer.sql(u"SET GLOBAL innodb_flush_log_at_trx_commit=1"_s); // so that the data outlive a crash
        oServer.load(u"news.sql"_s);
    }

    void cleanup()
    {
        if (!oServer.isRunning())
            oServer.restart();
    }

    void theBoxSaysWhy_data()
    {
        QTest::addColumn<QString>("sUser");
        QTest::addColumn<QByteArray>("oReason");
        QTest::newRow("locked") << u"CREATE USER 'late'@'localhost' ACCOUNT LOCK"_s
                                << "Access denied, this account is locked"_ba;
        QTest::newRow("too many connections")
            << u"CREATE USER 'late'@'localhost' WITH MAX_USER_CONNECTIONS 1"_s
            << "User 'late' has exceeded the 'max_user_connections' resource (current value: 1)"_ba;
    }

    void theBoxSaysWhy()
    {
        // given
        QFETCH(QString, sUser);
        QFETCH(QByteArray, oReason);
        oServer.sql(u"DROP USER IF EXISTS 'late'@'localhost'; "_s + sUser
            + u"; SET PASSWORD FOR 'late'@'localhost' = PASSWORD('a password'); "
              "GRANT SELECT ON *.* TO 'late'@'localhost'"_s);
        qputenv("MYSQL_USER", "late");
        CPlainHost oFirst;
        CPlainHost oHost;
        qputenv("MYSQL_USER", "reader");
        CAnalyst oAnalyst(oHost, oScreen);
        if (sUser.contains(u"MAX"_s))
            oFirst.start();
        // when
        oHost.announceOutput({"show error"});
        construct(oHost);
        // then
        QCOMPARE(oAnalyst.dialog(),
            "SQL Error: Could not open SOM Database!\n\n" + oReason + " QMYSQL: Unable to connect");
        oAnalyst.press({"Return"});
        QCOMPARE(oHost.command({"join", "1"}), "window");
        oHost.call("select", {"i:1"});
        QCOMPARE(oHost.numRows(), 0);
    }

    void theHostsCallsAreCarriedOutUnderTheBox()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        makeBox(oAnalyst);
        // when, then
        oHost.call("select", {"i:1"});
        QCOMPARE(oHost.numRows(), 0);
        QCOMPARE(oHost.call("fillDate", {"oi:1"}), "-7777");
        oHost.call("setRowColors", {"c:1x0,0,0"});
        QCOMPARE(oHost.call("getFirstDateInFrame", {"oi:1"}), "0");
        oHost.call("markRow", {"k:2005-03-01 13:00:00", "i:1"});
        QCOMPARE(oHost.construct(), "same window");
        oHost.free();
        oHost.call("hideTable");
        oHost.call("show");
        QTUTILS_WAIT_FOR(oScreen.isShown("Ombrel"));
        QCOMPARE(oHost.call("getFirstDateInFrame", {"oi:1"}), "0");
        // then: the box is there still
        QVERIFY(oAnalyst.dialog().startsWith("SQL Error: Could not open SOM Database!"));
        QCOMPARE(oAnalyst.tree(), QByteArrayList{""});
        // when
        oAnalyst.click(oAnalyst.button("OK"));
        // then
        QCOMPARE(oAnalyst.dialog(), "none");
        QCOMPARE(oAnalyst.tree(), Bare);
    }

    void anotherHierarchyHasABoxOfItsOwn()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        makeBox(oAnalyst);
        // when
        oHost.announceOutput({"show error"});
        oHost.passHierarchy({"2", "", "", ""});
        QTUTILS_WAIT_FOR(oScreen.shown() == QByteArrayList({"SQL Error", "SQL Error"}));
        // then
        oAnalyst.press({"Return"});
        QTUTILS_WAIT_FOR(oScreen.shown() == QByteArrayList{"SQL Error"});
        QTUTILS_WAIT_FOR(oScreen.isActive("SQL Error"));
        oAnalyst.press({"Return"});
        QCOMPARE(oAnalyst.dialog(), "none");
        QCOMPARE(oAnalyst.tree().first(), "v 0 | ");
    }

    void aServerThatComesUnderTheBoxIsFoundByTheNextHierarchy()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        makeBox(oAnalyst);
        oServer.restart();
        // when
        oHost.announceErrors({"Database has been opened successfully"});
        oHost.passHierarchy();
        // then
        QCOMPARE(oAnalyst.tree().first(), "v 0 | alles, viel, mehr");
        oAnalyst.press({"Return"});
        QCOMPARE(oAnalyst.dialog(), "none");
        QCOMPARE(oAnalyst.tree().first(), "v 0 | alles, viel, mehr");
        changeTable(oHost);
        oHost.call("select", {"i:1"});
        QCOMPARE(oHost.numRows(), 5);
    }

    void theLastFreeEndsTheBox()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        makeBox(oAnalyst);
        // when
        oHost.announceErrors({"Terminating QApplication"});
        oHost.free();
        // then
        QTUTILS_WAIT_FOR(oScreen.shown().isEmpty());
        // when
        oServer.restart();
        oHost.call("setSOMTable", {"t:news_train"});
        QVERIFY(oHost.construct().endsWith("window"));
        oHost.call("select", {"i:1"});
        // then
        QCOMPARE(oHost.numRows(), 5);
    }

    void theHostCanEndUnderTheBox()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        makeBox(oAnalyst);
        oHost.give({"exit", "3"});
        QCOMPARE(oHost.end(), "3");
    }

private:
    void construct(CPlainHost& oHost) const
    {
        oHost.load();
        oHost.command({"start", "1", "call", "CNodeBrowser", "t:som", "t:news"});
        QTUTILS_WAIT_FOR(oScreen.isActive("SQL Error"));
    }

    static void changeTable(CPlainHost& oHost)
    {
        oHost.announceErrors({"CNodeBrowser: Changed Table to news_train"});
        oHost.call("setSOMTable", {"t:news_train"});
    }

    /// A hidden window without a server, and the box that a hierarchy brings.
    void makeBox(CAnalyst& oAnalyst)
    {
        CPlainHost& oHost = oAnalyst.host();
        oServer.kill();
        oHost.announceOutput({"show error", "show error"});
        construct(oHost);
        oAnalyst.press({"Return"});
        QCOMPARE(oHost.command({"join", "1"}), "window");
        changeTable(oHost);
        oHost.passHierarchy();
        QTUTILS_WAIT_FOR(oScreen.isActive("SQL Error"));
    }

    const QByteArrayList Bare{"v 0 | ", "  - 1 | ", "  - 2 | ", "  - 3 | "};
    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleFaultsBoxes)
#include "tst_module_faults_boxes.moc"
