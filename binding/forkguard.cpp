// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "forkguard.h"

#include "exitguard.h"

#include <array>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <string_view>

#include <fcntl.h>
#include <pthread.h>
#include <unistd.h>

namespace forkguard {
namespace {

using namespace std::chrono_literals;

constexpr auto LongestDelay = 250ms;
constexpr auto BetweenLooks = 1ms;

std::mutex oMutex; // held over a fork
std::condition_variable oChanged; // what follows, under the mutex
bool bWorking = false;
pid_t iWorker = 0;
int iForksWaiting = 0;

thread_local int iDepth = 0; // of beginWork(), in the user-interface thread
thread_local bool bWorkingHere = false; // what that thread has set

// How often the thread has gone to sleep, if it sleeps; 0 if it runs.
long timesAsleep(pid_t iThread)
{
    constexpr std::string_view Sleeps = "State:\tS";
    constexpr std::string_view Times = "\nvoluntary_ctxt_switches:";
    std::array<char, 64> acPath{};
    std::array<char, 4096> acText{};
    std::snprintf(acPath.data(), acPath.size(), "/proc/self/task/%d/status", int(iThread));
    const int iFile = open(acPath.data(), O_RDONLY | O_CLOEXEC);
    if (iFile < 0)
        return 0;
    [[maybe_unused]] const auto iRead = read(iFile, acText.data(), acText.size() - 1);
    close(iFile);
    const std::string_view oText(acText.data());
    const auto uTimes = oText.find(Times);
    if (oText.find(Sleeps) == oText.npos || uTimes == oText.npos)
        return 0;
    return std::strtol(&oText[uTimes + Times.size()], nullptr, 10);
}

// Until the thread has done what it is at, or sleeps: it may wait for the one that forks.
void waitForWorker(std::unique_lock<std::mutex>& oLock)
{
    const auto end = std::chrono::steady_clock::now() + LongestDelay;
    long lBefore = 0;
    while (!oChanged.wait_for(oLock, BetweenLooks, [] { return !bWorking; })
        && std::chrono::steady_clock::now() < end) {
        const long lNow = timesAsleep(iWorker);
        if (lNow != 0 && lNow == lBefore)
            return;
        lBefore = lNow;
    }
}

void beforeFork()
{
    std::unique_lock<std::mutex> lock(oMutex);
    if (iDepth == 0) {
        iForksWaiting++;
        waitForWorker(lock);
        iForksWaiting--;
        oChanged.notify_all();
    }
    exitguard::beforeFork();
    lock.release(); // until inParent() or inChild()
}

void inParent()
{
    exitguard::afterFork(false);
    oMutex.unlock();
}

void inChild()
{
    bWorking = false;
    iForksWaiting = 0;
    exitguard::afterFork(true);
    oMutex.unlock();
}

void setWorking(bool bNow)
{
    if (bWorkingHere == bNow)
        return;
    bWorkingHere = bNow;
    std::unique_lock<std::mutex> lock(oMutex);
    if (bNow) // one event after another leaves no time for a fork
        oChanged.wait(lock, [] { return iForksWaiting == 0; });
    bWorking = bNow;
    iWorker = gettid();
    oChanged.notify_all();
}

} // namespace

void guardChildren()
{
    [[maybe_unused]] static const int iResult = pthread_atfork(beforeFork, inParent, inChild);
}

void beginWork()
{
    iDepth++;
    setWorking(true);
}

void pauseWork()
{
    setWorking(false);
}

void endWork()
{
    if (--iDepth == 0)
        setWorking(false);
}

} // namespace forkguard
