// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

#include <QFile>

#include <sys/syscall.h>

/// Calls with odd arguments, or at an odd time.
class TestModuleEntryPoints : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        oServer.load(QStringLiteral("news.sql"));
        oServer.sql(QStringLiteral("USE som; CREATE VIEW endless AS SELECT node, dist, item FROM news_train "
                                   "WHERE SLEEP(3600)=0"));
    }

    void aNullArrayIsIgnored()
    {
        // given
        CPlainHost oHost;
        oHost.start();
        oHost.call("select", {"i:1"});
        // when
        for (const char* pcMethod : {"select", "getNumRows", "fillDate", "dateToInt", "setRowColors",
                 "markRow", "getFirstDateInFrame", "getFirstDateInSelection", "passNodeHierarchy",
                 "setSOMTable", "hideTable", "show"})
            QCOMPARE(oHost.call(pcMethod, {"no array"}), "");
        // then
        QCOMPARE(oHost.numRows(), 5);
        oHost.announceOutput({"mirta_passNodeHierarchy: passed Array is NULL!"});
        // A window that goes while the manager looks at it upsets the manager.
        QTUTILS_WAIT_FOR(oScreen.isActive("Ombrel"));
    }

    void anOversizedHierarchyIsRefused_data()
    {
        QTest::addColumn<QByteArray>("oChildren");
        QTest::addColumn<QByteArray>("oNode");
        QTest::addColumn<QByteArray>("oNodes");
        const QByteArray oMost = QByteArray::number(std::numeric_limits<int>::max());
        QTest::newRow("nodes") << QByteArray("1") << QByteArray("0") << oMost;
        QTest::newRow("last of the nodes") << QByteArray("1") << QByteArray("2147483646") << oMost;
        QTest::newRow("children") << oMost << QByteArray("3") << QByteArray("4");
        QTest::newRow("just too many") << QByteArray("1") << QByteArray("0") << QByteArray("10000001");
    }

    void anOversizedHierarchyIsRefused()
    {
        // given
        QFETCH(QByteArray, oChildren);
        QFETCH(QByteArray, oNode);
        QFETCH(QByteArray, oNodes);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oHost.start();
        const QByteArrayList lTree = oAnalyst.tree();
        QCOMPARE(lTree.size(), 4);
        // when
        oHost.call("passNodeHierarchy", {"n:1,2", "i:" + oChildren, "i:" + oNode, "i:" + oNodes});
        // then
        QCOMPARE(oAnalyst.tree(), lTree);
        oHost.announceErrors({"qtutils: a hierarchy of " + oNodes + " nodes, with " + oChildren
                + " children of node " + oNode + ", is too large",
            "Database is open. Commencing."});
        oHost.call("passNodeHierarchy", {"n:", "i:0", "i:3", "i:4"});
        QCOMPARE(oAnalyst.tree(), lTree);
    }

    void aHierarchyWithoutMemoryIsRefused()
    {
        if (Sanitized)
            QSKIP("the sanitizer needs the memory");
        // given
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oHost.start();
        const QByteArrayList lTree = oAnalyst.tree();
        oHost.command({"limit", "50"});
        // when
        oHost.call("passNodeHierarchy", {"n:2", "i:1", "i:0", "i:9000000"});
        // then
        oHost.announceErrors({"qtutils: no memory for a hierarchy of 9000000 nodes"});
        oHost.announceErrors({"Database is open. Commencing."});
        oHost.call("passNodeHierarchy", {"n:", "i:0", "i:3", "i:4"});
        QCOMPARE(oAnalyst.tree(), lTree);
    }

    void negativeCountsAndNodesAreDropped_data()
    {
        QTest::addColumn<QByteArrayList>("lNumbers");
        QTest::newRow("number of children") << QByteArrayList{"i:-1", "i:1", "i:4"};
        QTest::newRow("node") << QByteArrayList{"i:1", "i:-1", "i:4"};
        QTest::newRow("node behind the last") << QByteArrayList{"i:1", "i:4", "i:4"};
        QTest::newRow("greatest node") << QByteArrayList{"i:1", "i:2147483647", "i:4"};
        QTest::newRow("least node") << QByteArrayList{"i:1", "i:-2147483648", "i:4"};
    }

    void negativeCountsAndNodesAreDropped()
    {
        QFETCH(QByteArrayList, lNumbers);
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oHost.start();
        const QByteArrayList lTree = oAnalyst.tree();
        oHost.call("passNodeHierarchy", QByteArrayList{"n:2"} + lNumbers);
        oHost.call("passNodeHierarchy", {"n:", "i:0", "i:3", "i:4"});
        QCOMPARE(oAnalyst.tree(), lTree);
        oHost.announceErrors({"Database is open. Commencing."});
    }

    void aChainOfAHundredThousandNodesIsShown()
    {
        // given
        constexpr int Nodes = 100000;
        CPlainHost oHost;
        oHost.start();
        // when
        for (int i = 0; i < Nodes; i++)
            oHost.give(
                {"call", "passNodeHierarchy", "n:" + QByteArray::number(i + 1), i + 1 < Nodes ? "i:1" : "i:0",
                    "i:" + QByteArray::number(i), "i:" + QByteArray::number(Nodes)});
        for (int i = 0; i < Nodes; i++)
            QCOMPARE(oHost.answer(), "");
        // then
        QCOMPARE(oHost.numRows(), 0);
        QCOMPARE(oHost.errors().size(), 3); // the warning of another number, and a line for each tree
        // when
        oHost.call("passNodeHierarchy", {"n:", "i:0", "i:0", "i:1"});
        oHost.call("select", {"i:1"});
        // then
        QCOMPARE(oHost.numRows(), 5);
        QCOMPARE(oHost.errors().size(), 5);
    }

    void theLastFreeDoesNotWaitForABusyWindow()
    {
        CPlainHost oHost;
        oHost.start();
        oHost.call("setSOMTable", {"t:endless"});
        QTUTILS_WAIT_FOR(oHost.errors().contains("CNodeBrowser: Changed Table to endless"));
        oHost.call("select", {"i:1"});
        oHost.free();
        QCOMPARE(oHost.numRows(), -7777);
    }

    void nullColorsReleaseNobody()
    {
        // given
        CPlainHost oHost;
        oHost.start();
        oHost.call("select", {"i:1"});
        QCOMPARE(oHost.call("fillDate", {"oi:5"}), "0 2010 2220 3376 4320");
        // when
        oHost.call("setRowColors", {"null"});
        const int iThread = oHost.command({"start", "1", "call", "getNumRows", "oi:1"}).toInt();
        // then
        QTUTILS_WAIT_FOR(oHost.sleepsIn(iThread, SYS_futex));
        QCOMPARE(oHost.command({"finished", "1"}), "no");
        QCOMPARE(oHost.call("getNumRows", {"null"}), "");
        // when
        oHost.call("setRowColors", {"c:5x0,0,0"});
        // then
        QCOMPARE(oHost.command({"join", "1"}), "5");
    }

    void theModulesThreadsTakeNoSignals()
    {
        CPlainHost oHost;
        oHost.start();
        oHost.call("show");
        QTUTILS_WAIT_FOR(oScreen.isActive("Ombrel"));
        const QList<int> lThreads = oHost.threads();
        QVERIFY(lThreads.size() > 1);
        QCOMPARE(blockedSignals(oHost, lThreads.first()), "0000000000000000");
        for (const int iThread : lThreads.mid(1))
            QCOMPARE(blockedSignals(oHost, iThread), "fffffffe7ffbfeff"); // all that can be blocked
    }

private:
    static QByteArray blockedSignals(const CPlainHost& oHost, int iThread)
    {
        QFile oFile(QStringLiteral("/proc/%1/task/%2/status").arg(oHost.processId()).arg(iThread));
        if (!oFile.open(QIODevice::ReadOnly))
            return "no such thread";
        for (const QByteArray& oLine : oFile.readAll().split('\n'))
            if (oLine.startsWith("SigBlk:"))
                return oLine.mid(7).trimmed();
        return "no mask";
    }

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleEntryPoints)
#include "tst_module_entrypoints.moc"
