// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "hostrun.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTest>

#include <csignal>

namespace {

// Whether the process has taken every signal that was sent to it.
bool noSignalWaits(pid_t iProcess)
{
    QFile oStatus(QStringLiteral("/proc/%1/status").arg(iProcess));
    return oStatus.open(QIODevice::ReadOnly) && oStatus.readAll().contains("ShdPnd:\t0000000000000000\n");
}

// Whether the process waits for something, such as input.
bool waits(pid_t iProcess)
{
    QFile oStatus(QStringLiteral("/proc/%1/stat").arg(iProcess));
    return oStatus.open(QIODevice::ReadOnly) && oStatus.readAll().contains(") S ");
}

} // namespace

class TestHostSignals : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aPipeIsAnsweredLineByLine()
    {
        QProcess oHost;
        start(oHost, {sRecorder});
        oHost.write("CRecorder x\n");
        QVERIFY(waitForOutput(oHost, "construct x"));
        oHost.write("add 5\n");
        QVERIFY(waitForOutput(oHost, "add 5"));
        QCOMPARE(finish(oHost).iCode, 0);
    }

    void aSignalEndsASleepInOrder_data()
    {
        QTest::addColumn<int>("iSignal");
        QTest::newRow("SIGTERM") << SIGTERM;
        QTest::newRow("SIGHUP") << SIGHUP;
        QTest::newRow("SIGINT") << SIGINT;
    }

    void aSignalEndsASleepInOrder()
    {
        QFETCH(int, iSignal);
        QProcess oHost;
        start(oHost,
            {sRecorder, QStringLiteral("--command"), QStringLiteral("CRecorder x; .sleep 1000; add 1")});
        QVERIFY(waitForOutput(oHost, "construct x"));
        kill(pid_t(oHost.processId()), iSignal);
        const SRun oRun = finish(oHost);
        QCOMPARE(oRun.sOut, lines({"construct x without a handle", "free 1 of x"}));
        QCOMPARE(oRun.iCode, 128 + iSignal);
    }

    void aSignalEndsTheWaitForInput()
    {
        QProcess oHost;
        start(oHost, {sRecorder});
        oHost.write("CRecorder x\nadd \"unfinished");
        QVERIFY(waitForOutput(oHost, "construct x"));
        QTRY_VERIFY(waits(pid_t(oHost.processId())));
        kill(pid_t(oHost.processId()), SIGTERM);
        QVERIFY(oHost.waitForFinished());
        QCOMPARE(oHost.readAllStandardError(), QByteArray()); // the rest of a line is no statement
        QCOMPARE(QString::fromUtf8(oHost.readAllStandardOutput()),
            lines({"construct x without a handle", "free 1 of x"}));
        QCOMPARE(oHost.exitCode(), 128 + SIGTERM);
    }

    void aSignalSentTwiceAtOnceCountsOnce()
    {
        QProcess oHost;
        start(oHost, {sRecorder, QStringLiteral("--command"), QStringLiteral("CRecorder x; block")});
        QVERIFY(waitForOutput(oHost, "blocked"));
        const auto iProcess = pid_t(oHost.processId());
        QElapsedTimer oTimer;
        oTimer.start();
        for (int i = 0; i < 2; ++i) {
            kill(iProcess, SIGTERM);
            QTRY_VERIFY(noSignalWaits(iProcess));
        }
        const bool bGoesOn = !oHost.waitForFinished(0);
        if (oTimer.elapsed() >= 500) {
            QSKIP("the machine was too busy to send two signals at once");
        }
        QVERIFY(bGoesOn);
        oHost.kill();
        QVERIFY(oHost.waitForFinished());
    }

    void aSecondSignalEndsABlockedCall()
    {
        QProcess oHost;
        start(oHost, {sRecorder, QStringLiteral("--command"), QStringLiteral("CRecorder x; block")});
        QVERIFY(waitForOutput(oHost, "blocked"));
        const auto iProcess = pid_t(oHost.processId());
        for (int i = 0; i < 2; ++i) { // terminals send two
            kill(iProcess, SIGHUP);
            QTRY_VERIFY(noSignalWaits(iProcess));
        }
        QVERIFY(!oHost.waitForFinished(0));
        // One that comes too early counts as the same as the first.
        const auto hasEnded = [&] {
            return oHost.state() == QProcess::NotRunning
                || (kill(iProcess, SIGTERM) == 0 && oHost.waitForFinished(100));
        };
        QTRY_VERIFY(hasEnded());
        QCOMPARE(oHost.exitCode(), 128 + SIGTERM);
        QVERIFY(!oHost.readAllStandardOutput().contains("free"));
    }
};

QTEST_GUILESS_MAIN(TestHostSignals)
#include "tst_hostsignals.moc"
