// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CFakeBrowser.h"

#include "CPlainHost.h"

#include <QFile>
#include <QTest>

#include <fcntl.h>
#include <map>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// A zero ends what is written down of a call. The shell that makes the first call is its parent, unless it
// has ended already.
constexpr char Program[] = R"(#!/bin/sh
cd "${0%/*}" || exit
call=
for argument; do
    call="$call${call:+ }<$argument>"
done
[ -e shell ] || cat "/proc/$PPID/cmdline" > shell 2> /dev/null
printf '%s\0' "$call" >> calls
)";

const std::map<CFakeBrowser::State, const char*> Ends{
    {CFakeBrowser::State::Running, "exit 0"},
    {CFakeBrowser::State::Ended, "exit 1"},
    {CFakeBrowser::State::Ready, "[ \"$1\" != -remote ] || exit 1\nread -r line < pipe\n"},
};

} // namespace

CFakeBrowser::CFakeBrowser(CPlainHost& oHost, State eState)
{
    const QByteArray oPath = oFolder.path().toUtf8();
    mkfifo((oPath + "/pipe").constData(), S_IRUSR | S_IWUSR);
    iPipe = open((oPath + "/pipe").constData(), O_RDWR | O_CLOEXEC);
    if (eState == State::Missing) {
        oHost.command({"env", "PATH", oPath});
        return;
    }
    QFile oProgram(oFolder.filePath(QStringLiteral("firefox")));
    oProgram.open(QIODevice::WriteOnly);
    oProgram.write(QByteArray(Program) + Ends.at(eState));
    oProgram.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    oHost.command({"env", "PATH", oPath + ':' + qgetenv("PATH")});
}

CFakeBrowser::~CFakeBrowser()
{
    QFile::remove(oFolder.filePath(QStringLiteral("pipe"))); // for those that come only now
    ::close(iPipe);
}

QByteArray CFakeBrowser::read(const char* pcFile) const
{
    QFile oFile(oFolder.filePath(QLatin1String(pcFile)));
    return oFile.open(QIODevice::ReadOnly) ? oFile.readAll() : QByteArray();
}

QByteArrayList CFakeBrowser::calls() const
{
    QByteArrayList lCalls = read("calls").split('\0');
    lCalls.removeLast();
    return lCalls;
}

QByteArray CFakeBrowser::commandLine() const
{
    return read("shell").split('\0').value(2);
}

void CFakeBrowser::close()
{
    QCOMPARE(write(iPipe, "\n", 1), ssize_t(1));
}
