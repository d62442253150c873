// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CPlainHost.h"
#include "CScreen.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

#include <functional>

class TestModuleExit : public QObject
{
    Q_OBJECT

private:
    /// What a host does before it ends.
    using Life = std::function<void(CPlainHost&)>;

private Q_SLOTS:
    void initTestCase()
    {
        oServer.load(QStringLiteral("news.sql"));
        oServer.sql(QStringLiteral(
            "USE som; CREATE VIEW many AS SELECT 1 node, 0.5 dist, 1 + seq % 7 item FROM seq_1_to_100000; "
            "CREATE VIEW endless AS SELECT node, dist, item FROM news_train WHERE SLEEP(3600)=0"));
    }

    void aHostThatExitsKeepsItsExitCode_data()
    {
        QTest::addColumn<QByteArray>("oLife");
        QTest::addColumn<QByteArrayList>("lEnding");
        for (auto it = oLives.begin(); it != oLives.end(); ++it)
            for (const QByteArrayList& lEnding : {QByteArrayList{"exit", "3"}, {"return", "4"},
                     {"_exit", "5"}, {"quick_exit", "6"}, {"start", "9", "exit", "7"}})
                QTest::addRow("%s, %s", it.key().constData(), lEnding.join(' ').constData())
                    << it.key() << lEnding;
    }

    void aHostThatExitsKeepsItsExitCode()
    {
        QFETCH(QByteArray, oLife);
        QFETCH(QByteArrayList, lEnding);
        for (int i = 0; i < Repetitions; i++) {
            // given
            CPlainHost oHost;
            oLives[oLife](oHost);
            // when
            oHost.give(lEnding);
            // then
            QCOMPARE(oHost.end(), lEnding.last());
            if (oLife == "just freed") // the ending may be faster than the line
                QVERIFY(
                    QByteArrayList({Opened, Terminating}).mid(0, oHost.errors().size()) == oHost.errors());
        }
    }

    void aHostExitsThoughTheServerHangs()
    {
        // given
        CPlainHost oHost;
        oHost.start();
        oHost.call("setSOMTable", {"t:endless"});
        oHost.call("select", {"i:1"});
        QTUTILS_WAIT_FOR(queryRuns());
        // when
        oHost.give({"exit", "3"});
        // then
        QCOMPARE(oHost.end(), "3");
        QByteArrayList lErrors = oHost.errors();
        // Qt's exit handlers may complain of what the hanging thread owns.
        lErrors.removeIf([](const QByteArray& oLine) { return oLine.endsWith(FromAnotherThread); });
        QCOMPARE(lErrors, QByteArrayList({Opened, "CNodeBrowser: Changed Table to endless"}));
    }

    void aHostsExitHandlerMayCallTheModule_data()
    {
        QTest::addColumn<QByteArrayList>("lCall");
        QTest::addColumn<QByteArray>("oResult");
        QTest::newRow("question") << QByteArrayList{"getNumRows", "oi:1"} << QByteArray("at exit -7777");
        QTest::newRow("command") << QByteArrayList{"select", "i:1"} << QByteArray("at exit ");
        QTest::newRow("free") << QByteArrayList{"FREE_CNodeBrowser"} << QByteArray("at exit ");
    }

    void aHostsExitHandlerMayCallTheModule()
    {
        // given
        QFETCH(QByteArrayList, lCall);
        QFETCH(QByteArray, oResult);
        CPlainHost oHost;
        oHost.command(QByteArrayList{"atexit", "call"} + lCall); // runs after the module's own
        oHost.start();
        // when
        oHost.give({"exit", "3"});
        // then
        QCOMPARE(oHost.end(), "3");
        QCOMPARE(oHost.output(), QByteArrayList{oResult});
    }

    void aConstructionInAHostsExitHandlerGivesNull()
    {
        CPlainHost oHost;
        oHost.command({"atexit", "call", "CNodeBrowser", "t:som", "t:news"});
        oHost.start();
        oHost.free();
        oHost.give({"exit", "3"});
        QCOMPARE(oHost.end(), "3");
        QCOMPARE(oHost.output(), QByteArrayList{"at exit null"});
        oHost.errors();
    }

    void anUnloadedModuleCanBeLoadedAgain_data()
    {
        QTest::addColumn<QByteArray>("oLife");
        for (const char* pcLife :
            {"never constructed", "hidden", "shown", "viewer open", "just freed", "freed"})
            QTest::newRow(pcLife) << QByteArray(pcLife);
    }

    void anUnloadedModuleCanBeLoadedAgain()
    {
        QFETCH(QByteArray, oLife);
        for (int i = 0; i < Repetitions; i++) {
            // given
            CPlainHost oHost;
            oLives[oLife](oHost);
            // when
            QCOMPARE(oHost.command({"unload"}), "unloaded");
            QCOMPARE(oHost.load(), "loaded");
            // then
            if (oHost.numRows() >= 0)
                oHost.announceErrors({"CNodeBrowser: Changed Table to news_train"});
            oHost.call("setSOMTable", {"t:news_train"});
            QVERIFY(oHost.construct().endsWith("window"));
            oHost.call("select", {"i:1"});
            QCOMPARE(oHost.numRows(), 5);
            // when
            QCOMPARE(oHost.command({"unload"}), "unloaded");
            oHost.give({"exit", "3"});
            // then
            QCOMPARE(oHost.end(), "3");
        }
    }

private:
    bool queryRuns() const
    {
        return oServer.sql(QStringLiteral("SELECT 1 FROM information_schema.processlist "
                                          "WHERE user='reader' AND command='Query'"))
            == QStringList{QStringLiteral("1")};
    }

    void show(CPlainHost& oHost) const
    {
        oHost.start();
        oHost.call("show");
        QTUTILS_WAIT_FOR(oScreen.isShown("Ombrel"));
    }

    void openBox(CPlainHost& oHost) const
    {
        oHost.load();
        oHost.command({"env", "MYSQL_PWD", "wrong"});
        oHost.announceOutput({"show error"});
        oHost.command({"start", "1", "call", "CNodeBrowser", "t:som", "t:news"});
        QTUTILS_WAIT_FOR(oScreen.isShown("SQL Error"));
    }

    void openViewer(CPlainHost& oHost) const
    {
        show(oHost);
        QTUTILS_WAIT_FOR(oScreen.isActive("Ombrel"));
        oHost.call("select", {"i:1"});
        oHost.numRows();
        oScreen.click(oScreen.place("Ombrel").topLeft() + FirstRow);
        oScreen.press({"Return"});
        QTUTILS_WAIT_FOR(oScreen.shown().size() == 2);
    }

    static void queryMany(CPlainHost& oHost)
    {
        oHost.start();
        oHost.call("setSOMTable", {"t:many"});
        oHost.call("select", {"i:1"});
        QTUTILS_WAIT_FOR(oHost.errors().contains("CNodeBrowser: Changed Table to many"));
    }

    static void fillDate(CPlainHost& oHost)
    {
        oHost.start();
        oHost.call("select", {"i:1"});
        oHost.call("fillDate", {"oi:5"});
    }

    static void free(CPlainHost& oHost)
    {
        oHost.start();
        oHost.call("show");
        oHost.announceErrors({Terminating});
        oHost.free();
    }

    static constexpr int Repetitions = 5;
    static constexpr const char* FromAnotherThread = ": Timers cannot be stopped from another thread";
    static constexpr const char* Opened = "Database is open. Commencing.";
    static constexpr const char* Terminating = "Terminating QApplication";

    CPrivateServer oServer;
    CScreen oScreen;
    QMap<QByteArray, Life> oLives{
        {"never constructed", [](CPlainHost& oHost) { oHost.load(); }},
        {"hidden", [](CPlainHost& oHost) { oHost.start(); }},
        {"shown", [this](CPlainHost& oHost) { show(oHost); }},
        {"just shown",
            [](CPlainHost& oHost) {
                oHost.start();
                oHost.call("show");
            }},
        {"viewer open", [this](CPlainHost& oHost) { openViewer(oHost); }},
        {"many rows", queryMany},
        {"fillDate waits", fillDate},
        {"just freed", free},
        {"freed",
            [](CPlainHost& oHost) {
                free(oHost);
                QTUTILS_WAIT_FOR(oHost.errors().contains(Terminating));
            }},
        {"box open", [this](CPlainHost& oHost) { openBox(oHost); }},
        {"question waits",
            [](CPlainHost& oHost) {
                fillDate(oHost);
                oHost.command({"start", "1", "call", "getNumRows", "oi:1"});
            }},
    };
};

QTUTILS_MODULE_TEST_MAIN(TestModuleExit)
#include "tst_module_exit.moc"
