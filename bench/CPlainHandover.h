// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

/// The least that lets a thread with a poll loop answer another one: a mutex, a condition and an eventfd.
class CPlainHandover
{
public:
    /// Answers questions in a thread of its own, by a function from int to int.
    explicit CPlainHandover(std::function<int(int)> answerer);
    ~CPlainHandover();
    CPlainHandover(const CPlainHandover&) = delete;
    CPlainHandover& operator=(const CPlainHandover&) = delete;

    /// Waits for the answer.
    int ask(int iNewQuestion);

private:
    void run();
    void wake() const;

    std::function<int(int)> answer;
    int iEvents;
    std::mutex oMutex;
    std::condition_variable oAnswered;
    bool bAnswered = true;
    bool bEnd = false;
    int iQuestion = 0;
    int iAnswer = 0;
    std::thread oThread;
};
