// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CPlainHost.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <algorithm>
#include <csignal>
#include <linux/close_range.h>
#include <sys/prctl.h>
#include <unistd.h>

namespace {

constexpr int LongestWait = 60000; // milliseconds
const QByteArray Answer("=== ");

QByteArrayList lines(const QByteArray& oText)
{
    QByteArrayList lLines = oText.split('\n');
    lLines.removeAll({});
    return lLines;
}

// Ends the test with a failure if other lines came than those that were announced.
void compare(const char* pcChannel, const QByteArrayList& lCame, const QByteArrayList& lAnnounced)
{
    if (lCame == lAnnounced || QTest::currentTestFailed())
        return;
    const QByteArray oText = QByteArray("The module printed to ") + pcChannel + ":\n" + lCame.join('\n')
        + "\nand what was announced is:\n" + lAnnounced.join('\n');
    QTest::qFail(oText.constData(), __FILE__, __LINE__);
}

} // namespace

CPlainHost::CPlainHost()
{
    oProcess.setChildProcessModifier([] {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        close_range(STDERR_FILENO + 1, ~0U, CLOSE_RANGE_CLOEXEC); // the test's own and its runner's
    });
    oProcess.start(QStringLiteral(QTUTILS_PLAIN_HOST), {});
    oProcess.waitForStarted(LongestWait);
}

CPlainHost::~CPlainHost()
{
    waitForAnnouncedLines();
    oProcess.kill();
    oProcess.waitForFinished(LongestWait);
    readOutput();
    compare("standard output", lOutput.mid(iSeenOutput), lAnnouncedOutput);
    compare("standard error", readErrors().mid(iSeenErrors), lAnnouncedErrors);
}

QByteArray CPlainHost::command(const QByteArrayList& lFields)
{
    give(lFields);
    return answer();
}

void CPlainHost::give(const QByteArrayList& lFields)
{
    oProcess.write(lFields.join('\t') + '\n');
}

bool CPlainHost::readMore()
{
    if (oProcess.bytesAvailable() == 0 && !oProcess.waitForReadyRead(LongestWait))
        return false;
    oUnread += oProcess.readAllStandardOutput();
    return true;
}

QByteArray CPlainHost::answer()
{
    for (;;) {
        for (qsizetype iEnd = oUnread.indexOf('\n'); iEnd >= 0; iEnd = oUnread.indexOf('\n')) {
            const QByteArray oLine = oUnread.first(iEnd);
            oUnread.remove(0, iEnd + 1);
            if (oLine.startsWith(Answer))
                return oLine.mid(qsizetype(Answer.size()));
            lOutput << oLine;
        }
        if (!readMore()) {
            oProcess.kill();
            return "no answer";
        }
    }
}

QByteArray CPlainHost::load()
{
    return command({"load", QTUTILS_MODULE});
}

QByteArray CPlainHost::call(const QByteArray& oMethod, const QByteArrayList& lArguments)
{
    return command(QByteArrayList{"call", oMethod} + lArguments);
}

QByteArray CPlainHost::construct()
{
    return call("CNodeBrowser", {"t:som", "t:news"});
}

void CPlainHost::free()
{
    call("FREE_CNodeBrowser");
}

QByteArray CPlainHost::start()
{
    load();
    call("setSOMTable", {"t:news_train"});
    const QByteArray oWindow = construct();
    announceErrors({"Database is open. Commencing."});
    passHierarchy();
    return numRows() == 0 ? oWindow : "no answer";
}

void CPlainHost::passHierarchy(const QByteArrayList& lChildren)
{
    for (int i = 0; i < lChildren.size(); i++)
        passNode(lChildren[i], i, int(lChildren.size()));
}

void CPlainHost::passNode(const QByteArray& oChildren, int iNode, int iNumNodes)
{
    const qsizetype iNumChildren = oChildren.isEmpty() ? 0 : oChildren.count(',') + 1;
    call("passNodeHierarchy",
        {"n:" + oChildren, "i:" + QByteArray::number(iNumChildren), "i:" + QByteArray::number(iNode),
            "i:" + QByteArray::number(iNumNodes)});
}

int CPlainHost::numRows()
{
    return call("getNumRows", {"oi:1"}).toInt();
}

QByteArrayList CPlainHost::ask(const QByteArrayList& lQuestion)
{
    return command(QByteArrayList{"ask"} + lQuestion).split('\v');
}

void CPlainHost::readOutput()
{
    oUnread += oProcess.readAllStandardOutput();
    const qsizetype iEnd = oUnread.lastIndexOf('\n') + 1;
    lOutput += lines(oUnread.first(iEnd));
    lOutput.removeIf([](const QByteArray& oLine) { return oLine.startsWith(Answer); });
    oUnread.remove(0, iEnd);
}

QByteArrayList CPlainHost::readErrors()
{
    oProcess.waitForReadyRead(0);
    oErrors += oProcess.readAllStandardError();
    return lines(oErrors);
}

void CPlainHost::waitForAnnouncedLines()
{
    const auto allCame = [this] {
        readOutput();
        return lOutput.size() >= iSeenOutput + lAnnouncedOutput.size()
            && readErrors().size() >= iSeenErrors + lAnnouncedErrors.size();
    };
    const auto isOver = [&] {
        return QTest::currentTestFailed() || oProcess.state() == QProcess::NotRunning || allCame();
    };
    (void)QTest::qWaitFor(isOver, LongestWait); // what is missing then, the comparison says
}

QByteArrayList CPlainHost::output()
{
    readOutput();
    iSeenOutput = lOutput.size();
    lAnnouncedOutput.clear();
    return lOutput;
}

QByteArrayList CPlainHost::errors()
{
    const QByteArrayList lErrors = readErrors();
    iSeenErrors = lErrors.size();
    lAnnouncedErrors.clear();
    return lErrors;
}

QByteArray CPlainHost::end()
{
    if (oProcess.state() != QProcess::NotRunning && !oProcess.waitForFinished(LongestWait))
        return "still running";
    if (oProcess.exitStatus() == QProcess::CrashExit)
        return "crash";
    return QByteArray::number(oProcess.exitCode());
}

QList<int> CPlainHost::threads() const
{
    QList<int> lThreads;
    const QDir oTasks(QStringLiteral("/proc/%1/task").arg(processId()));
    for (const QString& sThread : oTasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot))
        lThreads << sThread.toInt();
    std::sort(lThreads.begin(), lThreads.end());
#if defined(__SANITIZE_THREAD__)
    if (lThreads.size() > 1)
        lThreads.remove(1); // the sanitizer's own, which it makes when the first thread is made
#endif
    return lThreads;
}

bool CPlainHost::sleepsIn(int iThread, long lSystemCall) const
{
    QFile oFile(QStringLiteral("/proc/%1/task/%2/syscall").arg(processId()).arg(iThread));
    return oFile.open(QIODevice::ReadOnly)
        && oFile.readAll().startsWith(QByteArray::number(int(lSystemCall)) + ' ');
}
