// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"
#include "moduletest.h"
#include "tests/support/CPrivateServer.h"

#include <QFile>

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
        QVERIFY(lExpected.contains("signal 13 is default"));
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
        QCOMPARE(surroundings(oHost), lExpected);
    }

    void aHostsOwnSettingsAreKept()
    {
        // given
        CPlainHost oHost;
        oHost.command({"customize"});
        oHost.command({"env", "LC_ALL", "C.UTF-8"});
        oHost.command({"env", "QT_NO_GLIB", "0"});
        QByteArrayList lExpected = surroundings(oHost);
        QVERIFY(lExpected.contains("signal 13 is handled"));
        QVERIFY(lExpected.contains("signal 10 is default and blocked"));
        QVERIFY(lExpected.contains("mask 27"));
        lExpected.replace(lExpected.indexOf("variable LANG=C.UTF-8"), "variable LANG=de_DE");
        // when
        oHost.load();
        construct(oHost);
        use(oHost);
        free(oHost);
        // then
        QCOMPARE(surroundings(oHost), lExpected);
    }

    void theWebBrowserInheritsNothingOfTheModule()
    {
        // given
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
        oHost.command({"env", "PATH", oFolder.path().toUtf8() + ":/usr/bin:/bin"});
        oHost.start();
        oAnalyst.showWindow();
        oHost.call("select", {"i:2"});
        oAnalyst.choose("Show", "URL");
        // when
        oAnalyst.doubleClickCell(0, "URL");
        QCOMPARE(oHost.numRows(), 2);
        // then: system() itself has 32 and 33 ignored, which the C library keeps to itself
        QFile oReport(sReport);
        QVERIFY(oReport.open(QIODevice::ReadOnly));
        QCOMPARE(oReport.readAll(), "SigBlk:\t0000000000000000\nSigIgn:\t0000000180000000\nend\n");
    }

private:
    /// What the host says about its process now, the environment in alphabetical order.
    static QByteArrayList surroundings(CPlainHost& oHost)
    {
        const qsizetype iBefore = oHost.output().size();
        oHost.command({"surroundings"});
        QByteArrayList lLines = oHost.output().mid(iBefore);
        std::sort(lLines.begin(), lLines.end());
        return lLines;
    }

    void construct(CPlainHost& oHost)
    {
        oHost.call("setSOMTable", {"t:news_train"});
        QCOMPARE(oHost.construct(), "window");
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

    void unload(CPlainHost& oHost) { QCOMPARE(oHost.command({"unload"}), "unloaded"); }

    CPrivateServer oServer;
    CScreen oScreen;
};

QTUTILS_MODULE_TEST_MAIN(TestModuleSurroundings)
#include "tst_module_surroundings.moc"
