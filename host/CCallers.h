// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>

/// Threads that make calls, one for each thread of a recording. A call may block for ever; the threads are
/// not waited for at the end.
class CCallers
{
public:
    ~CCallers();
    CCallers() = default;
    CCallers(const CCallers&) = delete;
    CCallers& operator=(const CCallers&) = delete;

    /// Has a thread make a call as soon as its calls before are answered. Throws std::system_error.
    void start(int iThread, std::function<void()> fnCall);

private:
    struct SCaller
    {
        std::mutex oMutex;
        std::condition_variable oChanged;
        std::deque<std::function<void()>> fnCalls; ///< an empty one ends the thread
    };

    static void put(SCaller& oCaller, std::function<void()> fnCall);
    static void serve(const std::shared_ptr<SCaller>& pCaller);

    std::map<int, std::shared_ptr<SCaller>> oCallers;
};
