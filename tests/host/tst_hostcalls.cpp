// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "hostrun.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

class TestHostCalls : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void argumentsReachTheModuleAndResultsComeBack()
    {
        const SRun oRun = command("CRecorder \"a b\"; add -7; add null; greet you char[20] -> g\n"
                                  "sum [1, 2 3] 3 int[1] -> n; scale repeat($n, [0.5]) 2 float[2] -> f\n"
                                  "unnamed int[1] $n; .echo $g $n $f; FREE_CRecorder");
        QCOMPARE(oRun.sError, QString());
        QCOMPARE(oRun.sOut,
            lines({"construct a b without a handle", "add -7", "add null", "greet <you>",
                "pcGreeting = hello you", "piSum = 6", "value 0.5", "value 0.5", "pfScaled = 1 1",
                "argument 1 = 6", "hello you 6 1 1", "free 1 of a b", "at exit 3"}));
        QCOMPARE(oRun.iCode, 0);
    }

    void buffersOutliveTheCallAndTheLastDestructor()
    {
        const SRun oRun = command("CRecorder x; sum repeat(1000, [4 5]) 2000 int[1]; add 1; showKept");
        QCOMPARE(oRun.sOut.count(QStringLiteral("kept 4\nkept 5\n")), 1000);
        QVERIFY2(oRun.sOut.endsWith(QStringLiteral("free 1 of x\nat exit 5\n")), qPrintable(oRun.sOut));
    }

    void eachConstructionIsFreedOnceNewestFirst()
    {
        const SRun oRun =
            command("CRecorder x; CRecorder y; .class COther; COther; .class CRecorder; CRecorder z\n"
                    "handle; FREE_CRecorder; handle");
        QCOMPARE(oRun.sOut,
            lines({"construct x without a handle", "construct y without a handle", "construct other",
                "construct z without a handle", "handle 3", "free 3 of z", "handle 2", "free other",
                "free 2 of z", "free 1 of z"}));
    }

    void anErrorEndsTheScriptAfterFreeing()
    {
        QTemporaryDir oFolder;
        QFile oScript(oFolder.filePath(QStringLiteral("tour.qth")));
        QVERIFY(oScript.open(QIODevice::WriteOnly));
        oScript.write("# tour\nCRecorder x\nadd \"x\"\nadd 1\n");
        oScript.close();
        const SRun oRun = run({sRecorder, QStringLiteral("--script"), oScript.fileName()});
        QCOMPARE(oRun.sError,
            oScript.fileName()
                + QStringLiteral(":3: add: argument 1 (iNumber) must be an int, got text \"x\"\n"));
        QCOMPARE(oRun.sOut, lines({"construct x without a handle", "free 1 of x"}));
        QCOMPARE(oRun.iCode, 2);
    }

    void aWrongStatementIsExplained_data()
    {
        QTest::addColumn<QString>("sStatement");
        QTest::addColumn<QString>("sCause");
        const auto row = [](const char* pcStatement, const char* pcCause) {
            QTest::newRow(pcStatement) << QString::fromUtf8(pcStatement) << QString::fromUtf8(pcCause);
        };
        row("ad 1", "unknown method \"ad\"; did you mean \"add\"?");
        row("add", "add: takes 1 argument, got 0; it is \"void add(int iNumber)\"");
        row("add 1 2", "add: takes 1 argument, got 2; it is \"void add(int iNumber)\"");
        row("add 1.5", "add: argument 1 (iNumber) must be an int, got number 1.5");
        row("add 2147483648",
            "add: argument 1 (iNumber) must be an int, got number 2147483648, which is out of range");
        row("add [1]", "add: argument 1 (iNumber) must be an int, got an array");
        row("greet [1] null", "greet: argument 1 (pcName) must be text or char[N], got an array");
        row("greet x int[5]", "greet: argument 2 (pcGreeting) must be text or char[N], got int[5]");
        row("sum 1 1 null", "sum: argument 1 (piValues) must be an int array or int[N], got number 1");
        row("sum [1 0.5] 1 null", "sum: argument 1 (piValues) must be an int array, got an array with 0.5");
        row("scale x 1 null",
            "scale: argument 1 (pfValues) must be a float array or float[N], got text \"x\"");
        row("unnamed x 1", "unnamed: argument 1 must be an int array or int[N], got text \"x\"");
        row("add 1 -> n", "add: has no result buffer to store in $n");
        row("FREE_CRecorder; add 1", "add: there is no instance; call CRecorder first");
        row("FREE_CRecorder; FREE_CRecorder", "FREE_CRecorder: there is no instance; call CRecorder first");
        row(".ech", "unknown built-in \".ech\"; did you mean \".echo\"?");
        row(".sleep -1", ".sleep: SECONDS must be a number from 0 to 1000000, got number -1");
        row(".sleep", ".sleep: wrong number of arguments; see .help");
        row(".class CRecordr", "unknown class \"CRecordr\"; did you mean \"CRecorder\"?");
        row(".set 1 2", ".set: \"1\" can't name a variable");
        row(".set n int[1]", ".set: a result buffer stands only in a call");
        row(".echo 1 -> n", ".echo: has no result to store");
        row(".include /absent/x", "can't open script \"/absent/x\": No such file or directory");
        row(".include /", "can't read \"/\": Is a directory");
    }

    void aWrongStatementIsExplained()
    {
        QFETCH(QString, sStatement);
        QFETCH(QString, sCause);
        const SRun oRun =
            run({sRecorder, QStringLiteral("--command"), QStringLiteral("CRecorder x\n") + sStatement});
        QCOMPARE(oRun.sError, QStringLiteral("command 1:2: %1\n").arg(sCause));
        QCOMPARE(oRun.iCode, 2);
        QVERIFY2(oRun.sOut.endsWith(QStringLiteral("free 1 of x\n")), qPrintable(oRun.sOut));
    }

    void helpComesFromTheDescriptor()
    {
        const SRun oRun = command(".help");
        QVERIFY(oRun.sOut.startsWith(QStringLiteral("Class CRecorder:\n  CRecorder(char *pcName)\n")));
        QVERIFY(oRun.sOut.contains(QStringLiteral("  .sleep SECONDS ")));
        QCOMPARE(command(".help add").sOut,
            lines({"void add(int iNumber)", "  argument 1 (iNumber), int: 7, -1, $n, $n*3 or null"}));
        QCOMPARE(command(".help showKept").sOut, lines({"void showKept()", "  no arguments"}));
    }
};

QTEST_GUILESS_MAIN(TestHostCalls)
#include "tst_hostcalls.moc"
