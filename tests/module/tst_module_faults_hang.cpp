// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"
#include "treehost.h"

#include <sys/syscall.h>

using namespace Qt::StringLiterals;

/// The server's process hangs, and goes on. Only what needs its answer waits, and nothing is lost.
class TestModuleFaultsHang : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { oServer.load(u"news.sql"_s); }

    void cleanup() { oServer.goOn(); }

    void everyCallIsCarriedOutInTheEnd()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        const QRect oSecondRow = oAnalyst.cell(1, "title");
        // when
        oServer.halt();
        // then: what wants no answer doesn't wait
        oHost.call("select", {"i:2"});
        oHost.call("markRow", {"k:2006-05-11 12:00:00", "i:1"});
        oHost.announceErrors({"CNodeBrowser: Changed Table to news_train"});
        oHost.call("setSOMTable", {"t:news_train"});
        treehost::pass(oHost, {"2", "", "", ""});
        oHost.call("show");
        QCOMPARE(oHost.construct(), "same window");
        oHost.free();
        QCOMPARE(oHost.call("dateToInt", {"t:2005-03-01 13:00:00", "oi:1"}), "18494640");
        // and what wants one does
        const QByteArrayList lQuestions{"getNumRows", "getFirstDateInFrame"};
        for (qsizetype i = 0; i < lQuestions.size(); i++) {
            const QByteArray oNumber = QByteArray::number(i + 1);
            const int iThread = oHost.command({"start", oNumber, "call", lQuestions[i], "oi:1"}).toInt();
            QTUTILS_WAIT_FOR(oHost.sleepsIn(iThread, SYS_futex));
            QCOMPARE(oHost.command({"finished", oNumber}), "no");
        }
        oAnalyst.click(oSecondRow);
        // when
        oServer.goOn();
        // then
        QCOMPARE(oHost.command({"join", "1"}), "2");
        QCOMPARE(oHost.command({"join", "2"}), "19122360");
        QCOMPARE(oAnalyst.table(),
            QByteArrayList({"date | title", "10.05.06 12:00 | Sommer", "11.05.06 12:00 | Herbst"}));
        QCOMPARE(oAnalyst.currentCell(), "1 1");
        QCOMPARE(oAnalyst.tree(), QByteArrayList({"v 0 | alles, viel, mehr", "  - 2 | warm"}));
    }

    void aConstructionWaits()
    {
        CPlainHost oHost;
        oHost.load();
        oHost.call("setSOMTable", {"t:news_train"});
        oServer.halt();
        const int iThread = oHost.command({"start", "1", "call", "CNodeBrowser", "t:som", "t:news"}).toInt();
        QTUTILS_WAIT_FOR(oHost.sleepsIn(iThread, SYS_futex));
        QCOMPARE(oHost.command({"finished", "1"}), "no");
        oServer.goOn();
        QCOMPARE(oHost.command({"join", "1"}), "window");
        oHost.call("select", {"i:1"});
        QCOMPARE(oHost.numRows(), 5);
    }

    void theLastFreeDoesNotWait()
    {
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oAnalyst.startAt(1);
        oServer.halt();
        oHost.call("select", {"i:2"});
        const int iThread = oHost.command({"start", "1", "call", "getNumRows", "oi:1"}).toInt();
        QTUTILS_WAIT_FOR(oHost.sleepsIn(iThread, SYS_futex));
        // when
        oHost.announceErrors({"Terminating QApplication"});
        oHost.free();
        // then
        QCOMPARE(oHost.command({"finished", "1"}), "no");
        // when
        oServer.goOn();
        // then: the question was asked before, so it has its answer
        QCOMPARE(oHost.command({"join", "1"}), "2");
        QTUTILS_WAIT_FOR(oScreen.shown().isEmpty());
        oHost.call("setSOMTable", {"t:news_train"});
        QVERIFY(oHost.construct().endsWith("window"));
        oHost.call("select", {"i:1"});
        QCOMPARE(oHost.numRows(), 5);
    }

private:
    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleFaultsHang)
#include "tst_module_faults_hang.moc"
