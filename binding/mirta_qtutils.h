// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

// The module's C interface: a descriptor and fifteen functions. Valid C; see docs/abi.md for the contract.
//
// Every function takes the instance handle and an array with one pointer per argument of its prototype: a
// pointer argument arrives as that pointer itself, an int argument as a pointer to the int. Only the
// destructor uses the handle. A call before the construction or after the last destruction does nothing else
// than is said here.

#define QTUTILS_EXPORT __attribute__((visibility("default")))

#ifdef __cplusplus
extern "C" {
#endif

extern QTUTILS_EXPORT const char* CNodeBrowser_def[16];
extern QTUTILS_EXPORT const char* NAMESPACE;
extern QTUTILS_EXPORT const char** CLASSES_qtutils[2];

/* Slots: SOM database name, source database name (both copied). Waits until the window exists, and returns
   its handle; null when MYSQL_HOST, MYSQL_USER or MYSQL_PWD is unset, when there is no display, or when the
   host has a Qt application object of its own. A failed construction counts as a live instance too: undo it
   by the destructor. A further construction returns the same handle. [host-thread] */
QTUTILS_EXPORT void* nodeBrowser_CNodeBrowser(void* pHandle, void** apArguments);
/* Takes one construction back; with the last one the window goes away. Doesn't wait for that. [host-thread]
 */
QTUTILS_EXPORT void nodeBrowser_FREE_CNodeBrowser(void* pHandle, void** apArguments);

/* Slot: node number. Shows the node's documents. [host-thread] */
QTUTILS_EXPORT void nodeBrowser_select(void* pHandle, void** apArguments);
/* Slot: int, gets the number of rows shown. Waits for the answer. [host-thread] */
QTUTILS_EXPORT void nodeBrowser_getNumRows(void* pHandle, void** apArguments);
/* Slot: int array, one element a row: minutes after the first row's date. Waits for the answer, and leaves
   the window blocked until nodeBrowser_setRowColors. [host-thread] */
QTUTILS_EXPORT void nodeBrowser_fillDate(void* pHandle, void** apArguments);
/* Slots: date text "YYYY-MM-DD HH:MM:SS"; int, gets whole minutes since the epoch. Needs no window.
 * [any-thread] */
QTUTILS_EXPORT void nodeBrowser_dateToInt(void* pHandle, void** apArguments);
/* Slot: float array, hue (0 to 359), saturation and value (0 to 255) of every row. It is not copied: it must
   live until the next selection, or until other colours have been set. [host-thread] */
QTUTILS_EXPORT void nodeBrowser_setRowColors(void* pHandle, void** apArguments);
/* Slots: date text as above, not copied: it must live until the next answered call has returned; time frame
   in units of 3660 seconds, null or up to 0 for ten days. [host-thread] */
QTUTILS_EXPORT void nodeBrowser_markRow(void* pHandle, void** apArguments);
/* Slot: int, gets minutes since the epoch. Waits for the answer. [host-thread] */
QTUTILS_EXPORT void nodeBrowser_getFirstDateInFrame(void* pHandle, void** apArguments);
/* Slot: buffer, gets the first row's date text and its terminator: 20 bytes for a DATETIME. Waits for the
   answer. [host-thread] */
QTUTILS_EXPORT void nodeBrowser_getFirstDateInSelection(void* pHandle, void** apArguments);
/* Slots: children (int array, copied), their number, the node, the number of nodes. Kept also without a
   window. The last node's call builds the tree. [host-thread] */
QTUTILS_EXPORT void nodeBrowser_passNodeHierarchy(void* pHandle, void** apArguments);
/* Slot: name of the assignment table (copied). Kept for the construction when there is no window yet.
 * [host-thread] */
QTUTILS_EXPORT void nodeBrowser_setSOMTable(void* pHandle, void** apArguments);
/* Hides table, text and date filter for good. [host-thread] */
QTUTILS_EXPORT void nodeBrowser_hideTable(void* pHandle, void** apArguments);
/* Shows the window where and as large as it was last. [host-thread] */
QTUTILS_EXPORT void nodeBrowser_show(void* pHandle, void** apArguments);

/* One run of the window, from its making to its end; called by the module's own thread, never by the host. */
QTUTILS_EXPORT void* nodeBrowser_thread(void* pUnused);

#ifdef __cplusplus
}
#endif
