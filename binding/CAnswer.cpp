// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnswer.h"

CAnswer::CAnswer(int* piFlag, pthread_mutex_t* pMutex, pthread_cond_t* pCondition)
    : piThreadFlag(piFlag)
    , pFlagMutex(pMutex)
    , pCond(pCondition)
{
}

void CAnswer::give(const std::function<void()>& write) const
{
    pthread_mutex_lock(pFlagMutex);
    *piThreadFlag = 1;
    write();
    pthread_mutex_unlock(pFlagMutex);
    // Broadcast: several host threads may sleep on the one condition, and only one of them was asked for.
    pthread_cond_broadcast(pCond);
}

void CAnswer::giveAndWait(const std::function<void()>& write) const
{
    give(write);
    pthread_mutex_lock(pFlagMutex);
    while (*piThreadFlag == 1)
        pthread_cond_wait(pCond, pFlagMutex);
    pthread_mutex_unlock(pFlagMutex);
}
