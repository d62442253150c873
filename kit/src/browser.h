/* SPDX-FileCopyrightText: The qtutils developers
   SPDX-License-Identifier: MIT */

#pragma once

#include "entrypoints.h"

#include "qtutils/nodebrowser.h"

#include <stdbool.h>

struct qtutils_browser
{
    struct module oModule;
    void* pHandle;
};

/* Begins a call: QTUTILS_OK and the turn taken, ARGUMENT for what isn't right, or BUSY. */
int browser_enter(const qtutils_browser* pBrowser, bool bArguments);

/* The following are called with the turn taken. */

/* Calls the module. The slots are those of the prototype: pointers themselves, an int as a pointer to it. */
void browser_call(qtutils_browser* pBrowser, int iEntry, void** apSlots);
/* Has the module answer with an int, and frees what was kept for commands before. An answer of iNone is none:
   QTUTILS_ERROR_NO_ANSWER, and the result is untouched. */
int browser_ask(qtutils_browser* pBrowser, int iEntry, int iNone, int* piAnswer);
int browser_ask_num_rows(qtutils_browser* pBrowser, int* piNumRows);
