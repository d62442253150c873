/* SPDX-FileCopyrightText: The qtutils developers
   SPDX-License-Identifier: MIT */

#pragma once

#include <stdbool.h>

/* Calls of all threads take turns. */

/* Takes the turn, and waits for it. Returns false at once in a thread that runs a colour callback: it has the
   turn, and the window waits for the colours. */
bool turn_take(void);
void turn_give(void);

/* This thread, which has the turn, begins or ends a colour callback. */
void turn_set_calling_back(bool bCallingBack);
