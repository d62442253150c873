// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CTerminal.h"
#include "hostrun.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

#define WAIT_FOR(oTerminal, sText) QVERIFY2((oTerminal).waitFor(sText), (oTerminal).screen().constData())
#define WAIT_FOR_PROMPT(oTerminal) QVERIFY2((oTerminal).waitForPrompt(), (oTerminal).screen().constData())

class TestHostPrompt : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QVERIFY(oFolder.isValid()); }

    void aTerminalGetsAPromptThatSurvivesErrors()
    {
        CTerminal oTerminal({sRecorder}, oFolder.path());
        WAIT_FOR_PROMPT(oTerminal);
        oTerminal.type("ad 1\r");
        WAIT_FOR(oTerminal, "unknown method \"ad\"; did you mean \"add\"?");
        WAIT_FOR_PROMPT(oTerminal);
        oTerminal.type("CRecorder x\r");
        WAIT_FOR(oTerminal, "construct x");
        WAIT_FOR_PROMPT(oTerminal);
        oTerminal.type("\x04");
        WAIT_FOR(oTerminal, "free 1 of x");
        QCOMPARE(oTerminal.exitCode(), 0);
    }

    void scriptsComeBeforeThePrompt()
    {
        CTerminal oTerminal({sRecorder, QStringLiteral("--interactive"), QStringLiteral("--command"),
                                QStringLiteral(".echo first")},
            oFolder.path());
        WAIT_FOR(oTerminal, "first");
        WAIT_FOR_PROMPT(oTerminal);
        oTerminal.type(".quit\r");
        QCOMPARE(oTerminal.exitCode(), 0);
    }

    void withACommandThereIsNoPrompt()
    {
        CTerminal oTerminal(
            {sRecorder, QStringLiteral("--command"), QStringLiteral(".echo only")}, oFolder.path());
        QCOMPARE(oTerminal.exitCode(), 0);
        QCOMPARE(oTerminal.screen(), QByteArray("only\r\n"));
    }

    void tabCompletesMethodsBuiltInsAndVariables()
    {
        CTerminal oTerminal({sRecorder}, oFolder.path());
        WAIT_FOR_PROMPT(oTerminal);
        oTerminal.type(".se\t rows 41\r");
        WAIT_FOR_PROMPT(oTerminal);
        oTerminal.type(".ec\t$ro\t\r");
        WAIT_FOR(oTerminal, "\n41\r\n");
        oTerminal.type("s\t");
        WAIT_FOR(oTerminal, "sum  scale  showKept");
    }

    void interruptClearsTheLineOnly()
    {
        CTerminal oTerminal({sRecorder}, oFolder.path());
        WAIT_FOR_PROMPT(oTerminal);
        oTerminal.type(".echo lost");
        WAIT_FOR(oTerminal, "lost");
        oTerminal.type("\x03");
        WAIT_FOR_PROMPT(oTerminal);
        oTerminal.type(".echo kept\r");
        WAIT_FOR(oTerminal, "\nkept\r\n");
        WAIT_FOR_PROMPT(oTerminal);
        oTerminal.type("\x04");
        QCOMPARE(oTerminal.exitCode(), 0);
    }

    void interruptEndsASleepAndThePromptGoesOn()
    {
        CTerminal oTerminal({sRecorder}, oFolder.path());
        WAIT_FOR_PROMPT(oTerminal);
        oTerminal.type(".echo now; .sleep 1000; .echo never\r");
        WAIT_FOR(oTerminal, "\nnow\r\n");
        oTerminal.type("\x03");
        WAIT_FOR_PROMPT(oTerminal);
        QVERIFY(!oTerminal.screen().contains("\nnever"));
        oTerminal.type("\x04");
        QCOMPARE(oTerminal.exitCode(), 0);
    }

    void aSignalEndsThePromptInOrder_data()
    {
        QTest::addColumn<int>("iSignal");
        QTest::newRow("SIGTERM") << SIGTERM;
        QTest::newRow("SIGHUP") << SIGHUP;
    }

    void aSignalEndsThePromptInOrder()
    {
        QFETCH(int, iSignal);
        CTerminal oTerminal({sRecorder}, oFolder.path());
        WAIT_FOR_PROMPT(oTerminal);
        oTerminal.type("CRecorder x\r");
        WAIT_FOR(oTerminal, "construct x");
        WAIT_FOR_PROMPT(oTerminal);
        oTerminal.sendSignal(iSignal);
        WAIT_FOR(oTerminal, "free 1 of x");
        QCOMPARE(oTerminal.exitCode(), 128 + iSignal);
    }

    void theHistoryIsKept()
    {
        QTemporaryDir oState;
        const QString sDeep = oState.filePath(QStringLiteral("a/b"));
        {
            CTerminal oTerminal({sRecorder}, sDeep);
            WAIT_FOR_PROMPT(oTerminal);
            oTerminal.type(".echo remembered\r");
            WAIT_FOR(oTerminal, "\nremembered\r\n");
            WAIT_FOR_PROMPT(oTerminal);
            oTerminal.type("\x04");
            QCOMPARE(oTerminal.exitCode(), 0);
        }
        QVERIFY(QFile::exists(sDeep + QStringLiteral("/qtutils-host/history")));
        CTerminal oTerminal({sRecorder}, sDeep);
        WAIT_FOR_PROMPT(oTerminal);
        oTerminal.type("\x1b[A\r"); // arrow up
        WAIT_FOR(oTerminal, "\nremembered\r\n");
    }

    void aHistoryThatCantBeWrittenIsNoError()
    {
        CTerminal oTerminal({sRecorder}, QStringLiteral("/proc/absent"));
        WAIT_FOR_PROMPT(oTerminal);
        oTerminal.type(".quit\r");
        QCOMPARE(oTerminal.exitCode(), 0);
        QVERIFY(!oTerminal.screen().contains("rror"));
    }

    void textOutsideAsciiIsRead()
    {
        qputenv("LC_ALL", "C.UTF-8");
        CTerminal oTerminal({sRecorder}, oFolder.path());
        WAIT_FOR_PROMPT(oTerminal);
        oTerminal.type(".echo \"Größe\"\r");
        WAIT_FOR(oTerminal, "\nGröße\r\n");
    }

private:
    QTemporaryDir oFolder;
};

QTEST_GUILESS_MAIN(TestHostPrompt)
#include "tst_hostprompt.moc"
