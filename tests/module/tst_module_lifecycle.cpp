// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CPlainHost.h"
#include "CScreen.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

class TestModuleLifecycle : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { oServer.load(QStringLiteral("news.sql")); }

    void aNewWindowIsHidden()
    {
        CPlainHost oHost;
        QCOMPARE(oHost.start(), "window");
        QCOMPARE(oScreen.shown(), QByteArrayList());
    }

    void aConstructionPrintsNothing()
    {
        CPlainHost oHost;
        oHost.load();
        QCOMPARE(oHost.construct(), "window");
        QCOMPARE(oHost.numRows(), 0);
        QCOMPARE(oHost.errors(), QByteArrayList());
        QCOMPARE(oHost.output(), QByteArrayList());
    }

    void aConstructionSetsTheLanguage()
    {
        CPlainHost oHost;
        oHost.load();
        QCOMPARE(oHost.command({"getenv", "LANG"}), "C.UTF-8");
        oHost.construct();
        QCOMPARE(oHost.command({"getenv", "LANG"}), "de_DE");
    }

    void aSecondConstructionGivesTheSameWindowAndNoThread()
    {
        // given
        CPlainHost oHost;
        oHost.start();
        const QList<int> lThreads = oHost.threads();
        // when
        const QByteArray oAnswer = oHost.construct();
        // then
        QCOMPARE(oAnswer, "same window");
        QCOMPARE(oHost.threads(), lThreads);
    }

    void asManyFreesAsConstructionsEndTheWindow()
    {
        // given
        CPlainHost oHost;
        oHost.start();
        oHost.construct();
        // when
        oHost.free();
        // then
        oHost.call("select", {"i:1"});
        QCOMPARE(oHost.numRows(), 5);
        QVERIFY(!oHost.errors().contains("Terminating QApplication"));
        // when
        oHost.free();
        // then
        QTUTILS_WAIT_FOR(oHost.errors().contains("Terminating QApplication"));
        QCOMPARE(oHost.numRows(), Untouched);
    }

    void theLastFreeTakesTheWindowOffTheScreen()
    {
        CPlainHost oHost;
        oHost.start();
        oHost.call("show");
        QTUTILS_WAIT_FOR(oScreen.isShown("Ombrel"));
        oHost.announceErrors({"Terminating QApplication"});
        oHost.free();
        QTUTILS_WAIT_FOR(!oScreen.isShown("Ombrel"));
    }

    void theDebugChannelHoldsTheseLinesOnly()
    {
        // given
        CPlainHost oHost;
        oHost.start();
        // when
        oHost.call("setSOMTable", {"t:news_other"});
        oHost.call("passNodeHierarchy", {"n:", "i:0", "i:3", "i:4"});
        oHost.free();
        // then
        QTUTILS_WAIT_FOR(oHost.errors().size() >= 5);
        QCOMPARE(oHost.errors(),
            QByteArrayList({"Database is open. Commencing.", "CNodeBrowser: Changed Table to news_other",
                "Database is open. Commencing.",
                "CListView: WARNING: Could not connect to Database, using               select-statement: "
                "SELECT _assigned_topic, _keywords FROM news_other ",
                "Terminating QApplication"}));
    }

    void theModuleCanBeUsedManyTimesInARow()
    {
        CPlainHost oHost;
        oHost.load();
        for (int i = 0; i < 5; i++) {
            oHost.call("setSOMTable", {"t:news_train"});
            QVERIFY(oHost.construct().endsWith("window"));
            oHost.call("select", {"i:2"});
            QCOMPARE(oHost.numRows(), 2);
            oHost.call("select", {"i:1"});
            QCOMPARE(oHost.numRows(), 5);
            oHost.free();
        }
        QTUTILS_WAIT_FOR(oHost.errors().size() >= 5);
        QCOMPARE(oHost.errors(), QByteArrayList(5, "Terminating QApplication"));
    }

    void aFurtherConstructionUsesItsOwnDatabases()
    {
        // given
        oServer.sql(
            QStringLiteral("CREATE DATABASE IF NOT EXISTS som2; DROP TABLE IF EXISTS som2.news_train; "
                           "CREATE TABLE som2.news_train AS SELECT 1 node, 0.5 dist, 7 item"));
        CPlainHost oHost;
        oHost.start();
        oHost.announceErrors({"Terminating QApplication"});
        oHost.free();
        // when
        oHost.call("setSOMTable", {"t:news_train"});
        oHost.call("CNodeBrowser", {"t:som2", "t:news"});
        // then
        oHost.call("select", {"i:1"});
        QCOMPARE(oHost.numRows(), 1);
    }

    void constructionsInARowStartNoFurtherThread()
    {
        CPlainHost oHost;
        oHost.start();
        const QList<int> lThreads = oHost.threads();
        for (int i = 0; i < 3; i++) {
            oHost.announceErrors({"Terminating QApplication"});
            oHost.free();
            oHost.construct();
        }
        QCOMPARE(oHost.threads(), lThreads);
    }

    void theLastFreeForgetsTheTableName()
    {
        CPlainHost oHost;
        oHost.start();
        oHost.announceErrors({"Terminating QApplication"});
        oHost.free();
        oHost.construct();
        oHost.call("select", {"i:1"});
        QCOMPARE(oHost.numRows(), 0);
    }

    void aHierarchyPassedBeforeTheConstructionIsKept()
    {
        // given
        CPlainHost oHost;
        oHost.load();
        oHost.passHierarchy();
        oHost.call("setSOMTable", {"t:news_train"});
        oHost.construct();
        // when
        oHost.announceErrors({"Database is open. Commencing."});
        oHost.call("passNodeHierarchy", {"n:", "i:0", "i:3", "i:4"});
        oHost.call("show");
        QTUTILS_WAIT_FOR(oScreen.isActive("Ombrel"));
        oServer.startLog();
        oScreen.click(oScreen.place("Ombrel").topLeft() + RootItem);
        oScreen.press({"Down", "Down"});
        // then
        QTUTILS_WAIT_FOR(oServer.log().size() == 3);
        QCOMPARE(nodes(oServer.log()), QByteArrayList({"0", "1", "2"}));
    }

private:
    /// The nodes that statements ask for, in their order.
    static QByteArrayList nodes(const QStringList& slStatements)
    {
        QByteArrayList lNodes;
        for (const QString& sStatement : slStatements)
            lNodes << sStatement.section(QStringLiteral("node="), 1).section(QLatin1Char(' '), 0, 0).toUtf8();
        return lNodes;
    }

    static constexpr int Untouched = -7777;

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleLifecycle)
#include "tst_module_lifecycle.moc"
