// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CCallers.h"

#include <thread>

CCallers::~CCallers()
{
    for (const auto& [iThread, pCaller] : oCallers) {
        put(*pCaller, {});
    }
}

void CCallers::start(int iThread, std::function<void()> fnCall)
{
    std::shared_ptr<SCaller>& pCaller = oCallers[iThread];
    if (!pCaller) {
        pCaller = std::make_shared<SCaller>();
        std::thread(serve, pCaller).detach();
    }
    put(*pCaller, std::move(fnCall));
}

void CCallers::put(SCaller& oCaller, std::function<void()> fnCall)
{
    const std::lock_guard oLock(oCaller.oMutex);
    oCaller.fnCalls.push_back(std::move(fnCall));
    oCaller.oChanged.notify_one();
}

void CCallers::serve(const std::shared_ptr<SCaller>& pCaller)
{
    for (;;) {
        std::unique_lock oLock(pCaller->oMutex);
        pCaller->oChanged.wait(oLock, [&] { return !pCaller->fnCalls.empty(); });
        const std::function<void()> fnCall = std::move(pCaller->fnCalls.front());
        pCaller->fnCalls.pop_front();
        oLock.unlock();
        if (!fnCall) {
            return;
        }
        fnCall();
    }
}
