// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CTraceFile.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <pthread.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// A file beyond the limit of its size, or a pipe that nobody reads, sends a signal that would end the host.
class CNoSignals
{
public:
    CNoSignals()
    {
        sigemptyset(&oOurs);
        sigaddset(&oOurs, SIGXFSZ);
        sigaddset(&oOurs, SIGPIPE);
        sigpending(&oPending);
        pthread_sigmask(SIG_BLOCK, &oOurs, &oBefore);
    }
    CNoSignals(const CNoSignals&) = delete;
    CNoSignals& operator=(const CNoSignals&) = delete;
    ~CNoSignals() { pthread_sigmask(SIG_SETMASK, &oBefore, nullptr); }

    /// Takes back what the failed write has sent, and nothing that the host waits for itself.
    void takeBack()
    {
        for (const int iSignal : {SIGXFSZ, SIGPIPE})
            if (sigismember(&oPending, iSignal) != 0)
                sigdelset(&oOurs, iSignal);
        const timespec oAtOnce{};
        sigtimedwait(&oOurs, nullptr, &oAtOnce);
    }

private:
    sigset_t oOurs{};
    sigset_t oPending{};
    sigset_t oBefore{};
};

// False, with errno, when not all could be written.
bool writeAll(int iFile, const std::string& sText)
{
    std::size_t nDone = 0;
    while (nDone < sText.size()) {
        const ssize_t iPart = write(iFile, sText.data() + nDone, sText.size() - nDone);
        if (iPart < 0 && errno != EINTR)
            return false;
        nDone += iPart < 0 ? 0 : std::size_t(iPart);
    }
    return true;
}

// Not one of the three standard channels, which a host may have closed.
int openBehindStreams(const char* pcPath)
{
    constexpr int Flags = O_WRONLY | O_CREAT | O_TRUNC | O_APPEND | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
    const int iFirst = open(pcPath, Flags, 0600); // names and dates are the user's own
    if (iFirst < 0 || iFirst > STDERR_FILENO)
        return iFirst;
    const int iFile = fcntl(iFirst, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    const int iError = errno;
    close(iFirst);
    errno = iError;
    return iFile;
}

} // namespace

CTraceFile::CTraceFile(const char* pcPath)
    : iProcess(getpid())
{
    if (pcPath == nullptr || *pcPath == '\0') {
        giveUp("QTUTILS_TRACE_FILE names no file");
        return;
    }
    iFile = openBehindStreams(pcPath);
    struct stat oStatus = {};
    if (iFile < 0 || fstat(iFile, &oStatus) != 0) {
        giveUp((std::string(pcPath) + ": " + std::strerror(errno)).c_str());
        return;
    }
    oDevice = oStatus.st_dev;
    oNumber = oStatus.st_ino;
    eState = EState::eOpen;
}

bool CTraceFile::isOpen() const
{
    return eState == EState::eOpen && getpid() == iProcess;
}

bool CTraceFile::isStillOurs() const
{
    struct stat oStatus = {};
    return fstat(iFile, &oStatus) == 0 && oStatus.st_dev == oDevice && oStatus.st_ino == oNumber;
}

void CTraceFile::write(const std::string& sLine)
{
    if (!isOpen())
        return;
    if (!isStillOurs())
        return giveUp("the host has closed the file");
    CNoSignals oNoSignals;
    if (!writeAll(iFile, sLine + '\n')) {
        const int iError = errno;
        oNoSignals.takeBack();
        giveUp(std::strerror(iError));
    }
}

void CTraceFile::giveUp(const char* pcCause)
{
    if (eState.exchange(EState::eGivenUp) != EState::eGivenUp)
        std::fprintf(stderr, "qtutils-trace: calls are not recorded: %s\n", pcCause);
}
