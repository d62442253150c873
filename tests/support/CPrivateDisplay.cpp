// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CPrivateDisplay.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <sys/prctl.h>

namespace {

constexpr int LongestWait = 60000; // milliseconds

[[noreturn]] void giveUp(const char* pcWhat)
{
    std::fprintf(stderr, "private display: %s\n", pcWhat);
    std::exit(2);
}

void endWithUs()
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
}

} // namespace

CPrivateDisplay::CPrivateDisplay(Manager eManager, QSize oSize)
{
    oServer.setChildProcessModifier(endWithUs);
    oServer.start(QStringLiteral("Xvfb"),
        {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"), QStringLiteral("0"),
            QStringLiteral("%1x%2x24").arg(oSize.width()).arg(oSize.height()), QStringLiteral("-noreset"),
            QStringLiteral("-nolisten"), QStringLiteral("tcp")});
    QByteArray oOutput;
    while (!oOutput.endsWith('\n')) {
        if (!oServer.waitForReadyRead(LongestWait))
            giveUp("Xvfb doesn't start");
        oOutput += oServer.readAllStandardOutput();
    }
    oName = ':' + oOutput.trimmed();
    qputenv("DISPLAY", oName);
    if (eManager == Manager::Running)
        startManager();
}

CPrivateDisplay::~CPrivateDisplay()
{
    for (QProcess* pProcess : {&oManager, &oServer}) {
        pProcess->kill();
        pProcess->waitForFinished(LongestWait);
    }
}

void CPrivateDisplay::kill()
{
    oServer.kill();
    oServer.waitForFinished(LongestWait);
}

// The manager runs the command once it takes care of windows; one that opens earlier never gets the focus.
void CPrivateDisplay::startManager()
{
    QProcessEnvironment oEnvironment = QProcessEnvironment::systemEnvironment();
    oEnvironment.insert(QStringLiteral("HOME"), oFolder.path());
    oManager.setProcessEnvironment(oEnvironment);
    oManager.setChildProcessModifier(endWithUs);
    oManager.start(QStringLiteral("openbox"), {QStringLiteral("--startup"), QStringLiteral("echo started")});
    QByteArray oOutput;
    while (!oOutput.contains("started")) {
        if (!oManager.waitForReadyRead(LongestWait))
            giveUp("openbox doesn't start");
        oOutput += oManager.readAllStandardOutput();
    }
}
