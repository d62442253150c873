// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CPlainHost.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <csignal>
#include <sys/prctl.h>

namespace {

constexpr int LongestWait = 60000; // milliseconds

QByteArrayList lines(const QByteArray& oText)
{
    QByteArrayList lLines = oText.split('\n');
    lLines.removeAll({});
    return lLines;
}

} // namespace

CPlainHost::CPlainHost()
{
    oProcess.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    oProcess.start(QStringLiteral(QTUTILS_PLAIN_HOST), {});
    oProcess.waitForStarted(LongestWait);
}

CPlainHost::~CPlainHost()
{
    oProcess.kill();
    oProcess.waitForFinished(LongestWait);
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
            if (oLine.startsWith("=== "))
                return oLine.mid(4);
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
    passHierarchy();
    return numRows() == 0 ? oWindow : "no answer";
}

void CPlainHost::passHierarchy()
{
    const QByteArrayList lChildren{"n:1,2,3", "n:", "n:", "n:"};
    for (int i = 0; i < lChildren.size(); i++)
        call("passNodeHierarchy",
            {lChildren[i], QByteArray(i == 0 ? "i:3" : "i:0"), "i:" + QByteArray::number(i), "i:4"});
}

int CPlainHost::numRows()
{
    return call("getNumRows", {"oi:1"}).toInt();
}

QByteArrayList CPlainHost::output()
{
    oUnread += oProcess.readAllStandardOutput();
    const qsizetype iEnd = oUnread.lastIndexOf('\n') + 1;
    lOutput += lines(oUnread.first(iEnd));
    oUnread.remove(0, iEnd);
    return lOutput;
}

QByteArrayList CPlainHost::errors()
{
    oProcess.waitForReadyRead(0);
    oErrors += oProcess.readAllStandardError();
    return lines(oErrors);
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
    return lThreads;
}

bool CPlainHost::sleepsIn(int iThread, long lSystemCall) const
{
    QFile oFile(QStringLiteral("/proc/%1/task/%2/syscall").arg(processId()).arg(iThread));
    return oFile.open(QIODevice::ReadOnly)
        && oFile.readAll().startsWith(QByteArray::number(int(lSystemCall)) + ' ');
}
