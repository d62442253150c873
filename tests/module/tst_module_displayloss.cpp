// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CPlainHost.h"
#include "CScreen.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

#include <functional>

/// The X server goes away. The host lives on without a window.
class TestModuleDisplayLoss : public QObject
{
    Q_OBJECT

private:
    /// What a host does before.
    using Life = std::function<void(CPlainHost&, const CScreen&)>;

private Q_SLOTS:
    void initTestCase()
    {
        oServer.load(QStringLiteral("news.sql"));
        oServer.sql(QStringLiteral(
            "USE som; CREATE VIEW many AS SELECT 1 node, 0.5 dist, 1 + seq % 7 item FROM seq_1_to_100000"));
    }

    void theHostLivesOn_data()
    {
        QTest::addColumn<QByteArray>("oLife");
        QTest::addColumn<QByteArrayList>("lEnding");
        for (auto it = oLives.begin(); it != oLives.end(); ++it)
            for (const QByteArrayList& lEnding :
                {QByteArrayList{"exit", "3"}, {"return", "4"}, {"_exit", "5"}, {"start", "9", "exit", "7"}})
                QTest::addRow("%s, %s", it.key().constData(), lEnding.join(' ').constData())
                    << it.key() << lEnding;
    }

    void theHostLivesOn()
    {
        QFETCH(QByteArray, oLife);
        QFETCH(QByteArrayList, lEnding);
        // given
        CPrivateDisplay oDisplay(CPrivateDisplay::Manager::Running);
        CPlainHost oHost;
        oLives[oLife](oHost, CScreen());
        // when
        oDisplay.kill();
        // then
        QTUTILS_WAIT_FOR(oHost.errors().contains(Lost));
        QCOMPARE(oHost.numRows(), -7777);
        QCOMPARE(oHost.call("fillDate", {"oi:1"}), "-7777");
        for (const char* pcMethod : {"show", "hideTable", "FREE_CNodeBrowser"})
            QCOMPARE(oHost.call(pcMethod), "");
        QCOMPARE(oHost.construct(), "null");
        // when
        oHost.give(lEnding);
        // then
        QCOMPARE(oHost.end(), lEnding.last());
        oHost.errors();
    }

    void callsThatWaitReturnWithoutAnAnswer()
    {
        // given
        CPrivateDisplay oDisplay(CPrivateDisplay::Manager::Running);
        CPlainHost oHost;
        oHost.load();
        oHost.command({"env", "MYSQL_PWD", "wrong"});
        oHost.command({"start", "1", "call", "CNodeBrowser", "t:som", "t:news"});
        const CScreen oScreen;
        QTUTILS_WAIT_FOR(oScreen.isShown("SQL Error"));
        // when
        oDisplay.kill();
        // then
        QCOMPARE(oHost.command({"join", "1"}), "null");
        QVERIFY(oHost.errors().contains(Lost));
        QCOMPARE(oHost.output(), QByteArrayList({"show error"}));
    }

private:
    static void show(CPlainHost& oHost, const CScreen& oScreen)
    {
        oHost.start();
        oHost.call("select", {"i:1"});
        oHost.call("show");
        QTUTILS_WAIT_FOR(oScreen.isActive("Ombrel"));
    }

    const QByteArray Lost =
        "qtutils: the display is lost, and with it the window; there will be no other one";
    CPrivateServer oServer;
    QMap<QByteArray, Life> oLives{
        {"hidden", [](CPlainHost& oHost, const CScreen& /*oScreen*/) { oHost.start(); }},
        {"shown", show},
        {"menu open",
            [](CPlainHost& oHost, const CScreen& oScreen) {
                show(oHost, oScreen);
                oScreen.press({"alt+s"});
            }},
        {"find dialog open",
            [](CPlainHost& oHost, const CScreen& oScreen) {
                show(oHost, oScreen);
                oScreen.click(oScreen.place("Ombrel").topLeft() + FirstRow);
                oScreen.press({"Return"});
                QTUTILS_WAIT_FOR(oScreen.shown().size() == 2);
                oScreen.press({"ctrl+f"});
                QTUTILS_WAIT_FOR(oScreen.isActive("Find"));
            }},
        {"many rows",
            [](CPlainHost& oHost, const CScreen& oScreen) {
                show(oHost, oScreen);
                oHost.call("setSOMTable", {"t:many"});
                oHost.call("select", {"i:1"});
            }},
    };
};

QTUTILS_MODULE_TEST_MAIN(TestModuleDisplayLoss)
#include "tst_module_displayloss.moc"
