// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

#include <QFile>

#include <csignal>

/// What the module leaves alone in its host's process.
class TestModuleSurroundings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { oServer.load(QStringLiteral("news.sql")); }

    void theProcessIsAsBeforeApartFromTheLanguage_data()
    {
        QTest::addColumn<QByteArray>("oUntil");
        for (const char* pcUntil : {"loaded", "constructed", "used", "freed", "unloaded"})
            QTest::newRow(pcUntil) << QByteArray(pcUntil);
    }

    void theProcessIsAsBeforeApartFromTheLanguage()
    {
        // given
        QFETCH(QByteArray, oUntil);
        CPlainHost oHost;
        oHost.command({"env", "LC_ALL", "C.UTF-8"}); // not the locale that the host runs in
        QByteArrayList lExpected = surroundings(oHost);
        QVERIFY(lExpected.contains("signal 13 is default, flags 0, blocks"));
        if (oUntil != "loaded")
            lExpected.replace(lExpected.indexOf("variable LANG=C.UTF-8"), "variable LANG=de_DE");
        // when
        oHost.load();
        const QList<std::pair<QByteArray, void (TestModuleSurroundings::*)(CPlainHost&)>> lSteps{
            {"constructed", &TestModuleSurroundings::construct}, {"used", &TestModuleSurroundings::use},
            {"freed", &TestModuleSurroundings::free}, {"unloaded", &TestModuleSurroundings::unload}};
        for (const auto& [oStep, step] : lSteps) {
            if (oUntil == "loaded")
                break;
            (this->*step)(oHost);
            if (oStep == oUntil)
                break;
        }
        // then
        compare(surroundings(oHost), lExpected);
    }

    void aHostsOwnSettingsAreKept()
    {
        // given
        CPlainHost oHost;
        QByteArrayList lUsual = surroundings(oHost);
        oHost.command({"customize"});
        oHost.command({"env", "LC_ALL", "C.UTF-8"});
        oHost.command({"env", "QT_NO_GLIB", "0"});
        QByteArrayList lExpected = surroundings(oHost);
        for (const char* pcUnusual : {"mask ", "locale ", "signal 2 ", "signal 13 ", "signal 17 ",
                 "thread: ", "output: ", "errors: ", "descriptor 200 "})
            QVERIFY2(lineOf(lUsual, pcUnusual) != lineOf(lExpected, pcUnusual), pcUnusual);
        lExpected.replace(lExpected.indexOf("variable LANG=C.UTF-8"), "variable LANG=de_DE");
        // when
        oHost.load();
        construct(oHost);
        use(oHost);
        free(oHost);
        // then
        compare(surroundings(oHost), lExpected);
    }

    void everyThreadOfTheHostKeepsItsModes()
    {
        // given
        CPlainHost oHost;
        oHost.command({"start", "1", "hold"});
        oHost.load();
        oHost.call("setSOMTable", {"t:news_train"});
        // when
        oHost.command({"start", "2", "hold", "CNodeBrowser", "t:som", "t:news"});
        QVERIFY(oHost.construct().endsWith("window"));
        oHost.command({"start", "3", "hold", "select", "i:1"});
        use(oHost);
        oHost.command({"start", "4", "hold", "getNumRows", "oi:1"});
        oHost.command({"start", "5", "hold", "dateToInt", "t:2005-03-01 12:00:00", "oi:1"});
        oHost.command({"let go"});
        // then
        for (const char* pcThread : {"1", "2", "3", "4", "5"})
            QCOMPARE(oHost.command({"join", pcThread}), "kept");
        oHost.free();
        free(oHost);
    }

    void theInterfaceWorksInTheUsualFloatingPointMode()
    {
        CPlainHost oHost;
        oHost.command({"customize"});
        oHost.load();
        construct(oHost);
        QCOMPARE(oHost.ask({"modes"}), QByteArrayList{"0 0"});
        use(oHost);
        QCOMPARE(oHost.call("fillDate", {"oi:5"}), "0 2010 2220 3376 4320");
        oHost.call("setRowColors", {"c:5x120,255,255"});
        QCOMPARE(oHost.call("dateToInt", {"t:2038-01-01 00:00:30", "oi:1"}), "35765221");
    }

    void signalsToTheProcessRunInTheHostsThreads_data()
    {
        QTest::addColumn<bool>("bInMain");
        QTest::newRow("main thread") << true;
        QTest::newRow("another thread") << false;
    }

    void signalsToTheProcessRunInTheHostsThreads()
    {
        // given
        QFETCH(bool, bInMain);
        constexpr int Signals = 100;
        CPlainHost oHost;
        oHost.command({"catch", QByteArray::number(SIGUSR1)});
        const QByteArray oOther = oHost.command({"start", "1", "hold"});
        if (!bInMain)
            oHost.command({"block", QByteArray::number(SIGUSR1)});
        oHost.load();
        construct(oHost);
        use(oHost);
        // when
        for (int i = 1; i <= Signals; i++) {
            kill(pid_t(oHost.processId()), SIGUSR1);
            QTUTILS_WAIT_FOR(oHost.command({"caught"}).startsWith(QByteArray::number(i) + ':'));
        }
        // then
        const QByteArray oThread = bInMain ? QByteArray::number(oHost.processId()) : oOther;
        QCOMPARE(oHost.command({"caught"}), "100:" + (' ' + oThread).repeated(Signals));
        QCOMPARE(oHost.numRows(), 5);
    }

    void theWebBrowserInheritsNothingOfTheModule_data()
    {
        QTest::addColumn<QByteArray>("oCommand");
        QTest::newRow("usual host") << QByteArray("getenv");
        QTest::newRow("host with settings of its own") << QByteArray("customize");
    }

    void theWebBrowserInheritsNothingOfTheModule()
    {
        // given
        QFETCH(QByteArray, oCommand);
        const QTemporaryDir oFolder;
        const QString sReport = oFolder.filePath(QStringLiteral("report"));
        QFile oProgram(oFolder.filePath(QStringLiteral("firefox")));
        QVERIFY(oProgram.open(QIODevice::WriteOnly));
        oProgram.write(
            "#!/bin/sh\n{ for f in /proc/$$/fd/*; do readlink $f; done | grep -E 'socket|anon_inode'\n"
            "grep -E '^Sig(Blk|Ign)' /proc/self/status\necho end; } > "
            + sReport.toUtf8() + '\n');
        oProgram.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
        oProgram.close();
        CPlainHost oHost;
        CAnalyst oAnalyst(oHost, oScreen);
        oHost.command({oCommand, "LANG"});
        oHost.command({"env", "PATH", oFolder.path().toUtf8() + ":/usr/bin:/bin"});
        oHost.start();
        oAnalyst.showWindow();
        oHost.call("select", {"i:2"});
        oAnalyst.choose("Show", "URL");
        const QByteArrayList lExpected = surroundings(oHost);
        // when
        oAnalyst.doubleClickCell(0, "URL");
        QCOMPARE(oHost.numRows(), 2);
        // then: system() itself has 32 and 33 ignored, which the C library keeps to itself
        QFile oReport(sReport);
        QVERIFY(oReport.open(QIODevice::ReadOnly));
        const QByteArray oIgnored = oCommand == "customize" ? "0000000180000002" : "0000000180000000";
        QCOMPARE(oReport.readAll(), "SigBlk:\t0000000000000000\nSigIgn:\t" + oIgnored + "\nend\n");
        compare(surroundings(oHost), lExpected);
    }

private:
    /// What the host says about its process now, the environment in alphabetical order.
    static QByteArrayList surroundings(CPlainHost& oHost)
    {
        const qsizetype iBefore = oHost.output().size();
        oHost.command({"surroundings"});
        QByteArrayList lLines = oHost.output().mid(iBefore);
#if defined(__SANITIZE_THREAD__)
        for (QByteArray& oLine : lLines) // the sanitizer puts a mask of its own into each action
            if (const qsizetype iMask = oLine.indexOf(", blocks"); iMask >= 0)
                oLine.truncate(iMask + qstrlen(", blocks"));
#endif
        std::sort(lLines.begin(), lLines.end());
        return lLines;
    }

    static QByteArray lineOf(const QByteArrayList& lLines, const char* pcBegin)
    {
        for (const QByteArray& oLine : lLines)
            if (oLine.startsWith(pcBegin))
                return oLine;
        return "none";
    }

    /// All is as expected, apart from descriptors of the module, which programs don't inherit.
    static void compare(QByteArrayList lNow, const QByteArrayList& lExpected)
    {
        lNow.removeIf([&](const QByteArray& oLine) {
            return oLine.startsWith("descriptor ") && oLine.endsWith(", closed in programs")
                && !lExpected.contains(oLine);
        });
        QCOMPARE(lNow, lExpected);
    }

    void construct(CPlainHost& oHost)
    {
        oHost.call("setSOMTable", {"t:news_train"});
        QVERIFY(oHost.construct().endsWith("window"));
    }

    void use(CPlainHost& oHost)
    {
        oHost.announceErrors({"Database is open. Commencing."});
        oHost.passHierarchy();
        oHost.call("show");
        QTUTILS_WAIT_FOR(oScreen.isShown("Ombrel"));
        oHost.call("select", {"i:1"});
        QCOMPARE(oHost.numRows(), 5);
    }

    void free(CPlainHost& oHost)
    {
        oHost.announceErrors({"Terminating QApplication"});
        oHost.free();
        QTUTILS_WAIT_FOR(!oScreen.isShown("Ombrel"));
    }

    void unload(CPlainHost& oHost)
    {
        QCOMPARE(oHost.command({"unload"}), "unloaded");
    }

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleSurroundings)
#include "tst_module_surroundings.moc"
