// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "exitguard.h"

#include <array>
#include <unistd.h>

// The interface between the compiler's run-time library and the C library; the one way to take a handler
// back.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" int __cxa_atexit(void (*pfHandler)(void*), void* pArgument, void* pOwner);
extern "C" void __cxa_finalize(void* pOwner);
// NOLINTEND(bugprone-reserved-identifier)

namespace exitguard {
namespace {

using StopFunction = void (*)();

StopFunction pfRegistered = nullptr;
std::array<char, 2> aOwners; // their addresses name our two registrations
thread_local bool bTakingBack = false;

void runAtExit(void* /*pArgument*/)
{
    // Taking a handler back runs it; that is no exit.
    if (!bTakingBack)
        pfRegistered();
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
    static std::size_t uNext = 0;
    pfRegistered = stop;
    // First the new one, then the old one away: at no time is there none.
    __cxa_atexit(runAtExit, nullptr, &aOwners[uNext]);
    uNext = 1 - uNext;
    bTakingBack = true;
    __cxa_finalize(&aOwners[uNext]);
    bTakingBack = false;
}

void guardMainThread(void (*stop)())
{
    if (gettid() == getpid())
        oMainThreadGuard.pfStop = stop;
}

} // namespace exitguard
