// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "hostrun.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

namespace {

/// A text of JSON, written with single quotes.
QByteArray json(QByteArray sText)
{
    return sText.replace('\'', '"');
}

const QByteArray Head = json("{'qtutils-trace':1}\n");
const QByteArray Construction =
    json("{'call':1,'thread':1,'function':'recorder_CRecorder','handle':null,'arguments':['x']}\n"
         "{'answer':1,'took':0.1,'handle':'0xa'}\n");

/// A call by a thread, without its answer.
QByteArray begin(int iCall, int iThread, const QByteArray& sName, const QByteArray& sArguments)
{
    return json("{'call':" + QByteArray::number(iCall) + ",'thread':" + QByteArray::number(iThread)
        + ",'function':'recorder_" + sName + "','handle':'0xa','arguments':" + sArguments + "}\n");
}

/// A call by thread 1 that is answered at once.
QByteArray call(int iCall, const QByteArray& sName, const QByteArray& sArguments, const QByteArray& sResults)
{
    return begin(iCall, 1, sName, sArguments)
        + json("{'answer':" + QByteArray::number(iCall) + ",'results':" + sResults + "}\n");
}

} // namespace

/// Calls of a recording are made again: with the module that prints every call.
class TestHostReplay : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void callsAreMadeAgainInTheirOrder()
    {
        const SRun oRun = replay(Construction + call(2, "add", "[-7]", "[]") + call(3, "add", "[null]", "[]")
            + call(4, "greet", "['you',{}]", R"([{"before":"old","after":"hello you"}])")
            + call(5, "greet", R"([{"bytes":"K\u00f6ln"},null])", "[]")
            + call(6, "sum", "[[1,2,3],3,{}]", R"([{"before":[0],"after":[6]}])")
            + call(7, "scale", "[[0.5,\"inf\",-2e3],3,[0,0,0]]", "[]") + call(8, "handle", "null", "[]"));
        QCOMPARE(oRun.sError, QString());
        QCOMPARE(oRun.sOut,
            lines({"construct x without a handle", "add -7", "add null", "greet <you>", "greet <K\uFFFDln>",
                "value 0.5", "value inf", "value -2000", "handle 1", "free 1 of x"})
                + QStringLiteral("%1: answers as recorded, calls: 8\n").arg(file()) + lines({"at exit 3"}));
        QCOMPARE(oRun.iCode, 0);
    }

    void otherAnswersAreNamedAndTheRestIsPlayed()
    {
        const SRun oRun =
            replay(Construction + call(2, "sum", "[[1,2,3],3,{}]", R"([{"before":[0],"after":[7]}])")
                + call(3, "greet", "['you',{}]", R"([{"before":"","after":"good day\n"}])")
                + call(4, "unnamed", "[{},5]", R"([{"before":[0,1,2],"after":[5,1,3]}])")
                + call(5, "add", "[1]", "[]"));
        QCOMPARE(oRun.sError,
            errors({"5: recorder_sum: piSum: recorded 7, got 6",
                "7: recorder_greet: pcGreeting: recorded \"good day\\n\", got \"hello you\"",
                "9: recorder_unnamed: [2]: recorded 3, got 2"}));
        QVERIFY2(oRun.sOut.contains(QStringLiteral("\nadd 1\nfree 1 of x\n")), qPrintable(oRun.sOut));
        QCOMPARE(oRun.iCode, 1);
    }

    void whatWasThereBeforeIsThereAgain()
    {
        const SRun oRun =
            replay(Construction + call(2, "sum", "[[4],1,{}]", R"([{"before":[9,8],"after":[4,8]}])"));
        QCOMPARE(oRun.sError, QString());
        QCOMPARE(oRun.iCode, 0);
    }

    void aRecordedEndOfAnInstanceIsNotRepeated()
    {
        const SRun oRun = replay(Construction + call(2, "FREE_CRecorder", "[]", "[]"));
        QCOMPARE(oRun.sOut.count(QStringLiteral("free 1 of x")), 1);
    }

    void anAnswerThatDoesNotComeEndsThePlaying()
    {
        const SRun oRun = replay(Construction + call(2, "block", "[]", "[]") + call(3, "add", "[1]", "[]"),
            {QStringLiteral("--wait"), QStringLiteral("0.05")});
        QCOMPARE(oRun.sError, errors({"5: recorder_block has no answer; the rest is not played"}));
        QVERIFY(!oRun.sOut.contains(QStringLiteral("add")));
        QCOMPARE(oRun.iCode, 1);
    }

    void callsThatOverlappedDoSoAgain()
    {
        // given: a thread that is blocked while another one calls
        const QByteArray sBlocked = begin(2, 2, "block", "[]");
        const SRun oRun = replay(Construction + sBlocked + call(3, "add", "[1]", "[]"),
            {QStringLiteral("--wait"), QStringLiteral("0.05")});
        // then
        QVERIFY2(oRun.sOut.contains(QStringLiteral("add 1\n")), qPrintable(oRun.sOut));
        QCOMPARE(oRun.sError, QString()); // the recording has no answer of it, either
        QCOMPARE(oRun.iCode, 0);
    }

    void anAnswerThatTheRecordingLacksIsNamed()
    {
        const QByteArray sCall = begin(2, 1, "add", "[1]");
        QCOMPARE(
            replay(Construction + sCall).sError, errors({"4: recorder_add: recorded no answer, got one"}));
    }

    void aRecordingIsLookedForWhereTheProgramWasStarted()
    {
        QCOMPARE(replay(Construction).iCode, 0);
        const QString sRelative = QDir::current().relativeFilePath(file());
        const QStringList slFolder{QStringLiteral("--directory"), QStringLiteral("/usr")};
        const SRun oRun = run(slFolder + QStringList{sRecorder, QStringLiteral("--replay"), sRelative});
        QCOMPARE(oRun.sError, QString());
        QCOMPARE(oRun.iCode, 0);
    }

    void aLastLineWithoutItsEndIsPassedOver()
    {
        const SRun oRun = replay(Construction + json("{'call':2,'thr"));
        QCOMPARE(oRun.sError, QString());
        QCOMPARE(oRun.iCode, 0);
    }

    void aNullHandleEndsThePlaying()
    {
        const QByteArray sText = QByteArray(Construction).replace("recorder_CRecorder", "refuse_CRefuse");
        const SRun oRun = replay(QByteArray(sText).replace(json("['x']"), "[]"),
            {QStringLiteral("--need"), QStringLiteral("QTUTILS_ABSENT")},
            sModules + QStringLiteral("refuse.so"));
        QCOMPARE(oRun.sError,
            errors(
                {"3: refuse_CRefuse returned a null handle: the environment variable QTUTILS_ABSENT is not "
                 "set"}));
        QCOMPARE(oRun.sOut, QString());
        QCOMPARE(oRun.iCode, 2);
    }

    void aFileThatIsNoRecordingIsOneLine_data()
    {
        QTest::addColumn<QByteArray>("sLine");
        QTest::addColumn<QString>("sCause");
        const auto row = [](const char* pcLine, const char* pcCause) {
            QTest::newRow(pcLine) << json(pcLine) << QString::fromUtf8(pcCause);
        };
        const auto ofCall = [&](const char* pcArguments, const char* pcCause) {
            const QByteArray sCall = call(9, "sum", pcArguments, "[]");
            QTest::newRow(pcArguments) << sCall.left(sCall.indexOf('\n')) << QString::fromUtf8(pcCause);
        };
        row("", "column 1: no value");
        row("{", "column 2: no key");
        row("{'call'", "column 8: no value for \"call\"");
        row("{'call':1", "column 10: an object has no end");
        row("[1,2", "column 5: an array has no end");
        row("'a", "column 3: a text has no end");
        row("'\\u12'", "column 2: an escape can't be read");
        row("'\\ud800'", "column 2: an escape can't be read");
        row("{} 1", "column 4: something follows the value");
        row("{}", "neither call nor answer");
        row("{'qtutils-trace':1}", "a second recording begins");
        row("{'call':1.5,'arguments':[]}", "\"call\" is no count");
        row("{'call':1}", "no \"arguments\" as it is recorded");
        row("{'answer':7}", "an answer without its call");
        row("{'call':2,'thread':1,'function':'recorder_ad','arguments':[]}",
            "the module has no \"recorder_ad\"");
        ofCall("[1]", "recorder_sum: takes 3 arguments, not 1");
        ofCall("[1,1,{}]", "recorder_sum: argument 1 (piValues) is not as it is recorded");
        ofCall("[[1],1.5,{}]", "recorder_sum: argument 2 (iCount) is not as it is recorded");
        ofCall("[[1e10],1,{}]", "recorder_sum: argument 1 (piValues) is not as it is recorded");
        ofCall("[{'unreadable':true},1,{}]",
            "recorder_sum: argument 1 (piValues) is memory that couldn't be read when it was recorded");
    }

    void aFileThatIsNoRecordingIsOneLine()
    {
        QFETCH(QByteArray, sLine);
        QFETCH(QString, sCause);
        const SRun oRun = replay(sLine + '\n');
        QCOMPARE(oRun.sError, QStringLiteral("%1:2: %2\n").arg(file(), sCause));
        QCOMPARE(oRun.iCode, 2);
    }

    void deepBracketsAreRefused()
    {
        const SRun oRun = replay(QByteArray(100'000, '[') + '\n');
        QCOMPARE(oRun.sError, errors({"2: column 66: nested too deep"}));
    }

    void anAbsentOrEmptyRecordingIsOneLine()
    {
        const SRun oAbsent = run({sRecorder, QStringLiteral("--replay"), QStringLiteral("/absent")});
        QCOMPARE(oAbsent.sError,
            QStringLiteral("qtutils-host: can't open recording \"/absent\": No such file or directory\n"));
        QCOMPARE(oAbsent.iCode, 2);
        const SRun oEmpty = run({sRecorder, QStringLiteral("--replay"), QStringLiteral("/dev/null")});
        QCOMPARE(oEmpty.sError, QStringLiteral("qtutils-host: \"/dev/null\" has no recording\n"));
    }

private:
    QString file() const { return oFolder.filePath(QStringLiteral("calls.jsonl")); }

    SRun replay(
        const QByteArray& sLines, const QStringList& slOptions = {}, const QString& sModule = sRecorder)
    {
        QFile oFile(file());
        if (!oFile.open(QIODevice::WriteOnly) || oFile.write(Head + sLines) < 0)
            return {-1, QString(), QStringLiteral("can't write the recording")};
        oFile.close();
        return run(QStringList{sModule, QStringLiteral("--replay"), file()} + slOptions);
    }

    QString errors(std::initializer_list<const char*> lLines) const
    {
        QString sText;
        for (const char* pcLine : lLines)
            sText += file() + QLatin1Char(':') + QString::fromUtf8(pcLine) + QLatin1Char('\n');
        return sText;
    }

    QTemporaryDir oFolder;
};

QTEST_GUILESS_MAIN(TestHostReplay)
#include "tst_hostreplay.moc"
