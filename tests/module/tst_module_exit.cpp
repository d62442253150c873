// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CHostLife.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

#include <QElapsedTimer>

class TestModuleExit : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        oServer.load(QStringLiteral("news.sql"));
        CHostLife::prepare(oServer);
    }

    void aHostThatExitsKeepsItsExitCode_data()
    {
        QTest::addColumn<QByteArray>("oLife");
        QTest::addColumn<QByteArrayList>("lEnding");
        for (const QByteArray& oLife : CHostLife::names())
            for (const QByteArrayList& lEnding : {QByteArrayList{"exit", "3"}, {"return", "4"},
                     {"_exit", "5"}, {"quick_exit", "6"}, {"start", "9", "exit", "7"}, {"leave", "8"}})
                if (isTried(oLife, lEnding.first()))
                    QTest::addRow("%s, %s", oLife.constData(), lEnding.join(' ').constData())
                        << oLife << lEnding;
    }

    void aHostThatExitsKeepsItsExitCode()
    {
        QFETCH(QByteArray, oLife);
        QFETCH(QByteArrayList, lEnding);
        const int iTimes = CHostLife::isHeldUp(oLife) && !isThorough() ? 1 : iRepetitions;
        for (int i = 0; i < iTimes; i++) {
            // given
            CPlainHost oHost;
            CHostLife oHostLife(oHost, oScreen);
            oHostLife.lead(oLife);
            if (QTest::currentTestFailed())
                return;
            // when
            oHostLife.giveAt(oLife, i * CHostLife::Moments / iTimes, lEnding);
            // then
            checkEnd(oHost, lEnding.last(), CHostLife::isHeldUp(oLife));
            if (QTest::currentTestFailed())
                return;
            if (CHostLife::isHeldUp(oLife) || CHostLife::mayStillSpeak(oLife))
                checkLines(oHost.errors());
        }
    }

    void aHostMayExitWithItsLastFree()
    {
        for (int i = 0; i < iRepetitions; i++) {
            CPlainHost oHost;
            CHostLife(oHost, oScreen).lead("shown");
            oHost.give({"call", "FREE_CNodeBrowser"});
            oHost.give({"exit", "3"});
            checkEnd(oHost, "3");
            checkLines(oHost.errors());
        }
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
        for (const QByteArray& oLife : CHostLife::names())
            if (oLife != "server hangs") // and can't go on
                QTest::newRow(oLife.constData()) << oLife;
    }

    void anUnloadedModuleCanBeLoadedAgain()
    {
        QFETCH(QByteArray, oLife);
        for (int i = 0; i < iRepetitions; i++) {
            // given
            CPlainHost oHost;
            CHostLife oHostLife(oHost, oScreen);
            oHostLife.lead(oLife);
            // when
            QCOMPARE(oHost.command({"unload"}), "unloaded");
            QCOMPARE(oHost.load(), "loaded");
            oHostLife.goOn(oLife);
            // then
            if (oHost.numRows() >= 0)
                oHost.announceErrors({"CNodeBrowser: Changed Table to news_train"});
            oHost.call("setSOMTable", {"t:news_train"});
            QVERIFY(oHost.construct().endsWith("window"));
            oHost.call("select", {"i:1"});
            QCOMPARE(oHost.numRows(), oLife == "message box open" ? 0 : 5);
            // when
            QCOMPARE(oHost.command({"unload"}), "unloaded");
            oHost.give({"exit", "3"});
            // then
            QCOMPARE(oHost.end(), "3");
        }
    }

    void cleanupTestCase()
    {
        // The ordinary run shares the machine with other tests.
        if (!isThorough())
            return;
        qInfo("%d ends, the longest within %lld milliseconds", iEnds, iLongest);
        QCOMPARE(iLate, 0);
    }

private:
    static bool isTried(const QByteArray& oLife, const QByteArray& oEnding)
    {
        if (Sanitized && oEnding == "leave")
            return false;
        // Nothing holds another thread back from exiting while Qt begins.
        if (oLife == "being constructed")
            return oEnding != "start" && oEnding != "leave";
        return isThorough() || !CHostLife::isHeldUp(oLife) || oEnding == "exit"; // the others take as long
    }

    // The module's own time limit is five seconds, for those that are held up.
    void checkEnd(CPlainHost& oHost, const QByteArray& oCode, bool bHeldUp = false)
    {
        QElapsedTimer oTimer;
        oTimer.start();
        QCOMPARE(oHost.end(), oCode);
        iEnds++;
        iLongest = std::max(iLongest, oTimer.elapsed());
        if (oTimer.elapsed() > (bHeldUp ? 6000 : 4000))
            iLate++;
    }

    // Those that tell of a run that was cut short.
    static void checkLines(const QByteArrayList& lErrors)
    {
        for (const QByteArray& oLine : lErrors)
            QVERIFY2(oLine == "Database is open. Commencing." || oLine == "Terminating QApplication"
                    || oLine.startsWith("CNodeBrowser: Changed Table to ")
                    || oLine.startsWith("mirta_passNodeHierarchy: WARNING: ")
                    // Qt's exit handlers may complain of what the held up thread owns.
                    || oLine.endsWith(": Timers cannot be stopped from another thread"),
                oLine.constData());
    }

    const int iRepetitions = repetitions(2);
    int iEnds = 0;
    int iLate = 0;
    qint64 iLongest = 0; ///< milliseconds

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleExit)
#include "tst_module_exit.moc"
