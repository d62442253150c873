// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <pthread.h>

#include <functional>
#include <mutex>

/// The asking side of the hand-over between the host's threads and the user-interface thread: owner of flag,
/// mutex and condition. See docs/threads.md for the protocol. Knows nothing of Qt.
class CHandover
{
public:
    /// What the answering side does after it has answered.
    enum class After
    {
        GoesOn,
        WaitsForRelease ///< it stays blocked until release() or close()
    };

    CHandover() = default;
    CHandover(const CHandover&) = delete;
    CHandover& operator=(const CHandover&) = delete;

    /// The three objects for the answering side; they live as long as this object.
    int* flag() { return &iThreadFlag; }
    pthread_mutex_t* mutex() { return &oFlagMutex; }
    pthread_cond_t* condition() { return &oCond; }

    /// Clears the flag, calls `post` and waits until the flag is 1. Returns at once when `post` returns false
    /// or the hand-over is closed. While a release is due, a further question waits for it. Calls from
    /// several threads take turns. [any-thread, not the ui-thread]
    void ask(const std::function<bool()>& post, After eAfter = After::GoesOn);

    /// Releases an answering side that waits for it; otherwise nothing. [any-thread]
    void release();

    /// Questions are answered again. [any-thread]
    void open();
    /// No further question is asked and an answering side that waits for its release goes on. [any-thread]
    void close();
    /// As close(), for good; threads that still wait for an answer return without one. [any-thread]
    void abandon();

private:
    void releaseLocked();
    bool beginQuestion();
    void awaitAnswer(After eAfter);

    std::mutex oTurn; ///< held by the one thread whose question is open
    int iThreadFlag = 0;
    pthread_mutex_t oFlagMutex = PTHREAD_MUTEX_INITIALIZER;
    pthread_cond_t oCond = PTHREAD_COND_INITIALIZER;
    bool bReleaseDue = false; ///< the host has seen the answer of a question that WaitsForRelease
    bool bClosed = true;
    bool bAbandoned = false;
};
