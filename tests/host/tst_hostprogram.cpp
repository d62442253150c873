// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "hostrun.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTemporaryFile>
#include <QTest>

class TestHostProgram : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aBrokenModuleIsOneLineAndCodeTwo_data()
    {
        QTest::addColumn<QString>("sFile");
        QTest::addColumn<QString>("sCause");
        const auto row = [](const char* pcFile, const char* pcCause) {
            QTest::newRow(pcFile) << QString::fromUtf8(pcFile) << QString::fromUtf8(pcCause);
        };
        row("absent.so", " not found");
        row("nonamespace.so", ": no class descriptor: the symbol NAMESPACE is missing");
        row("noclasses.so", ": no class descriptor: the symbol CLASSES_noclasses is missing");
        row("emptyclasses.so", ": no class descriptor: CLASSES_emptyclasses is empty");
        row("badprototype.so", ": can't read the prototype \"void tint(double dHue)\"");
        row("missingsymbol.so", ": the symbol gap_jump is missing; \"void jump(int iWidth)\" needs it");
    }

    void aBrokenModuleIsOneLineAndCodeTwo()
    {
        QFETCH(QString, sFile);
        QFETCH(QString, sCause);
        const SRun oRun = run({sModules + sFile});
        QCOMPARE(
            oRun.sError, QStringLiteral("qtutils-host: module \"%1\"%2\n").arg(sModules + sFile, sCause));
        QCOMPARE(oRun.iCode, 2);
    }

    void aFileThatIsNoSharedObjectIsOneLine()
    {
        QTemporaryFile oFile;
        QVERIFY(oFile.open());
        oFile.write("no shared object");
        oFile.flush();
        const QString sFile = oFile.fileName();
        const SRun oRun = run({sFile});
        QVERIFY2(
            oRun.sError.startsWith(QStringLiteral("qtutils-host: can't load module \"%1\": ").arg(sFile)),
            qPrintable(oRun.sError));
        QCOMPARE(oRun.sError.count(QLatin1Char('\n')), 1);
        QCOMPARE(oRun.iCode, 2);
    }

    void theListShowsSymbolsAndPrototypes()
    {
        const SRun oRun = run({QStringLiteral("--list"), sRecorder});
        QVERIFY(oRun.sOut.startsWith(
            QStringLiteral("module %1, namespace recorder\nclass CRecorder\n").arg(sRecorder)));
        QVERIFY(oRun.sOut.contains(QStringLiteral("  recorder_add             void add(int iNumber)\n")));
        QVERIFY(oRun.sOut.contains(QStringLiteral("class COther\n  other_COther       COther()\n")));
        QCOMPARE(oRun.iCode, 0);
    }

    void aCommandLineErrorIsCodeTwo()
    {
        const SRun oRun = run({QStringLiteral("--absent")});
        QCOMPARE(oRun.sError,
            QStringLiteral("qtutils-host: The following argument was not expected: --absent; see --help\n"));
        QCOMPARE(oRun.iCode, 2);
        QCOMPARE(run({QStringLiteral("--version")}).iCode, 0);
    }

    void standardInputIsAScript()
    {
        const SRun oRun = run({sRecorder}, "CRecorder x\nadd 1\nad 2\nadd 3");
        QCOMPARE(oRun.sOut, lines({"construct x without a handle", "add 1", "free 1 of x"}));
        QCOMPARE(oRun.sError, lines({"standard input:3: unknown method \"ad\"; did you mean \"add\"?"}));
        QCOMPARE(oRun.iCode, 2);
    }

    void afterAnErrorThePromptGoesOn()
    {
        const SRun oRun = run({sRecorder, QStringLiteral("--interactive"), QStringLiteral("--command"),
                                  QStringLiteral(".echo a")},
            "ad 2\nCRecorder x\n.quit\nadd 1\n");
        QCOMPARE(oRun.sOut, lines({"a", "construct x without a handle", "free 1 of x"}));
        QCOMPARE(oRun.sError, lines({"unknown method \"ad\"; did you mean \"add\"?"}));
        QCOMPARE(oRun.iCode, 0);
    }

    void scriptsAndCommandsRunInTheOrderGiven()
    {
        QTemporaryDir oFolder;
        QFile oScript(oFolder.filePath(QStringLiteral("a")));
        QVERIFY(oScript.open(QIODevice::WriteOnly));
        oScript.write(".echo script");
        oScript.close();
        const QString sScript = QStringLiteral("--script");
        const QString sCommand = QStringLiteral("--command");
        const SRun oRun = run({sCommand, QStringLiteral(".echo 1"), sScript, oScript.fileName(), sRecorder,
            sCommand, QStringLiteral(".echo 2; .quit; .echo 3"), sScript, oScript.fileName()});
        QCOMPARE(oRun.sOut, lines({"1", "script", "2"}));
        QCOMPARE(oRun.iCode, 0);
    }

    void anIncludeIsRelativeToItsScript()
    {
        QTemporaryDir oFolder;
        QVERIFY(QDir(oFolder.path()).mkdir(QStringLiteral("sub")));
        const auto write = [&](const char* pcName, const char* pcText) {
            QFile oFile(oFolder.filePath(QString::fromUtf8(pcName)));
            return oFile.open(QIODevice::WriteOnly) && oFile.write(pcText) > 0;
        };
        QVERIFY(write("outer", ".include sub/inner\n.include outer\n"));
        QVERIFY(write("sub/inner", ".include deepest\n"));
        QVERIFY(write("sub/deepest", ".echo deep\n"));
        const SRun oRun =
            run({sRecorder, QStringLiteral("--script"), oFolder.filePath(QStringLiteral("outer"))});
        QVERIFY2(oRun.sOut.startsWith(QStringLiteral("deep\n")), qPrintable(oRun.sOut + oRun.sError));
        QCOMPARE(oRun.sError,
            oFolder.filePath(QStringLiteral("sub/inner"))
                + QStringLiteral(":1: .include: scripts include each other more than 16 deep\n"));
        QCOMPARE(oRun.iCode, 2);
    }

    void anErrorOfAnIncludedScriptNamesThatScriptAlone()
    {
        QTemporaryDir oFolder;
        QFile oScript(oFolder.filePath(QStringLiteral("inner")));
        QVERIFY(oScript.open(QIODevice::WriteOnly));
        oScript.write("\nad\n");
        oScript.close();
        const SRun oRun = run({sRecorder, QStringLiteral("--command"),
            QStringLiteral(".include \"%1\"").arg(oScript.fileName())});
        QCOMPARE(oRun.sError,
            oScript.fileName() + QStringLiteral(":2: unknown method \"ad\"; did you mean \"add\"?\n"));
    }
};

QTEST_GUILESS_MAIN(TestHostProgram)
#include "tst_hostprogram.moc"
