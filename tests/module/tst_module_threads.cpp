// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CPlainHost.h"
#include "CScreen.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

#include <sys/syscall.h>

/// Calls from several threads of the host, and the window that waits in fillDate.
class TestModuleThreads : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { oServer.load(QStringLiteral("news.sql")); }

    void everyThreadGetsItsOwnAnswer()
    {
        // given
        CPlainHost oHost;
        oHost.start();
        oHost.call("select", {"i:1"});
        oHost.call("markRow", {"k:1970-01-01 00:00:00", "i:1"});
        const QByteArrayList lDate{"getFirstDateInSelection", "ot:20"};
        const QByteArrayList lRows{"getNumRows", "oi:1"};
        const QByteArrayList lFrame{"getFirstDateInFrame", "oi:1"};
        // when
        for (int i = 0; i < 9; i++)
            oHost.command(QByteArrayList{"start", QByteArray::number(i), "repeat", "300"}
                + QList<QByteArrayList>{lDate, lRows, lFrame}[i % 3]);
        // then
        for (int i = 0; i < 9; i++)
            QCOMPARE(oHost.command({"join", QByteArray::number(i)}),
                QByteArrayList({"2005-02-27T23:59:59", "5", "18492420"})[i % 3]);
    }

    void twoThreadsThatAskAtOnceGetTheirOwnAnswers_data()
    {
        QTest::addColumn<QByteArrayList>("lOne");
        QTest::addColumn<QByteArrayList>("lOther");
        const QByteArrayList lDate{"getFirstDateInSelection", "ot:20"};
        const QByteArrayList lRows{"getNumRows", "oi:1"};
        const QByteArrayList lFrame{"getFirstDateInFrame", "oi:1"};
        QTest::newRow("number and date") << lRows << lDate;
        QTest::newRow("number and frame") << lRows << lFrame;
        QTest::newRow("date and frame") << lDate << lFrame;
        QTest::newRow("twice the same") << lDate << lDate;
    }

    void twoThreadsThatAskAtOnceGetTheirOwnAnswers()
    {
        // given
        QFETCH(QByteArrayList, lOne);
        QFETCH(QByteArrayList, lOther);
        CPlainHost oHost;
        oHost.start();
        oHost.call("select", {"i:1"});
        oHost.call("markRow", {"k:1970-01-01 00:00:00", "i:1"});
        const QByteArray oOne = oHost.command(QByteArrayList{"call"} + lOne);
        const QByteArray oOther = oHost.command(QByteArrayList{"call"} + lOther);
        // when
        const QByteArray oCalls = QByteArray::number(repetitions(10000) / 2);
        oHost.command(QByteArrayList{"start", "1", "repeat", oCalls} + lOne);
        oHost.command(QByteArrayList{"start", "2", "repeat", oCalls} + lOther);
        // then
        QCOMPARE(oHost.command({"join", "1"}), oOne);
        QCOMPARE(oHost.command({"join", "2"}), oOther);
        QVERIFY(!oOne.contains("7777") && !oOther.contains("untouched"));
    }

    // One asks for the dates and waits for the colours of another, while a third one asks.
    void everyThreadGetsItsAnswerThoughFillDateWaits()
    {
        // given
        // The address sanitizer keeps each exit handler, so that every event takes longer than the one
        // before.
        const QByteArray oCalls = QByteArray::number(repetitions(Sanitized ? 2000 : 10000) / 2);
        CPlainHost oHost;
        oHost.start();
        oHost.call("select", {"i:1"});
        oHost.call("setRowColors", {"c:5x120,255,255"});
        // when
        oHost.command({"start", "1", "repeat", oCalls, "fillDate", "oi:5"});
        oHost.command({"start", "2", "repeat", oCalls, "getNumRows", "oi:1"});
        oHost.command({"start", "3", "until", "1", "setRowColors", "c:same"});
        oHost.command({"start", "4", "until", "2", "setRowColors", "c:same"});
        // then
        QCOMPARE(oHost.command({"join", "1"}), "0 2010 2220 3376 4320");
        QCOMPARE(oHost.command({"join", "2"}), "5");
        for (const char* pcColoring : {"3", "4"})
            QVERIFY(oHost.command({"join", pcColoring}).toInt() > 0);
        oHost.call("setRowColors", {"c:same"});
        QCOMPARE(oHost.numRows(), 5);
    }

    void constructionsAndFreesOfSeveralThreadsTakeTurns()
    {
        // given
        CPlainHost oHost;
        oHost.start();
        // when
        for (int i = 0; i < 4; i++)
            oHost.command(
                {"start", QByteArray::number(i), "repeat", "20000", "CNodeBrowser", "t:som", "t:news"});
        for (int i = 0; i < 4; i++)
            QCOMPARE(oHost.command({"join", QByteArray::number(i)}), "same window");
        for (int i = 0; i < 4; i++)
            oHost.command({"start", QByteArray::number(i), "repeat", "20000", "FREE_CNodeBrowser"});
        for (int i = 0; i < 4; i++)
            oHost.command({"join", QByteArray::number(i)});
        // then
        oHost.call("select", {"i:2"});
        QCOMPARE(oHost.numRows(), 2);
        oHost.announceErrors({"Terminating QApplication"});
        oHost.free();
        QCOMPARE(oHost.numRows(), -7777);
    }

    void fillDateBlocksTheWindowUntilTheColorsAreSet()
    {
        // given
        CPlainHost oHost;
        oHost.start();
        const int iWindowThread = oHost.threads().at(1);
        oHost.call("select", {"i:1"});
        QTUTILS_WAIT_FOR(oHost.sleepsIn(iWindowThread, SYS_ppoll));
        oServer.startLog();
        // when
        QCOMPARE(oHost.call("fillDate", {"oi:5"}), "0 2010 2220 3376 4320");
        oHost.call("select", {"i:2"});
        // then
        QTUTILS_WAIT_FOR(oHost.sleepsIn(iWindowThread, SYS_futex));
        QCOMPARE(oServer.log(), QStringList());
        // when
        oHost.call("setRowColors", {"c:5x0,0,0"});
        // then
        QTUTILS_WAIT_FOR(oHost.sleepsIn(iWindowThread, SYS_ppoll));
        QCOMPARE(oHost.numRows(), 2);
    }

    void aQuestionWaitsForTheColorsThatFillDateCallsFor()
    {
        // given
        CPlainHost oHost;
        oHost.start();
        oHost.call("select", {"i:1"});
        oHost.call("fillDate", {"oi:5"});
        // when
        const int iThread = oHost.command({"start", "1", "call", "getNumRows", "oi:1"}).toInt();
        // then
        QTUTILS_WAIT_FOR(oHost.sleepsIn(iThread, SYS_futex));
        QCOMPARE(oHost.command({"finished", "1"}), "no");
        // when
        oHost.call("setRowColors", {"c:5x0,0,0"});
        // then
        QCOMPARE(oHost.command({"join", "1"}), "5");
    }

    void colorsWithoutFillDateReleaseNobody()
    {
        CPlainHost oHost;
        oHost.start();
        oHost.call("select", {"i:1"});
        oHost.command({"start", "1", "repeat", "3000", "getNumRows", "oi:1"});
        oHost.command({"start", "2", "repeat", "30000", "setRowColors", "c:5x0,0,0"});
        QCOMPARE(oHost.command({"join", "1"}), "5");
        oHost.command({"join", "2"});
    }

    void theLastFreeReleasesAWaitingWindow()
    {
        // given
        CPlainHost oHost;
        oHost.start();
        oHost.call("select", {"i:1"});
        oHost.call("fillDate", {"oi:5"});
        const int iThread = oHost.command({"start", "1", "call", "getNumRows", "oi:1"}).toInt();
        QTUTILS_WAIT_FOR(oHost.sleepsIn(iThread, SYS_futex));
        // when
        oHost.free();
        // then
        QCOMPARE(oHost.command({"join", "1"}), "-7777");
        QTUTILS_WAIT_FOR(oHost.errors().contains("Terminating QApplication"));
        // and all goes on as ever
        oHost.call("setSOMTable", {"t:news_train"});
        QVERIFY(oHost.construct().endsWith("window"));
        oHost.call("select", {"i:1"});
        QCOMPARE(oHost.call("fillDate", {"oi:5"}), "0 2010 2220 3376 4320");
        oHost.call("setRowColors", {"c:5x0,0,0"});
        QCOMPARE(oHost.numRows(), 5);
    }

    void anAnswerComesAfterTheSelectionsBeforeIt()
    {
        CPlainHost oHost;
        oHost.start();
        for (int i = 0; i < 50; i++) {
            oHost.call("select", {i % 2 == 0 ? "i:1" : "i:2"});
            QCOMPARE(oHost.numRows(), i % 2 == 0 ? 5 : 2);
        }
    }

private:
    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleThreads)
#include "tst_module_threads.moc"
