// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <cstddef>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

const QString sModules = QStringLiteral(HOST_MODULES);
const QString sRecorder = sModules + QStringLiteral("recorder.so");

struct SRun
{
    int iCode;
    QString sOut;
    QString sError;
};

void start(QProcess& oHost, const QStringList& slArguments)
{
    oHost.start(QStringLiteral(HOST_PROGRAM), slArguments);
    QVERIFY2(oHost.waitForStarted(), qPrintable(oHost.errorString()));
}

SRun finish(QProcess& oHost)
{
    oHost.closeWriteChannel();
    if (!oHost.waitForFinished() || oHost.exitStatus() != QProcess::NormalExit) {
        oHost.kill();
        return {
            -1, QString::fromUtf8(oHost.readAllStandardOutput()), QStringLiteral("did not end by itself")};
    }
    return {oHost.exitCode(), QString::fromUtf8(oHost.readAllStandardOutput()),
        QString::fromUtf8(oHost.readAllStandardError())};
}

SRun run(const QStringList& slArguments, const QByteArray& sInput = QByteArray(),
    const QProcessEnvironment& oEnvironment = QProcessEnvironment::systemEnvironment())
{
    QProcess oHost;
    oHost.setProcessEnvironment(oEnvironment);
    start(oHost, slArguments);
    oHost.write(sInput);
    return finish(oHost);
}

SRun command(const char* pcCommand)
{
    return run({sRecorder, QStringLiteral("--command"), QString::fromUtf8(pcCommand)});
}

// Reads standard output until it holds the text; false when the program ends before.
bool waitForOutput(QProcess& oHost, const QByteArray& sText)
{
    QByteArray sOut;
    while (!sOut.contains(sText)) {
        if (!oHost.waitForReadyRead()) {
            return false;
        }
        sOut = oHost.peek(oHost.bytesAvailable());
    }
    return true;
}

// Whether the process has taken every signal that was sent to it.
bool noSignalWaits(pid_t iProcess)
{
    QFile oStatus(QStringLiteral("/proc/%1/status").arg(iProcess));
    return oStatus.open(QIODevice::ReadOnly) && oStatus.readAll().contains("ShdPnd:\t0000000000000000\n");
}

QString lines(std::initializer_list<const char*> lLines)
{
    QString sText;
    for (const char* pcLine : lLines) {
        sText += QString::fromUtf8(pcLine) + QLatin1Char('\n');
    }
    return sText;
}

// A socket at the abstract address of a display that only this test uses.
class CFakeDisplay
{
public:
    CFakeDisplay()
        : iSocket(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        const QByteArray sPath = "/tmp/.X11-unix/X" + QByteArray::number(getpid());
        sockaddr_un oAddress = {};
        oAddress.sun_family = AF_UNIX;
        std::copy(sPath.begin(), sPath.end(), oAddress.sun_path + 1);
        const auto nLength = socklen_t(offsetof(sockaddr_un, sun_path) + std::size_t(sPath.size()) + 1);
        bListens = bind(iSocket, reinterpret_cast<const sockaddr*>(&oAddress), nLength) == 0
            && listen(iSocket, 1) == 0;
    }
    CFakeDisplay(const CFakeDisplay&) = delete;
    CFakeDisplay& operator=(const CFakeDisplay&) = delete;
    ~CFakeDisplay() { close(iSocket); }

    bool listens() const { return bListens; }
    static QString name() { return QLatin1Char(':') + QString::number(getpid()) + QStringLiteral(".0"); }

private:
    int iSocket;
    bool bListens = false;
};

} // namespace

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
        const QString sFile = QStringLiteral(__FILE__);
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

    void standardInputIsAScript()
    {
        const SRun oRun = run({sRecorder}, "CRecorder x\nadd 1\nad 2\nadd 3");
        QCOMPARE(oRun.sOut, lines({"construct x without a handle", "add 1", "free 1 of x"}));
        QCOMPARE(oRun.sError, lines({"standard input:3: unknown method \"ad\"; did you mean \"add\"?"}));
        QCOMPARE(oRun.iCode, 2);
    }

    void aPipeIsAnsweredLineByLine()
    {
        QProcess oHost;
        start(oHost, {sRecorder});
        oHost.write("CRecorder x\n");
        QVERIFY(waitForOutput(oHost, "construct x"));
        oHost.write("add 5\n");
        QVERIFY(waitForOutput(oHost, "add 5"));
        QCOMPARE(finish(oHost).iCode, 0);
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

    void helpComesFromTheDescriptor()
    {
        const SRun oRun = command(".help");
        QVERIFY(oRun.sOut.startsWith(QStringLiteral("Class CRecorder:\n  CRecorder(char *pcName)\n")));
        QVERIFY(oRun.sOut.contains(QStringLiteral("  .sleep SECONDS ")));
        QCOMPARE(command(".help add").sOut,
            lines({"void add(int iNumber)", "  argument 1 (iNumber), int: 7, -1, $n, $n*3 or null"}));
        QCOMPARE(command(".help showKept").sOut, lines({"void showKept()", "  no arguments"}));
    }

    void aNullHandleIsExplained_data()
    {
        QTest::addColumn<QStringList>("slOptions");
        QTest::addColumn<QString>("sDisplay");
        QTest::addColumn<QString>("sReason");
        const QStringList slSet{QStringLiteral("--need"), QStringLiteral("PATH")};
        const auto row = [](const char* pcName, const QStringList& slOptions, const QString& sDisplay,
                             const char* pcReason) {
            QTest::newRow(pcName) << slOptions << sDisplay
                                  << QString::fromUtf8(pcReason).replace(QLatin1String("%1"), sDisplay);
        };
        row("usual variable", {}, QString(), "the environment variable MYSQL_USER is not set");
        row("named variable", slSet + QStringList{QStringLiteral("--need"), QStringLiteral("ABSENT")},
            QString(), "the environment variable ABSENT is not set");
        row("no display named", slSet, QString(), "DISPLAY is not set: there is no display");
        row("no display there", slSet, QStringLiteral(":98765"), "no display at DISPLAY=%1");
        row("wrong display", slSet, QStringLiteral("x"), "no display at DISPLAY=%1, or the module refused");
        row("far display", slSet, QStringLiteral("far:0"), "no display at DISPLAY=%1, or the module refused");
        row("display there", slSet, CFakeDisplay::name(), "the module refused");
    }

    void aNullHandleIsExplained()
    {
        QFETCH(QStringList, slOptions);
        QFETCH(QString, sDisplay);
        QFETCH(QString, sReason);
        const CFakeDisplay oDisplay;
        QVERIFY(oDisplay.listens());
        QProcessEnvironment oEnvironment = QProcessEnvironment::systemEnvironment();
        oEnvironment.insert(QStringLiteral("MYSQL_HOST"), QStringLiteral("localhost"));
        oEnvironment.remove(QStringLiteral("MYSQL_USER"));
        oEnvironment.remove(QStringLiteral("DISPLAY"));
        if (!sDisplay.isEmpty()) {
            oEnvironment.insert(QStringLiteral("DISPLAY"), sDisplay);
        }
        const QStringList slCall{
            sModules + QStringLiteral("refuse.so"), QStringLiteral("--command"), QStringLiteral("CRefuse")};
        const SRun oRun = run(slOptions + slCall, QByteArray(), oEnvironment);
        QCOMPARE(
            oRun.sError, QStringLiteral("command 1:1: CRefuse returned a null handle: %1\n").arg(sReason));
        QCOMPARE(oRun.sOut, QString()); // the destructor prints
        QCOMPARE(oRun.iCode, 2);
    }

    void aSignalEndsASleepInOrder_data()
    {
        QTest::addColumn<int>("iSignal");
        QTest::newRow("SIGTERM") << SIGTERM;
        QTest::newRow("SIGHUP") << SIGHUP;
        QTest::newRow("SIGINT") << SIGINT;
    }

    void aSignalEndsASleepInOrder()
    {
        QFETCH(int, iSignal);
        QProcess oHost;
        start(oHost,
            {sRecorder, QStringLiteral("--command"), QStringLiteral("CRecorder x; .sleep 1000; add 1")});
        QVERIFY(waitForOutput(oHost, "construct x"));
        kill(pid_t(oHost.processId()), iSignal);
        const SRun oRun = finish(oHost);
        QCOMPARE(oRun.sOut, lines({"construct x without a handle", "free 1 of x"}));
        QCOMPARE(oRun.iCode, 128 + iSignal);
    }

    void aSignalEndsTheWaitForInput()
    {
        QProcess oHost;
        start(oHost, {sRecorder});
        oHost.write("CRecorder x\nadd \"unfinished");
        QVERIFY(waitForOutput(oHost, "construct x"));
        kill(pid_t(oHost.processId()), SIGTERM);
        QVERIFY(oHost.waitForFinished());
        QCOMPARE(oHost.readAllStandardError(), QByteArray()); // the rest of a line is no statement
        QCOMPARE(QString::fromUtf8(oHost.readAllStandardOutput()),
            lines({"construct x without a handle", "free 1 of x"}));
        QCOMPARE(oHost.exitCode(), 128 + SIGTERM);
    }

    void aSignalSentTwiceAtOnceCountsOnce()
    {
        QProcess oHost;
        start(oHost, {sRecorder, QStringLiteral("--command"), QStringLiteral("CRecorder x; block")});
        QVERIFY(waitForOutput(oHost, "blocked"));
        const auto iProcess = pid_t(oHost.processId());
        QElapsedTimer oTimer;
        oTimer.start();
        for (int i = 0; i < 2; ++i) {
            kill(iProcess, SIGTERM);
            QTRY_VERIFY(noSignalWaits(iProcess));
        }
        const bool bGoesOn = !oHost.waitForFinished(0);
        if (oTimer.elapsed() >= 500) {
            QSKIP("the machine was too busy to send two signals at once");
        }
        QVERIFY(bGoesOn);
        oHost.kill();
        QVERIFY(oHost.waitForFinished());
    }

    void aSecondSignalEndsABlockedCall()
    {
        QProcess oHost;
        start(oHost, {sRecorder, QStringLiteral("--command"), QStringLiteral("CRecorder x; block")});
        QVERIFY(waitForOutput(oHost, "blocked"));
        const auto iProcess = pid_t(oHost.processId());
        for (int i = 0; i < 2; ++i) { // terminals send two
            kill(iProcess, SIGHUP);
            QTRY_VERIFY(noSignalWaits(iProcess));
        }
        QVERIFY(!oHost.waitForFinished(0));
        // One that comes too early counts as the same as the first.
        const auto hasEnded = [&] {
            return oHost.state() == QProcess::NotRunning
                || (kill(iProcess, SIGTERM) == 0 && oHost.waitForFinished(100));
        };
        QTRY_VERIFY(hasEnded());
        QCOMPARE(oHost.exitCode(), 128 + SIGTERM);
        QVERIFY(!oHost.readAllStandardOutput().contains("free"));
    }
};

QTEST_GUILESS_MAIN(TestHostProgram)
#include "tst_hostprogram.moc"
