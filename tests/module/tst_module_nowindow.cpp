// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CPlainHost.h"
#include "CScreen.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

/// Calls while there is no window, and calls with a handle that isn't the window's.
class TestModuleNoWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { oServer.load(QStringLiteral("news.sql")); }

    void everyCallReturnsAtOnceAndWritesNothing_data()
    {
        QTest::addColumn<QByteArray>("oState");
        QTest::addColumn<QByteArrayList>("lCall");
        QTest::addColumn<QByteArray>("oResult");
        for (const char* pcState : {"never constructed", "freed only", "freed", "freed too often",
                 "construction failed", "failed and freed", "loaded again"})
            for (const auto& [lCall, oResult] : calls())
                QTest::addRow("%s, %s", pcState, lCall.first().constData())
                    << QByteArray(pcState) << lCall << oResult;
    }

    void everyCallReturnsAtOnceAndWritesNothing()
    {
        // given
        QFETCH(QByteArray, oState);
        QFETCH(QByteArrayList, lCall);
        QFETCH(QByteArray, oResult);
        CPlainHost oHost;
        lead(oHost, oState);
        // when, then
        QCOMPARE(oHost.command(QByteArrayList{"repeat", "20"} + lCall), oResult);
        QCOMPARE(oScreen.shown(), QByteArrayList());
        if (oState == "construction failed")
            oHost.free();
        checkGoodLife(oHost);
    }

    void furtherFreesDontCount_data()
    {
        QTest::addColumn<QByteArray>("oState");
        QTest::addColumn<int>("iFrees");
        for (const char* pcState : {"never constructed", "freed", "failed and freed"})
            for (const int iFrees : {1, 2, 1000})
                QTest::addRow("%s, %d more", pcState, iFrees) << QByteArray(pcState) << iFrees;
    }

    void furtherFreesDontCount()
    {
        QFETCH(QByteArray, oState);
        QFETCH(int, iFrees);
        CPlainHost oHost;
        lead(oHost, oState);
        oHost.command({"repeat", QByteArray::number(iFrees), "FREE_CNodeBrowser"});
        checkGoodLife(oHost);
    }

    void theHandleIsNotLookedAt_data()
    {
        QTest::addColumn<QByteArray>("oHandle");
        QTest::newRow("of the window before") << QByteArray("first");
        QTest::newRow("null") << QByteArray("null");
        QTest::newRow("no window's") << QByteArray("wrong");
    }

    void theHandleIsNotLookedAt()
    {
        // given
        QFETCH(QByteArray, oHandle);
        CPlainHost oHost;
        lead(oHost, "freed");
        oHost.call("setSOMTable", {"t:news_train"});
        oHost.construct();
        // when
        oHost.command({"handle", oHandle});
        // then
        oHost.call("select", {"i:1"});
        QCOMPARE(oHost.numRows(), 5);
        QCOMPARE(oHost.call("fillDate", {"oi:5"}), "0 2010 2220 3376 4320");
        oHost.call("setRowColors", {"c:5x120,255,255"});
        oHost.call("markRow", {"k:1970-01-01 00:00:00", "i:1"});
        QCOMPARE(oHost.call("getFirstDateInFrame", {"oi:1"}), "18492420");
        QCOMPARE(oHost.call("getFirstDateInSelection", {"ot:20"}), "2005-02-27T23:59:59");
        // when
        oHost.announceErrors({"Terminating QApplication"});
        oHost.free();
        // then
        QCOMPARE(oHost.numRows(), Untouched);
        checkGoodLife(oHost);
    }

private:
    using Calls = QList<std::pair<QByteArrayList, QByteArray>>;

    /// All calls but the constructor's, and what they give without a window.
    static const Calls& calls()
    {
        static const Calls AllCalls{{{"FREE_CNodeBrowser"}, ""}, {{"select", "i:1"}, ""},
            {{"getNumRows", "oi:1"}, "-7777"}, {{"fillDate", "oi:2"}, "-7777 -7777"},
            {{"dateToInt", "t:1970-01-01 01:07:00", "oi:1"}, "7"}, {{"setRowColors", "c:5x0,0,0"}, ""},
            {{"markRow", "k:2005-03-01 12:00:00", "i:1"}, ""}, {{"getFirstDateInFrame", "oi:1"}, "-7777"},
            {{"getFirstDateInSelection", "ot:20"}, "untouched"},
            {{"passNodeHierarchy", "n:1", "i:1", "i:0", "i:1"}, ""}, {{"setSOMTable", "t:news_train"}, ""},
            {{"hideTable"}, ""}, {{"show"}, ""}};
        return AllCalls;
    }

    static void lead(CPlainHost& oHost, const QByteArray& oState)
    {
        oHost.load();
        if (oState == "freed only")
            oHost.free();
        if (oState == "freed" || oState == "freed too often" || oState == "loaded again") {
            oHost.announceErrors({"Terminating QApplication"});
            oHost.construct();
            oHost.free();
        }
        if (oState == "freed too often")
            oHost.command({"repeat", "5", "FREE_CNodeBrowser"});
        if (oState.contains("failed"))
            fail(oHost);
        if (oState == "failed and freed")
            oHost.free();
        if (oState == "loaded again") {
            oHost.command({"unload"});
            oHost.load();
        }
    }

    static void fail(CPlainHost& oHost)
    {
        const QByteArray oPassword = oHost.command({"getenv", "MYSQL_PWD"});
        oHost.command({"unenv", "MYSQL_PWD"});
        QCOMPARE(oHost.construct(), "null");
        oHost.command({"env", "MYSQL_PWD", oPassword});
    }

    /// Two constructions need two frees, and the window works until the second one.
    static void checkGoodLife(CPlainHost& oHost)
    {
        oHost.call("setSOMTable", {"t:news_train"});
        QVERIFY(oHost.construct().endsWith("window"));
        QCOMPARE(oHost.construct(), "same window");
        oHost.free();
        oHost.call("select", {"i:1"});
        QCOMPARE(oHost.numRows(), 5);
        oHost.announceErrors({"Terminating QApplication"});
        oHost.free();
        QCOMPARE(oHost.numRows(), Untouched);
    }

    static constexpr int Untouched = -7777;

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleNoWindow)
#include "tst_module_nowindow.moc"
