// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CSignals.h"

#include <atomic>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <ctime>
#include <fcntl.h>
#include <poll.h>
#include <system_error>
#include <unistd.h>

namespace {

// A handler can reach globals only.
std::atomic<int> giPending = 0;
std::atomic<std::int64_t> giNotedAt = 0; // milliseconds of the monotonic clock
int giWakePipe[2]; // holds a byte while a signal is noted, so that a wait returns

constexpr std::int64_t iSameCause = 500; // milliseconds

// A handler may call it.
std::int64_t now()
{
    timespec oTime = {};
    clock_gettime(CLOCK_MONOTONIC, &oTime);
    return std::int64_t(oTime.tv_sec) * 1000 + oTime.tv_nsec / 1'000'000;
}

void noteSignal(int iSignal)
{
    int iNone = 0;
    const std::int64_t iNow = now();
    if (!giPending.compare_exchange_strong(iNone, iSignal)) {
        if (iSignal != SIGHUP && iNow - giNotedAt >= iSameCause) {
            _exit(128 + iSignal);
        }
        return;
    }
    giNotedAt = iNow;
    const int iError = errno;
    if (write(giWakePipe[1], "", 1) < 0) {
        // Only a full pipe can fail, and that one wakes the wait as well.
    }
    errno = iError;
}

void handle(int iSignal)
{
    struct sigaction oOld = {};
    sigaction(iSignal, nullptr, &oOld);
    if (oOld.sa_handler == SIG_IGN) {
        return;
    }
    struct sigaction oNew = {};
    oNew.sa_handler = noteSignal;
    oNew.sa_flags = SA_RESTART; // the module's own system calls go on
    sigaction(iSignal, &oNew, nullptr);
}

} // namespace

CSignals::CSignals()
{
    if (pipe2(giWakePipe, O_NONBLOCK | O_CLOEXEC) < 0) {
        throw std::system_error(errno, std::generic_category(), "pipe");
    }
    for (const int iSignal : {SIGTERM, SIGHUP, SIGINT}) {
        handle(iSignal);
    }
}

int CSignals::pending() const
{
    return giPending;
}

bool CSignals::takeInterrupt()
{
    if (giPending != SIGINT) {
        return false;
    }
    char cByte = 0;
    while (read(giWakePipe[0], &cByte, 1) > 0) { }
    giPending = 0;
    return true;
}

bool CSignals::waitReadable(int iFile) const
{
    pollfd aoFiles[] = {{iFile, POLLIN, 0}, {giWakePipe[0], POLLIN, 0}};
    while (!pending() && poll(aoFiles, 2, -1) < 0 && errno == EINTR) { }
    return !pending();
}

void CSignals::sleep(double dSeconds) const
{
    using Clock = std::chrono::steady_clock;
    const auto oEnd = Clock::now() + std::chrono::duration<double>(dSeconds);
    pollfd oWake = {giWakePipe[0], POLLIN, 0};
    while (!pending() && Clock::now() < oEnd) {
        const auto oLeft = std::chrono::ceil<std::chrono::milliseconds>(oEnd - Clock::now());
        poll(&oWake, 1, int(std::min<long>(oLeft.count(), 60'000)));
    }
}
