// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "exitguard.h"

#include <array>
#include <atomic>
#include <cstdio>
#include <mutex>

#include <pthread.h>
#include <unistd.h>

// The interface between the compiler's run-time library and the C library; the one way to take a handler
// back. The C library hands the exit code to these handlers, too.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" int __cxa_atexit(void (*pfHandler)(void*, int), void* pArgument, void* pOwner);
extern "C" void __cxa_finalize(void* pOwner);
// NOLINTEND(bugprone-reserved-identifier)

namespace exitguard {
namespace {

using StopFunction = void (*)();

// Held over a fork, so that nobody registers a handler meanwhile: its child would wait for the list's lock
// forever.
std::mutex oRegistering;
std::atomic<bool> bChild = false;
std::atomic<StopFunction> pfRegistered = nullptr;
std::array<char, 2> aOwners; // their addresses name our two registrations
thread_local bool bTakingBack = false;

void endChild(int iExitCode)
{
    std::fflush(nullptr);
    _exit(iExitCode);
}

void runAtExit(void* /*pArgument*/, int iExitCode)
{
    // Taking a handler back runs it; that is no exit.
    if (bTakingBack)
        return;
    if (bChild)
        endChild(iExitCode);
    if (const StopFunction stop = pfRegistered)
        stop();
}

void takeBack(std::size_t uOwner)
{
    bTakingBack = true;
    __cxa_finalize(&aOwners[uOwner]);
    bTakingBack = false;
}

// Behind every handler there is now: the last handler registered is the first to run. Under the mutex.
void registerLast()
{
    // The C library puts a new handler behind the last one and leaves the places before it empty, so the list
    // would grow by one with every event, and with it the time to walk it.
    constexpr int MostEmptyPlaces = 256;
    static int iEmptyPlaces = 0;
    static std::size_t uNext = 0;
    if (++iEmptyPlaces == MostEmptyPlaces) {
        // Without a handler at the end, the next one takes the first empty place. This is the one moment when
        // there is none.
        takeBack(1 - uNext);
        iEmptyPlaces = 0;
    }
    __cxa_atexit(runAtExit, nullptr, &aOwners[uNext]);
    uNext = 1 - uNext;
    takeBack(uNext);
}

struct MainThreadGuard
{
    StopFunction pfStop = nullptr;

    MainThreadGuard() = default;
    MainThreadGuard(const MainThreadGuard&) = delete;
    MainThreadGuard& operator=(const MainThreadGuard&) = delete;
    ~MainThreadGuard()
    {
        if (pfStop != nullptr)
            pfStop();
    }
};

thread_local MainThreadGuard oMainThreadGuard;

} // namespace

void renew(void (*stop)())
{
    const std::lock_guard<std::mutex> lock(oRegistering);
    pfRegistered = stop;
    registerLast();
}

void guardMainThread(void (*stop)())
{
    if (gettid() == getpid())
        oMainThreadGuard.pfStop = stop;
}

void beforeFork()
{
    oRegistering.lock();
    registerLast();
}

void afterFork(bool bInChild)
{
    bChild = bInChild || bChild;
    oRegistering.unlock();
}

bool isChild()
{
    return bChild;
}

} // namespace exitguard
