/* SPDX-FileCopyrightText: The qtutils developers
   SPDX-License-Identifier: MIT */

#include "turn.h"

#include <pthread.h>

static pthread_mutex_t oTurn = PTHREAD_MUTEX_INITIALIZER;
static _Thread_local bool bCallsBack;

bool turn_take(void)
{
    if (bCallsBack)
        return false;
    pthread_mutex_lock(&oTurn);
    return true;
}

void turn_give(void)
{
    pthread_mutex_unlock(&oTurn);
}

void turn_set_calling_back(bool bCallingBack)
{
    bCallsBack = bCallingBack;
}
