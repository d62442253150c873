// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "binding/CAnswer.h"
#include "binding/CHandover.h"

#include <atomic>
#include <condition_variable>
#include <deque>
#include <functional>
#include <future>
#include <mutex>
#include <thread>

/// A thread in the place of the user interface's: carries out what is posted to it, one by one. Its answer to
/// a number is the number plus one. Abandons the hand-over at its end, so that it can always end.
class CAnsweringThread
{
public:
    CAnsweringThread();
    ~CAnsweringThread();

    /// Asks through the hand-over; 0 if there was no answer. [any-thread]
    int ask(int iQuestion, CHandover::After eAfter = CHandover::After::GoesOn);
    /// Ready as soon as the thread has nothing to do. [any-thread]
    std::future<void> whenFree();
    /// Waits until the thread sleeps, or until such a future is ready.
    void waitUntilAsleepOr(const std::future<void>& oFree) const;

    CHandover oHandover;
    /// Called in the asking thread right before and right after it posts.
    std::function<void()> beforePosting = [] {};
    std::function<void()> afterPosting = [] {};

private:
    void post(std::function<void()> job);
    void run();

    const CAnswer oAnswer{oHandover.flag(), oHandover.mutex(), oHandover.condition()};
    std::mutex oMutex;
    std::condition_variable oChanged;
    std::deque<std::function<void()>> oJobs;
    bool bEnd = false;
    std::atomic<int> iThread = 0; ///< the kernel's number, 0 until the thread runs
    std::thread oThread;
};

/// A thread whose sleeping can be seen from outside.
class CSleeper
{
public:
    explicit CSleeper(std::function<void()> work);
    ~CSleeper() { join(); }

    bool isDone() const { return bDone; }
    void waitUntilAsleepOrDone() const;
    void join();

private:
    std::atomic<int> iThread = 0; ///< the kernel's number, 0 until the thread runs
    std::atomic<bool> bDone = false;
    std::thread oThread;
};
