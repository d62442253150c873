// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CHandover.h"

namespace {

class CLock
{
public:
    explicit CLock(pthread_mutex_t& oMutex)
        : pMutex(&oMutex)
    {
        pthread_mutex_lock(pMutex);
    }
    ~CLock() { pthread_mutex_unlock(pMutex); }
    CLock(const CLock&) = delete;
    CLock& operator=(const CLock&) = delete;

private:
    pthread_mutex_t* pMutex;
};

} // namespace

void CHandover::ask(const std::function<bool()>& post, After eAfter)
{
    const std::lock_guard<std::mutex> turn(oTurn);
    if (beginQuestion() && post())
        awaitAnswer(eAfter);
}

bool CHandover::beginQuestion()
{
    const CLock lock(oFlagMutex);
    // Deliberate: a question between fillDate and setRowColors waits for the latter, for ever if need be.
    // Test: tst_handover, aQuestionWaitsWhileAReleaseIsDue.
    while (bReleaseDue && !bClosed)
        pthread_cond_wait(&oCond, &oFlagMutex);
    iThreadFlag = 0;
    return !bClosed;
}

void CHandover::awaitAnswer(After eAfter)
{
    const CLock lock(oFlagMutex);
    while (iThreadFlag == 0 && !bAbandoned)
        pthread_cond_wait(&oCond, &oFlagMutex);
    if (eAfter == After::GoesOn)
        return;
    bReleaseDue = true;
    if (bClosed)
        releaseLocked();
}

// Only a release that is due may clear the flag: cleared earlier, it would take the answer away from a thread
// that has not woken up yet.
void CHandover::releaseLocked()
{
    if (!bReleaseDue)
        return;
    bReleaseDue = false;
    iThreadFlag = 0;
    pthread_cond_broadcast(&oCond);
}

void CHandover::release()
{
    const CLock lock(oFlagMutex);
    releaseLocked();
}

void CHandover::open()
{
    const CLock lock(oFlagMutex);
    bClosed = bAbandoned;
}

void CHandover::close()
{
    const CLock lock(oFlagMutex);
    bClosed = true;
    releaseLocked();
    pthread_cond_broadcast(&oCond);
}

void CHandover::abandon()
{
    const CLock lock(oFlagMutex);
    bClosed = true;
    bAbandoned = true;
    releaseLocked();
    pthread_cond_broadcast(&oCond);
}
