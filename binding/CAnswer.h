// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <pthread.h>

#include <functional>

/// The answering side of the hand-over between the host's threads and the user-interface thread.
///
/// Flag, mutex and condition belong to the host side (CHandover) and outlive this object. The flag is 0 while
/// a question is open and 1 once it is answered.
class CAnswer
{
public:
    CAnswer(int* piFlag, pthread_mutex_t* pMutex, pthread_cond_t* pCondition);

    /// Calls `write` with the mutex held, sets the flag to 1 and wakes the host. [ui-thread]
    void give(const std::function<void()>& write) const;

    /// As give(), then blocks until the flag is no longer 1. [ui-thread]
    void giveAndWait(const std::function<void()>& write) const;

private:
    int* piThreadFlag;
    pthread_mutex_t* pFlagMutex;
    pthread_cond_t* pCond;
};
