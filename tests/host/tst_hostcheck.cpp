// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "hostrun.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

namespace {

const QString sCheck = QStringLiteral("--check");

} // namespace

class TestHostCheck : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QVERIFY(oFolder.isValid()); }

    void rightAnswersPass_data()
    {
        QTest::addColumn<QByteArray>("oScript");
        QTest::addColumn<int>("iAnswers");
        const auto row = [](const char* pcName, int iAnswers, const char* pcScript) {
            QTest::newRow(pcName) << QByteArray(pcScript) << iAnswers;
        };
        row("no answers", 0, "CSpeaker\n");
        row("beside", 1, ".echo 5 #= 5\n");
        row("below", 1, ".echo 5\n#= 5\n");
        row("indented", 1, ".echo 5\n   #= 5\n");
        row("beside and below", 2, ".echo 5; .echo 6   #= 5\n#= 6\n");
        row("of two statements", 2, ".echo 5; .echo 6\n#= 5\n#= 6\n");
        row("with a comment between", 2, ".echo 5; .echo 6\n#= 5\n\n# and\n#= 6\n");
        row("without a line feed at the end", 1, ".echo 5\n#= 5");
        row("an empty line", 2, ".echo; .echo \"  \"\n#=\n#=\n");
        row("blanks at the end", 1, ".echo \"5  \" #= 5\n");
        row("blanks at the beginning", 1, ".echo \"  5\"\n#=   5\n");
        row("signs of the language", 1, ".echo \"a # \\\"b\\\"; c\"\n#= a # \"b\"; c\n");
        row("the module's own line", 1, "CSpeaker; say hello  #= hello\n");
        row("a line in two parts", 1, "CSpeaker; begin hel; say lo  #= hello\n");
        row("a line of another thread", 1, "CSpeaker; sayLater hello\n#= hello\n");
        row("standard error", 3, "CSpeaker; warn oh; .echo 5; say 6\n#=! oh\n#= 5\n#= 6\n");
        row("rows of signs", 0, "#=====\n.set n 5\n#=!!!!\n#=x\n# #= 5\n");
        row("an announced error", 2,
            "say hello\n#=! say: there is no instance; call CSpeaker first\n.echo 5 #= 5\n");
        row("an error of reading", 1, ".echo \"x #= 5\n#=! a text has no closing quote\n");
        row("an error behind an answer", 3,
            "CSpeaker; warn oh; .echo 5; ad; .echo 6\n#= 5\n#=! oh\n"
            "#=! unknown method \"ad\"; did you mean \"say\"?\n");
        row("the end before the end", 1, ".echo 5 #= 5\n.quit\n.echo 6 #= 7\n");
    }

    void rightAnswersPass()
    {
        QFETCH(QByteArray, oScript);
        QFETCH(int, iAnswers);
        const SRun oRun = check(oScript);
        QCOMPARE(oRun.sError, QString());
        QCOMPARE(oRun.sOut, script() + QStringLiteral(": answers as written: %1\n").arg(iAnswers));
        QCOMPARE(oRun.iCode, 0);
    }

    void aLineWithoutAnEndIsAnAnswer()
    {
        const SRun oRun = check("CSpeaker; begin hello #= hello\n", QStringLiteral("0"));
        QCOMPARE(oRun.sOut, script() + QStringLiteral(": answers as written: 1\n"));
    }

    void aDifferenceIsOneLineAndCodeOne_data()
    {
        QTest::addColumn<QByteArray>("oScript");
        QTest::addColumn<QString>("sDifference");
        const auto row = [](const char* pcName, const char* pcScript, const char* pcDifference) {
            QTest::newRow(pcName) << QByteArray(pcScript) << QString::fromUtf8(pcDifference);
        };
        row("wrong beside", "\n.echo 5 #= 6\n.echo 7 #= 7\n", "2: wanted \"6\", got \"5\"");
        row("wrong below", ".echo 5\n# five\n#= 6\n.echo 7 #= 7\n", "3: wanted \"6\", got \"5\"");
        row("wrong at the end", ".echo 5\n#= 6", "2: wanted \"6\", got \"5\"");
        row("missing", ".set n 5\n#= 5\n.echo 7 #= 7\n", "2: wanted \"5\", got nothing");
        row("missing among others", ".echo 5\n#= 5\n#= 6\n.echo 7 #= 7\n", "3: wanted \"6\", got nothing");
        row("missing at the end", ".echo 5\n#= 5\n#= 6\n", "3: wanted \"6\", got nothing");
        row("before any statement", "#= 5\n.echo 7 #= 7\n", "1: wanted \"5\", got nothing");
        row("surplus", "\n.echo 5\n# five\n.echo 7 #= 7\n", "2: wanted nothing, got \"5\"");
        row("surplus among others", ".echo 5; .echo 6\n#= 5\n.echo 7 #= 7\n", "1: wanted nothing, got \"6\"");
        row("surplus at the end", ".echo 5", "1: wanted nothing, got \"5\"");
        row("surplus empty line", ".echo", "1: wanted nothing, got \"\"");
        row("order", ".echo 5; .echo 6\n#= 6\n#= 5\n", "2: wanted \"6\", got \"5\"");
        row("blanks at the beginning", ".echo 5\n#=  5\n", "2: wanted \" 5\", got \"5\"");
        row("standard error", "CSpeaker; warn oh\n#=! ah\n",
            "2: on standard error wanted \"ah\", got \"oh\"");
        row("surplus on standard error", "CSpeaker; warn oh\n",
            "1: on standard error wanted nothing, got \"oh\"");
        row("missing on standard error", ".echo 5\n#= 5\n#=! oh\n",
            "3: on standard error wanted \"oh\", got nothing");
        row("line without an end", "CSpeaker; begin hel\nsay lo #= lo\n", "1: wanted nothing, got \"hel\"");
        row("beside an announced error", "ad\n#=! unknown method \"ad\"; did you mean \"say\"?\n#=! more\n",
            "3: on standard error wanted \"more\", got nothing");
    }

    void aDifferenceIsOneLineAndCodeOne()
    {
        QFETCH(QByteArray, oScript);
        QFETCH(QString, sDifference);
        const SRun oRun = check(oScript, QStringLiteral("0"));
        QCOMPARE(oRun.sError, script() + QLatin1Char(':') + sDifference + QLatin1Char('\n'));
        QCOMPARE(oRun.sOut, QString());
        QCOMPARE(oRun.iCode, 1);
    }

    void theScriptGoesOnBehindADifference()
    {
        const SRun oRun = check(".echo 1 #= 2\n.echo 3 #= 3\nCSpeaker; warn 4; .echo 5\n");
        const QString sPlace = script() + QLatin1Char(':');
        QCOMPARE(oRun.sError,
            sPlace + QStringLiteral("1: wanted \"2\", got \"1\"\n") + sPlace
                + QStringLiteral("3: wanted nothing, got \"5\"\n") + sPlace
                + QStringLiteral("3: on standard error wanted nothing, got \"4\"\n"));
        QCOMPARE(oRun.iCode, 1);
    }

    void anErrorThatIsNoAnswerEndsTheScript()
    {
        const SRun oRun =
            check("CSpeaker; warn before\n#=! before\nwarn lost; say found; ad\n.echo 5 #= 6\n");
        QCOMPARE(oRun.sError,
            QStringLiteral("lost\n") + script()
                + QStringLiteral(":3: unknown method \"ad\"; did you mean \"say\"?\n"));
        QCOMPARE(oRun.sOut, lines({"found"})); // what was not compared is seen
        QCOMPARE(oRun.iCode, 2);
    }

    void anErrorAtTheEndEndsTheScript()
    {
        const SRun oRun = check("ad\n");
        QCOMPARE(
            oRun.sError, script() + QStringLiteral(":1: unknown method \"ad\"; did you mean \"say\"?\n"));
        QCOMPARE(oRun.iCode, 2);
    }

    void anIncludedScriptHasItsOwnAnswers()
    {
        write("inner", ".echo 5 #= 5\n.echo 6\n#= 7\n");
        const SRun oRun = check(".echo 1\n#= 1\n.include inner\n.echo 2 #= 3\n");
        QCOMPARE(oRun.sError,
            oFolder.filePath(QStringLiteral("inner")) + QStringLiteral(":3: wanted \"7\", got \"6\"\n")
                + script() + QStringLiteral(":4: wanted \"3\", got \"2\"\n"));
        QCOMPARE(oRun.iCode, 1);
    }

    void theAnswersOfIncludedScriptsCount()
    {
        write("inner", ".echo 5 #= 5\n");
        const SRun oRun = check(".echo 1 #= 1\n.include inner\n.include inner\n");
        QCOMPARE(oRun.sOut, script() + QStringLiteral(": answers as written: 3\n"));
        QCOMPARE(oRun.iCode, 0);
    }

    void anErrorOfAnIncludedScriptNamesThatScript()
    {
        write("inner", ".echo 5 #= 5\nad\n");
        const SRun oRun = check(".include inner\n#=! unknown method \"ad\"; did you mean \"say\"?\n");
        QCOMPARE(oRun.sError,
            oFolder.filePath(QStringLiteral("inner"))
                + QStringLiteral(":2: unknown method \"ad\"; did you mean \"say\"?\n"));
        QCOMPARE(oRun.iCode, 2);
    }

    void aCheckedScriptIsOneAmongOthers()
    {
        write("script", ".echo 1 #= 2\n");
        const SRun oRun = run({sSpeaker, sCheck, script(), QStringLiteral("--command"),
            QStringLiteral(".echo next"), QStringLiteral("--script"), script()});
        QCOMPARE(oRun.sOut, lines({"next", "1"})); // only the checked one is compared
        QCOMPARE(oRun.sError, script() + QStringLiteral(":1: wanted \"2\", got \"1\"\n"));
        QCOMPARE(oRun.iCode, 1);
    }

    void muchOutputBlocksNothing()
    {
        QByteArray oScript = "CSpeaker; repeat " + QByteArray(1000, 'x') + " 1000\n";
        for (int i = 0; i < 1000; ++i) {
            oScript += "#= " + QByteArray(1000, 'x') + '\n';
        }
        QCOMPARE(check(oScript).sOut, script() + QStringLiteral(": answers as written: 1000\n"));
    }

    void aSignalEndsTheWaitForAnAnswer()
    {
        write("script", "CSpeaker; warn ready\n#= never\n");
        QProcess oHost;
        start(oHost, {sSpeaker, QStringLiteral("--wait"), QStringLiteral("1000"), sCheck, script()});
        QTRY_VERIFY(waits(oHost.processId()));
        oHost.terminate();
        const SRun oRun = finish(oHost);
        QCOMPARE(oRun.sError, lines({"ready"})); // it was not compared
        QCOMPARE(oRun.sOut, QString());
        QCOMPARE(oRun.iCode, 128 + SIGTERM);
    }

    void aWrongWaitIsAnError()
    {
        const SRun oRun = run({sSpeaker, QStringLiteral("--wait"), QStringLiteral("-1")});
        QCOMPARE(oRun.sError.count(QLatin1Char('\n')), 1);
        QVERIFY2(oRun.sError.startsWith(QStringLiteral("qtutils-host: --wait: ")), qPrintable(oRun.sError));
        QCOMPARE(oRun.iCode, 2);
    }

    void anAbsentScriptIsAnError()
    {
        const SRun oRun = run({sSpeaker, sCheck, QStringLiteral("/absent/x")});
        QCOMPARE(
            oRun.sError, lines({"qtutils-host: can't open script \"/absent/x\": No such file or directory"}));
        QCOMPARE(oRun.iCode, 2);
    }

private:
    const QString sSpeaker = sModules + QStringLiteral("speaker.so");

    QString script() const { return oFolder.filePath(QStringLiteral("script")); }

    void write(const char* pcName, const QByteArray& oText)
    {
        QFile oFile(oFolder.filePath(QString::fromUtf8(pcName)));
        QVERIFY(oFile.open(QIODevice::WriteOnly));
        QCOMPARE(oFile.write(oText), oText.size());
    }

    // Checks a script of that text.
    SRun check(const QByteArray& oText, const QString& sWait = QStringLiteral("10"))
    {
        write("script", oText);
        return run({sSpeaker, QStringLiteral("--wait"), sWait, sCheck, script()});
    }

    // Whether the program is in the wait: it waits nowhere else.
    static bool waits(qint64 iProcess)
    {
        QFile oChannel(QStringLiteral("/proc/%1/fd/2").arg(iProcess));
        QFile oStatus(QStringLiteral("/proc/%1/stat").arg(iProcess));
        return oChannel.symLinkTarget().contains(QStringLiteral("memfd:printed"))
            && oStatus.open(QIODevice::ReadOnly) && oStatus.readAll().contains(") S ");
    }

    QTemporaryDir oFolder;
};

QTEST_GUILESS_MAIN(TestHostCheck)
#include "tst_hostcheck.moc"
