/* SPDX-FileCopyrightText: The qtutils developers
   SPDX-License-Identifier: MIT */

#pragma once

/* The browser window for host programs in C: one typed function for each of the module's calls. Link with
   -lqtutils-nodebrowser. Valid C11 and C++11.

   Threads: every function may be called from any thread of the host, but not from a signal handler and not in
   a child made by fork. Calls take turns: while one waits for the window, the others wait for it. A function
   with "waits" returns when the window has carried out all calls before it. The others return at once.
   Lifetimes: whatever a function gets is copied or used up before it returns. What the module itself needs
   longer (row colours, the date of a mark), the kit keeps for it.
   Errors: functions return QTUTILS_OK or another code of qtutils/errors.h. After an error nothing has changed
   and no result is written, except where it says so.

   Texts are UTF-8 and end with a null byte. */

#include <stddef.h>

#include "errors.h"
#include "rowcolors.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Loads the module and makes the window, hidden at first. There is one window in a process: opening again
   gives a further object of the same one, whatever databases it names.
   pcModule: the module's file. Null: the one that the environment variable QTUTILS_MODULE names, or else the
   one that is installed with this library, or else "qtutils.so" as dlopen finds it.
   pcSOMDatabase, pcSourceDatabase: names of the map's and the documents' databases on the server that
   MYSQL_HOST, MYSQL_USER and MYSQL_PWD lead to.
   ppBrowser: gets the object, which the caller gives to qtutils_close; null after an error.
   Sets the variable LANG of the process to "de_DE", so call it before other threads read the environment.
   Waits. ARGUMENT, MEMORY, MODULE, ENVIRONMENT, WINDOW, BUSY. */
QTUTILS_KIT_EXPORT int qtutils_open(const char* pcModule, const char* pcSOMDatabase,
    const char* pcSourceDatabase, qtutils_browser** ppBrowser);

/* Frees the object, which no other thread may be using; null is fine. The window goes away with the last
   object. May return before it has. ARGUMENT never, BUSY. */
QTUTILS_KIT_EXPORT int qtutils_close(qtutils_browser* pBrowser);

/* Names the table that assigns documents to nodes. It takes effect with the next selection. The module prints
   a line to standard error. ARGUMENT, BUSY. */
QTUTILS_KIT_EXPORT int qtutils_set_som_table(qtutils_browser* pBrowser, const char* pcTable);

/* Hands over the children of a node: call it for the nodes 0 to iNumNodes - 1 in this order. The last call
   builds the tree. Node 0 is the root.
   piChildren: iNumChildren numbers from 0 to iNumNodes - 1; may be null when there are none.
   ARGUMENT (also for more than 10,000,000 nodes), BUSY. */
QTUTILS_KIT_EXPORT int qtutils_pass_node_hierarchy(
    qtutils_browser* pBrowser, const int* piChildren, int iNumChildren, int iNode, int iNumNodes);

/* Shows the window, and raises it. ARGUMENT, BUSY. */
QTUTILS_KIT_EXPORT int qtutils_show(qtutils_browser* pBrowser);

/* Hides table, text and date filter; only the tree is left, for good. ARGUMENT, BUSY. */
QTUTILS_KIT_EXPORT int qtutils_hide_table(qtutils_browser* pBrowser);

/* Shows the documents of a node, counted from 0. Row colours are gone. ARGUMENT, BUSY. */
QTUTILS_KIT_EXPORT int qtutils_select(qtutils_browser* pBrowser, int iNode);

/* The number of rows shown. The user may change it at any time. Waits. ARGUMENT, NO_ANSWER, BUSY. */
QTUTILS_KIT_EXPORT int qtutils_get_num_rows(qtutils_browser* pBrowser, int* piNumRows);

/* Selects the first row in display order that is later than a date minus the time frame, and scrolls to it.
   pcDate: "YYYY-MM-DD HH:MM:SS", local time. iTimeFrame: in units of 3660 seconds; 0 or less for ten days.
   Doesn't wait, but for every 64th call without one between that waits. ARGUMENT, DATE, MEMORY, NO_ANSWER,
   BUSY. */
QTUTILS_KIT_EXPORT int qtutils_mark_row(qtutils_browser* pBrowser, const char* pcDate, int iTimeFrame);

/* The date of the row that the last mark selected, in minutes since the epoch; of the last row when none was
   late enough; 0 before any mark. Waits. ARGUMENT, NO_ANSWER, BUSY. */
QTUTILS_KIT_EXPORT int qtutils_get_first_date_in_frame(qtutils_browser* pBrowser, int* piMinutes);

/* The first row's date as the table has it: "YYYY-MM-DDTHH:MM:SS" for a DATETIME; empty for a NULL.
   uSize: bytes of the buffer; 20 are enough for a DATETIME.
   Waits. ARGUMENT, MEMORY, NO_ROWS, SPACE, NO_ANSWER, BUSY. */
QTUTILS_KIT_EXPORT int qtutils_get_first_date_in_selection(
    qtutils_browser* pBrowser, char* pcDate, size_t uSize);

/* Converts "YYYY-MM-DD HH:MM:SS", local time, into whole minutes since the epoch, halves upward. May be
   called by a colour callback. ARGUMENT, DATE. */
QTUTILS_KIT_EXPORT int qtutils_date_to_int(qtutils_browser* pBrowser, const char* pcDate, int* piMinutes);

#ifdef __cplusplus
}
#endif
