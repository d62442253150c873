// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CTerminal.h"

#include <QTest>

#include <csignal>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr int iTimeLimit = 20'000; // milliseconds without any output; only for a hang

} // namespace

CTerminal::CTerminal(const QStringList& slArguments, const QString& sStateFolder)
{
    std::vector<QByteArray> vTexts{HOST_PROGRAM};
    for (const QString& sArgument : slArguments) {
        vTexts.push_back(sArgument.toLocal8Bit());
    }
    std::vector<char*> vArguments;
    for (QByteArray& sText : vTexts) {
        vArguments.push_back(sText.data());
    }
    vArguments.push_back(nullptr);
    qputenv("XDG_STATE_HOME", sStateFolder.toLocal8Bit());
    qputenv("TERM", "xterm");
    winsize oSize = {};
    oSize.ws_row = 40;
    oSize.ws_col = 200;
    iProcess = forkpty(&iTerminal, nullptr, nullptr, &oSize);
    if (iProcess == 0) {
        execv(vArguments[0], vArguments.data());
        _exit(127);
    }
}

CTerminal::~CTerminal()
{
    if (iProcess > 0) {
        kill(iProcess, SIGKILL);
        waitpid(iProcess, nullptr, 0);
    }
    close(iTerminal);
}

void CTerminal::type(const QByteArray& sKeys) const
{
    if (write(iTerminal, sKeys.constData(), std::size_t(sKeys.size())) != sKeys.size()) {
        qWarning("typing failed");
    }
}

void CTerminal::sendSignal(int iSignal) const
{
    kill(iProcess, iSignal);
}

bool CTerminal::waitFor(const QByteArray& sText)
{
    qsizetype nPlace = sScreen.indexOf(sText, nFound);
    while (nPlace < 0 && readMore()) {
        nPlace = sScreen.indexOf(sText, nFound);
    }
    nFound = nPlace < 0 ? nFound : nPlace + sText.size();
    return nPlace >= 0;
}

bool CTerminal::waitForPrompt()
{
    const auto isEditing = [this] {
        termios oModes = {};
        return tcgetattr(iTerminal, &oModes) == 0 && (oModes.c_lflag & ICANON) == 0;
    };
    return waitFor("CRecorder> ") && QTest::qWaitFor(isEditing, iTimeLimit);
}

int CTerminal::exitCode()
{
    while (readMore()) { }
    int iStatus = 0;
    if (!QTest::qWaitFor([&] { return waitpid(iProcess, &iStatus, WNOHANG) != 0; }, iTimeLimit)) {
        return -1;
    }
    iProcess = -1;
    return WIFEXITED(iStatus) ? WEXITSTATUS(iStatus) : -1;
}

bool CTerminal::readMore()
{
    pollfd oWait = {iTerminal, POLLIN, 0};
    char acPart[4096];
    if (poll(&oWait, 1, iTimeLimit) <= 0) {
        return false;
    }
    const ssize_t iCount = read(iTerminal, acPart, sizeof(acPart));
    sScreen.append(acPart, qMax<ssize_t>(iCount, 0));
    return iCount > 0;
}
