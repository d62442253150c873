// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnsweringThread.h"

#include "tests/support/threadstate.h"

#include <memory>

#include <unistd.h>

CAnsweringThread::CAnsweringThread()
    : oThread([this] { run(); })
{
}

CAnsweringThread::~CAnsweringThread()
{
    oHandover.abandon();
    post([this] { bEnd = true; });
    oThread.join();
}

void CAnsweringThread::post(std::function<void()> job)
{
    const std::lock_guard<std::mutex> lock(oMutex);
    oJobs.push_back(std::move(job));
    oChanged.notify_one();
}

void CAnsweringThread::run()
{
    iThread = gettid();
    while (!bEnd) {
        std::unique_lock<std::mutex> lock(oMutex);
        oChanged.wait(lock, [this] { return !oJobs.empty(); });
        const auto job = std::move(oJobs.front());
        oJobs.pop_front();
        lock.unlock();
        job();
    }
}

int CAnsweringThread::ask(int iQuestion, CHandover::After eAfter)
{
    int iResult = 0;
    const auto write = [iQuestion, &iResult] { iResult = iQuestion + 1; };
    const auto answer = [this, eAfter, write] {
        if (eAfter == CHandover::After::GoesOn)
            oAnswer.give(write);
        else
            oAnswer.giveAndWait(write);
    };
    oHandover.ask(
        [&] {
            beforePosting();
            post(answer);
            afterPosting();
            return true;
        },
        eAfter);
    return iResult;
}

std::future<void> CAnsweringThread::whenFree()
{
    auto pFree = std::make_shared<std::promise<void>>();
    post([pFree] { pFree->set_value(); });
    return pFree->get_future();
}

void CAnsweringThread::waitUntilAsleepOr(const std::future<void>& oFree) const
{
    waitUntilAsleep(
        iThread, [&] { return oFree.wait_for(std::chrono::seconds(0)) == std::future_status::ready; });
}

CSleeper::CSleeper(std::function<void()> work)
    : oThread([this, work] {
        iThread = gettid();
        work();
        bDone = true;
    })
{
}

void CSleeper::waitUntilAsleepOrDone() const
{
    while (!bDone && iThread == 0)
        std::this_thread::yield();
    waitUntilAsleep(iThread, [this] { return isDone(); });
}

void CSleeper::join()
{
    if (oThread.joinable())
        oThread.join();
}
