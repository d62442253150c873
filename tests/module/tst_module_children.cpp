// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CHostLife.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

#include <QElapsedTimer>

/// Children that the host makes with fork().
class TestModuleChildren : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        oServer.load(QStringLiteral("news.sql"));
        CHostLife::prepare(oServer);
    }

    void aChildEndsWithItsCodeAndTheParentWorksOn_data()
    {
        QTest::addColumn<QByteArray>("oLife");
        QTest::addColumn<QByteArray>("oEnding");
        for (const QByteArray& oLife : CHostLife::names())
            for (const char* pcEnding : {"exit", "_exit", "exec"})
                if (oLife != "server hangs") // and can't go on
                    QTest::addRow("%s, %s", oLife.constData(), pcEnding) << oLife << QByteArray(pcEnding);
    }

    void aChildEndsWithItsCodeAndTheParentWorksOn()
    {
        QFETCH(QByteArray, oLife);
        QFETCH(QByteArray, oEnding);
        // given
        CPlainHost oHost;
        CHostLife oHostLife(oHost, oScreen);
        oHostLife.lead(oLife);
        for (int i = 0; i < iChildren; i++) {
            QElapsedTimer oTimer;
            oTimer.start();
            // when, then
            checkEnd(oHost.command({"fork", oEnding, "5"}));
            iLongest = std::max(iLongest, oTimer.elapsed());
            // a thorough run has the machine for itself
            QVERIFY2(!isThorough() || oTimer.elapsed() <= 1000, qPrintable(QString::number(iLongest)));
        }
        // when
        oHostLife.goOn(oLife);
        oHost.free();
        oHost.free();
        oHost.call("setSOMTable", {"t:news_train"});
        QVERIFY(oHost.construct().endsWith("window"));
        oHost.call("select", {"i:1"});
        // then
        QCOMPARE(oHost.numRows(), 5);
        // when
        oHost.give({"exit", "3"});
        // then
        QCOMPARE(oHost.end(), "3");
        oHost.errors();
    }

    void aThreadsChildEndsToo()
    {
        CPlainHost oHost;
        show(oHost);
        oHost.command({"start", "1", "fork", "exit", "5"});
        checkEnd(oHost.command({"join", "1"}));
        QCOMPARE(oHost.numRows(), 0);
    }

    void callsOfAChildReturnAtOnce()
    {
        // given
        CPlainHost oHost;
        show(oHost);
        oHost.call("select", {"i:1"});
        QCOMPARE(oHost.numRows(), 5);
        // when
        QCOMPARE(oHost.command({"fork", "call", "getNumRows", "oi:1"}), "exited 0");
        QCOMPARE(oHost.command({"fork", "call", "fillDate", "oi:1"}), "exited 0");
        QCOMPARE(oHost.command({"fork", "call", "setRowColors", "c:1x0,0,0"}), "exited 0");
        QCOMPARE(oHost.command({"fork", "call", "select", "i:2"}), "exited 0");
        QCOMPARE(oHost.command({"fork", "call", "CNodeBrowser", "t:som", "t:news"}), "exited 0");
        QCOMPARE(oHost.command({"fork", "call", "FREE_CNodeBrowser"}), "exited 0");
        QCOMPARE(oHost.command({"fork", "call", "dateToInt", "t:1970-01-02 01:00:00", "oi:1"}), "exited 0");
        // then
        QCOMPARE(oHost.numRows(), 5);
        QCOMPARE(oHost.output(),
            QByteArrayList(
                {"child -7777", "child -7777", "child ", "child ", "child null", "child ", "child 1440"}));
    }

    void cleanupTestCase()
    {
        if (isThorough())
            qInfo("the longest child lived %lld milliseconds", iLongest);
    }

private:
    // The thread sanitizer calls exit handlers without the code.
    static void checkEnd(const QByteArray& oEnd)
    {
#ifdef __SANITIZE_THREAD__
        QVERIFY2(oEnd.startsWith("exited "), oEnd.constData());
#else
        QCOMPARE(oEnd, "exited 5");
#endif
    }

    void show(CPlainHost& oHost) const
    {
        oHost.start();
        oHost.call("show");
        QTUTILS_WAIT_FOR(oScreen.isShown("Ombrel"));
    }

    const int iChildren = repetitions(10);
    qint64 iLongest = 0; ///< milliseconds

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleChildren)
#include "tst_module_children.moc"
