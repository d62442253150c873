// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CHostLife.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

/// The X server goes away. The host lives on without a window.
class TestModuleDisplayLoss : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        oServer.load(QStringLiteral("news.sql"));
        CHostLife::prepare(oServer);
    }

    void theHostLivesOn_data()
    {
        QTest::addColumn<QByteArray>("oLife");
        QTest::addColumn<QByteArrayList>("lEnding");
        for (const QByteArray oLife : {"hidden", "shown", "menu open", "viewer open", "find dialog open",
                 "painting", "query runs", "tree is built"})
            for (const QByteArrayList& lEnding :
                {QByteArrayList{"exit", "3"}, {"return", "4"}, {"_exit", "5"}, {"start", "9", "exit", "7"}})
                QTest::addRow("%s, %s", oLife.constData(), lEnding.join(' ').constData()) << oLife << lEnding;
    }

    void theHostLivesOn()
    {
        QFETCH(QByteArray, oLife);
        QFETCH(QByteArrayList, lEnding);
        // given
        CPrivateDisplay oDisplay(CPrivateDisplay::Manager::Running);
        CPlainHost oHost;
        CScreen oScreen;
        CHostLife oHostLife(oHost, oScreen);
        oHostLife.lead(oLife);
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
    const QByteArray Lost =
        "qtutils: the display is lost, and with it the window; there will be no other one";
    CPrivateServer oServer;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleDisplayLoss)
#include "tst_module_displayloss.moc"
