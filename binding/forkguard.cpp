// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "forkguard.h"

#include "exitguard.h"

#include <array>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <csignal>
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
constexpr int LooksAsleep = 20; // longer than the thread waits for an answer of the display

// Either the thread that begins work sees the fork, or the fork sees that it works: events must not pay for
// forks.
std::atomic<bool> bWorking = false;
std::atomic<int> iForks = 0; // that wait or are under way
std::atomic<pid_t> iWorker = 0;
std::mutex oMutex; // held over a fork
// What is above, where one of both waits. Never destroyed, because threads outlive static objects.
std::condition_variable& oChanged = *new std::condition_variable;

// Of the user-interface thread.
thread_local int iDepth = 0; // of beginWork()
thread_local bool bWorkingHere = false;
thread_local const pid_t iThisThread = gettid();

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

// Whether the toolkit has started the calling thread: such threads have the signal mask of the user-interface
// thread, which blocks everything. Their children only start programs, and that thread may wait for them.
bool isOfToolkit()
{
    sigset_t oMask;
    pthread_sigmask(SIG_SETMASK, nullptr, &oMask);
    return sigismember(&oMask, SIGSEGV) == 1 && sigismember(&oMask, SIGTERM) == 1;
}

// Until the thread has done what it is at, or sleeps.
void waitForWorker(std::unique_lock<std::mutex>& oLock)
{
    const auto end = std::chrono::steady_clock::now() + LongestDelay;
    long lBefore = 0;
    for (int iAsleep = 0; iAsleep < LooksAsleep && std::chrono::steady_clock::now() < end; iAsleep++) {
        if (oChanged.wait_for(oLock, BetweenLooks, [] { return !bWorking; }))
            return;
        const long lNow = timesAsleep(iWorker);
        if (lNow == 0 || lNow != lBefore)
            iAsleep = 0;
        lBefore = lNow;
    }
}

void beforeFork()
{
    std::unique_lock<std::mutex> lock(oMutex);
    iForks++;
    if (iDepth == 0 && !isOfToolkit())
        waitForWorker(lock);
    exitguard::beforeFork();
    lock.release(); // until inParent() or inChild()
}

void inParent()
{
    exitguard::afterFork(false);
    iForks--;
    if (!exitguard::isChild()) // a child's threads that wait don't exist, and it could wait for them here
        oChanged.notify_all();
    oMutex.unlock();
}

void inChild()
{
    bWorking = false;
    iForks = 0;
    exitguard::afterFork(true);
    oMutex.unlock();
}

void letForksGoOn(bool bWorksAfterwards)
{
    std::unique_lock<std::mutex> lock(oMutex);
    bWorking = false;
    oChanged.notify_all();
    if (!bWorksAfterwards)
        return;
    oChanged.wait(lock, [] { return iForks == 0; });
    bWorking = true;
}

void setWorking(bool bNow)
{
    if (bWorkingHere == bNow)
        return;
    bWorkingHere = bNow;
    bWorking = bNow;
    if (iForks > 0)
        letForksGoOn(bNow);
}

} // namespace

void guardChildren()
{
    [[maybe_unused]] static const int iResult = pthread_atfork(beforeFork, inParent, inChild);
}

void beginWork()
{
    iDepth++;
    iWorker.store(iThisThread, std::memory_order_relaxed);
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
