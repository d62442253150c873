// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <vector>

/// One host that constructs and frees again and again. The variable QTUTILS_REPETITIONS says how often.
class TestModuleEndurance : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { oServer.load(QStringLiteral("news.sql")); }

    void nothingGrowsWithTheNumberOfConstructions()
    {
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oHost.load();
        QByteArray oFirst;
        std::vector<long> vlMemory;
        for (int i = 1; i <= iRepetitions; i++) {
            construct(oHost);
            oAnalyst.showWindow();
            use(oHost);
            if (i == Settled)
                oFirst = belongings(oHost);
            else if (i > Settled)
                QCOMPARE(belongings(oHost), oFirst);
            oHost.announceErrors({"Terminating QApplication"});
            oHost.free();
            QTUTILS_WAIT_FOR(oScreen.shown().isEmpty());
            oHost.command({"drop colors"});
            oHost.command({"drop text"});
            if (i >= Settled)
                vlMemory.push_back(memory(oHost));
        }
        const long lGrowth = usualGrowth(vlMemory);
        qInfo("%ld bytes a construction", lGrowth);
        QVERIFY2(Sanitized || lGrowth < MostGrowth, qPrintable(QString::number(lGrowth)));
    }

    // The thread's last loop is still winding up.
    void anotherThreadMayConstructAtOnceAfterTheLastFree()
    {
        CPlainHost oHost;
        oHost.load();
        QByteArray oFirst;
        construct(oHost);
        for (int i = 1; i <= iRepetitions; i++) {
            oHost.call("show");
            use(oHost);
            oHost.announceErrors({"Terminating QApplication"});
            oHost.give({"call", "FREE_CNodeBrowser"});
            oHost.give({"call", "setSOMTable", "t:news_train"});
            oHost.give({"start", "1", "call", "CNodeBrowser", "t:som", "t:news"});
            for (int iAnswer = 0; iAnswer < 3; iAnswer++)
                oHost.answer();
            QVERIFY(oHost.command({"join", "1"}).endsWith("window"));
            oHost.announceErrors({"Database is open. Commencing."});
            oHost.passHierarchy();
            use(oHost);
            if (i == Settled)
                oFirst = belongings(oHost);
            else if (i > Settled)
                QTRY_COMPARE_WITH_TIMEOUT(belongings(oHost), oFirst, 20000);
        }
    }

private:
    static constexpr int Settled = 20; ///< constructions after which nothing new is loaded or kept
    static constexpr long MostGrowth = 5120; ///< bytes for each construction

    static void construct(CPlainHost& oHost)
    {
        oHost.call("setSOMTable", {"t:news_train"});
        QVERIFY(oHost.construct().endsWith("window"));
        oHost.announceErrors({"Database is open. Commencing."});
        oHost.passHierarchy();
    }

    static void use(CPlainHost& oHost)
    {
        oHost.call("select", {"i:1"});
        QCOMPARE(oHost.numRows(), 5);
        QCOMPARE(oHost.call("fillDate", {"oi:5"}), "0 2010 2220 3376 4320");
        oHost.call("setRowColors", {"c:5x120,255,255"});
        oHost.call("markRow", {"k:1970-01-01 00:00:00", "i:1"});
        QCOMPARE(oHost.call("getFirstDateInFrame", {"oi:1"}), "18492420");
        QCOMPARE(oHost.call("getFirstDateInSelection", {"ot:20"}), "2005-02-27T23:59:59");
    }

    /// Numbers of threads, open files, connections to the server, and windows.
    QByteArray belongings(const CPlainHost& oHost) const
    {
        const QDir oFiles(QStringLiteral("/proc/%1/fd").arg(oHost.processId()));
        const QStringList slConnections = oServer.sql(
            QStringLiteral("SELECT COUNT(*) FROM information_schema.processlist WHERE user='reader'"));
        return QStringLiteral("%1 threads, %2 files, %3 connections, %4 windows")
            .arg(oHost.threads().size())
            .arg(oFiles.entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot).size())
            .arg(slConnections.join(u','))
            .arg(oScreen.windows())
            .toUtf8();
    }

    /// Resident, in bytes.
    static long memory(const CPlainHost& oHost)
    {
        QFile oFile(QStringLiteral("/proc/%1/statm").arg(oHost.processId()));
        if (!oFile.open(QIODevice::ReadOnly))
            return 0;
        constexpr long PageSize = 4096;
        return oFile.readAll().split(' ').value(1).toLong() * PageSize;
    }

    /// For each construction, the median over all spans of Settled constructions: the C library takes and
    /// gives back half a megabyte now and then.
    static long usualGrowth(const std::vector<long>& vlMemory)
    {
        std::vector<long> vlGrowths;
        for (std::size_t u = Settled; u < vlMemory.size(); u++)
            vlGrowths.push_back((vlMemory[u] - vlMemory[u - Settled]) / Settled);
        const auto oMiddle = vlGrowths.begin() + std::ptrdiff_t(vlGrowths.size() / 2);
        std::nth_element(vlGrowths.begin(), oMiddle, vlGrowths.end());
        return *oMiddle;
    }

    const int iRepetitions = repetitions(Sanitized ? 50 : 100);
    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleEndurance)
#include "tst_module_endurance.moc"
