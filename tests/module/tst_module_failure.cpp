// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CPlainHost.h"
#include "CScreen.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

#include <sys/syscall.h>

/// Constructions that fail, or go on without a database.
class TestModuleFailure : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        // so that the data outlive a crash
        oServer.sql(QStringLiteral("SET GLOBAL innodb_flush_log_at_trx_commit=1"));
        oServer.load(QStringLiteral("news.sql"));
    }

    void withoutADatabaseVariableThereIsNoWindow_data()
    {
        QTest::addColumn<QByteArray>("oVariable");
        for (const char* pcVariable : {"MYSQL_HOST", "MYSQL_USER", "MYSQL_PWD"})
            QTest::newRow(pcVariable) << QByteArray(pcVariable);
    }

    void withoutADatabaseVariableThereIsNoWindow()
    {
        // given
        QFETCH(QByteArray, oVariable);
        CPlainHost oHost;
        oHost.load();
        const QByteArray oValue = oHost.command({"getenv", oVariable});
        oHost.command({"unenv", oVariable});
        // when
        const QByteArray oAnswer = oHost.construct();
        // then
        QCOMPARE(oAnswer, "null");
        QCOMPARE(oHost.command({"getenv", "LANG"}), "de_DE");
        QCOMPARE(oHost.threads().size(), 1);
        QCOMPARE(oHost.output() + oHost.errors(), QByteArrayList());
        // The failed one counts, so the next one finds "the" window. Both have to be taken back.
        oHost.command({"env", oVariable, oValue});
        QCOMPARE(oHost.construct(), "null");
        oHost.free();
        oHost.free();
        QCOMPARE(useOnce(oHost), "window 5");
    }

    void anEmptyVariableIsAValue()
    {
        // given
        oServer.sql(
            QStringLiteral("CREATE USER 'open'@'localhost'; GRANT SELECT ON *.* TO 'open'@'localhost'"));
        CPlainHost oHost;
        oHost.load();
        oHost.command({"env", "MYSQL_USER", "open"});
        oHost.command({"env", "MYSQL_PWD", ""});
        // when, then
        QCOMPARE(useOnce(oHost), "window 5");
    }

    void withoutADisplayThereIsNoWindow_data()
    {
        QTest::addColumn<QByteArrayList>("lCommand");
        QTest::newRow("unset") << QByteArrayList{"unenv", "DISPLAY"};
        QTest::newRow("wrong") << QByteArrayList{"env", "DISPLAY", ":9999"};
    }

    void withoutADisplayThereIsNoWindow()
    {
        // given
        QFETCH(QByteArrayList, lCommand);
        CPlainHost oHost;
        oHost.load();
        const QByteArray oDisplay = oHost.command({"getenv", "DISPLAY"});
        oHost.command(lCommand);
        // when
        const QByteArray oAnswer = oHost.construct();
        // then
        QCOMPARE(oAnswer, "null");
        QTUTILS_WAIT_FOR(!oHost.errors().isEmpty());
        QCOMPARE(oHost.errors(), QByteArrayList({"qtutils: the display cannot be opened"}));
        QCOMPARE(oHost.numRows(), -7777);
        QCOMPARE(oHost.construct(), "null");
        oHost.free();
        oHost.free();
        // when
        oHost.command({"env", "DISPLAY", oDisplay});
        // then
        QCOMPARE(useOnce(oHost), "window 5");
        // when
        oHost.give({"exit", "7"});
        // then
        QCOMPARE(oHost.end(), "7");
    }

    void withoutADisplayAnotherPlatformMayBeAskedFor()
    {
        CPlainHost oHost;
        oHost.load();
        oHost.command({"unenv", "DISPLAY"});
        oHost.command({"env", "QT_QPA_PLATFORM", "offscreen"});
        QCOMPARE(useOnce(oHost), "window 5");
    }

    void aWaylandSessionIsNotUsed()
    {
        CPlainHost oHost;
        oHost.load();
        oHost.command({"env", "XDG_SESSION_TYPE", "wayland"});
        oHost.command({"env", "WAYLAND_DISPLAY", "wayland-0"});
        oHost.construct();
        oHost.call("show");
        QTUTILS_WAIT_FOR(oScreen.isActive("Ombrel"));
    }

    void aHostWithAQtApplicationGetsNoWindow()
    {
        CPlainHost oHost;
        QCOMPARE(oHost.command({"library", QTUTILS_QT_APPLICATION}), "loaded");
        oHost.load();
        QCOMPARE(oHost.construct(), "null");
        QCOMPARE(oHost.numRows(), -7777);
        QTUTILS_WAIT_FOR(!oHost.errors().isEmpty());
        QCOMPARE(oHost.errors(), QByteArrayList{"qtutils: the host has an application object of its own"});
        oHost.give({"exit", "3"});
        QCOMPARE(oHost.end(), "3");
        oHost.errors();
    }

    void aWrongPasswordIsSaidInABoxThatTheHostWaitsFor()
    {
        // given
        CPlainHost oHost;
        oHost.load();
        oHost.command({"env", "MYSQL_PWD", "wrong"});
        oHost.call("setSOMTable", {"t:news_train"});
        // when
        oHost.command({"start", "1", "call", "CNodeBrowser", "t:som", "t:news"});
        // then
        QTUTILS_WAIT_FOR(oScreen.isActive("SQL Error"));
        QCOMPARE(oScreen.shown(), QByteArrayList({"SQL Error"}));
        QCOMPARE(oHost.command({"finished", "1"}), "no");
        // when
        oScreen.press({"Return"});
        // then
        QCOMPARE(oHost.command({"join", "1"}), "window");
        QCOMPARE(oHost.output(), QByteArrayList({"show error"}));
        // when
        oHost.call("select", {"i:1"});
        oHost.call("show");
        // then
        QTUTILS_WAIT_FOR(oScreen.isShown("Ombrel"));
        QCOMPARE(oScreen.shown(), QByteArrayList({"Ombrel"}));
        QCOMPARE(oHost.numRows(), 0);
        QCOMPARE(oHost.call("fillDate", {"oi:1"}), "-7777");
        oHost.call("setRowColors", {"c:1x0,0,0"});
        QCOMPARE(oHost.call("getFirstDateInFrame", {"oi:1"}), "0");
        QCOMPARE(oHost.call("getFirstDateInSelection", {"ot:20"}), "untouched");
        QCOMPARE(oHost.output(), QByteArrayList({"show error"}));
        QCOMPARE(oHost.errors(),
            QByteArrayList({"CTable: An Error occurred while getting first date in selection                ",
                "SelectCursor is empty!"}));
    }

    void commandsAreDroppedAndConstructionsWaitWhileTheBoxStands()
    {
        // given
        CPlainHost oHost;
        oHost.announceOutput({"show error"});
        oHost.load();
        oHost.command({"start", "1", "call", "CNodeBrowser", "t:nowhere", "t:news"});
        QTUTILS_WAIT_FOR(oScreen.isActive("SQL Error"));
        // when
        oHost.call("select", {"i:1"});
        oHost.call("show");
        const int iThread = oHost.command({"start", "2", "call", "CNodeBrowser", "t:som", "t:news"}).toInt();
        // then
        QTUTILS_WAIT_FOR(oHost.sleepsIn(iThread, SYS_futex));
        QCOMPARE(oHost.command({"finished", "1"}), "no");
        // when
        oScreen.press({"Return"});
        // then
        QCOMPARE(oHost.command({"join", "1"}), "window");
        QVERIFY(oHost.command({"join", "2"}).endsWith("window"));
        QCOMPARE(oHost.construct(), "same window");
        QCOMPARE(oHost.numRows(), 0);
        QCOMPARE(oScreen.shown(), QByteArrayList());
    }

    void aConstructionAfterAWrongPasswordWorks()
    {
        // given
        CPlainHost oHost;
        oHost.load();
        const QByteArray oPassword = oHost.command({"getenv", "MYSQL_PWD"});
        oHost.command({"env", "MYSQL_PWD", "wrong"});
        oHost.announceOutput({"show error"});
        oHost.give({"call", "CNodeBrowser", "t:som", "t:news"});
        QTUTILS_WAIT_FOR(oScreen.isActive("SQL Error"));
        oScreen.press({"Return"});
        oHost.answer();
        oHost.announceErrors({"Terminating QApplication"});
        oHost.free();
        // when
        oHost.command({"env", "MYSQL_PWD", oPassword});
        // then
        QVERIFY(useOnce(oHost).endsWith("window 5"));
    }

    void aLostServerMakesTheTableEmpty()
    {
        CPlainHost oHost;
        oHost.start();
        oHost.call("select", {"i:1"});
        QCOMPARE(oHost.numRows(), 5);
        oServer.kill();
        oHost.call("select", {"i:2"});
        QCOMPARE(oHost.numRows(), 0);
        oServer.restart();
    }

    void aServerThatWasLostIsFoundByTheNextWindow()
    {
        // given
        CPlainHost oHost;
        oHost.start();
        oServer.restart();
        // when
        oHost.call("select", {"i:1"});
        // then
        QCOMPARE(oHost.numRows(), 0);
        // when
        oHost.announceErrors({"Terminating QApplication"});
        oHost.free();
        // then: perhaps where the last one was
        QVERIFY(useOnce(oHost).endsWith("window 5"));
    }

    void aDatabaseWithoutANameIsNone_data()
    {
        QTest::addColumn<QByteArrayList>("lNames");
        QTest::newRow("no map") << QByteArrayList{"null", "t:news"};
        QTest::newRow("no documents") << QByteArrayList{"t:som", "null"};
        QTest::newRow("neither") << QByteArrayList{"null", "null"};
        QTest::newRow("empty") << QByteArrayList{"t:", "t:"};
        QTest::newRow("no array") << QByteArrayList{"no array"};
    }

    void aDatabaseWithoutANameIsNone()
    {
        QFETCH(QByteArrayList, lNames);
        CPlainHost oHost;
        oHost.load();
        oHost.call("setSOMTable", {"t:news_train"});
        QCOMPARE(oHost.call("CNodeBrowser", lNames), "window");
        oHost.call("select", {"i:1"});
        QCOMPARE(oHost.numRows(), 0);
        oHost.call("show");
        QTUTILS_WAIT_FOR(oScreen.isActive("Ombrel"));
        QCOMPARE(oScreen.shown(), QByteArrayList({"Ombrel"}));
    }

private:
    /// Constructs, shows node 1 and frees: the construction's answer and the number of rows.
    static QByteArray useOnce(CPlainHost& oHost)
    {
        oHost.call("setSOMTable", {"t:news_train"});
        const QByteArray oWindow = oHost.construct();
        oHost.call("select", {"i:1"});
        const int iRows = oHost.numRows();
        oHost.announceErrors({"Terminating QApplication"});
        oHost.free();
        return oWindow + ' ' + QByteArray::number(iRows);
    }

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleFailure)
#include "tst_module_failure.moc"
