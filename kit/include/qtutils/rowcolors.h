/* SPDX-FileCopyrightText: The qtutils developers
   SPDX-License-Identifier: MIT */

#pragma once

/* Dates and colours of the rows. Part of qtutils/nodebrowser.h, whose rules for threads, lifetimes and errors
   hold here. */

#include <limits.h>

#include "errors.h"

#ifdef __cplusplus
extern "C" {
#endif

/* An open browser; see qtutils_open. */
typedef struct qtutils_browser qtutils_browser;

/* Stands for the date of a row without one. */
#define QTUTILS_NO_DATE INT_MIN

/* Nodes with more documents can't be coloured. */
#define QTUTILS_MOST_ROWS 67108864

/* Gives each row a colour.
   piMinutes: for each row the minutes after the first row's date, or QTUTILS_NO_DATE. Whoever sorted the
   table by another column gets negative ones, too.
   pfColors: three floats a row, to be filled: hue (0 to 359), saturation and value (0 to 255 each). They are
   white (0, 0, 255) at first.
   pUser: what qtutils_color_rows got.
   Both arrays live during the call only. Returns 0, or anything else when it failed.
   Runs in the thread of qtutils_color_rows. The window is blocked meanwhile, so be quick. Don't leave by an
   exception or longjmp, don't wait for another thread that uses the kit, and call nothing of the kit but
   qtutils_date_to_int: the other functions return QTUTILS_ERROR_BUSY. */
typedef int qtutils_color_callback(const int* piMinutes, int iNumRows, float* pfColors, void* pUser);

/* Asks the rows' dates, has the callback turn them into colours, and colours the rows. A cell shows its
   colour when it is painted next; so call this before qtutils_show, or use qtutils_select_colored. The
   colours hold until the table is filled again, by the host or the user. When the callback fails, all rows
   become white. When the user chooses another node in between, the callback is called again for its rows;
   when that happens three times, the code is QTUTILS_ERROR_ROWS and the colours are the last callback's.
   Waits. ARGUMENT, MEMORY, ROWS, CALLBACK, NO_ANSWER, BUSY. */
QTUTILS_KIT_EXPORT int qtutils_color_rows(
    qtutils_browser* pBrowser, qtutils_color_callback* pfCallback, void* pUser);

/* Shows the documents of a node, counted from 0, in colours from the first sight on; colours as above. Fills
   the table twice: once for the dates, and once for the colours to be there when it is painted; more often
   when the machine is busy and rows may have been painted in between. After ROWS or CALLBACK the node is
   shown all the same. Waits. ARGUMENT, MEMORY, ROWS, CALLBACK, NO_ANSWER, BUSY. */
QTUTILS_KIT_EXPORT int qtutils_select_colored(
    qtutils_browser* pBrowser, int iNode, qtutils_color_callback* pfCallback, void* pUser);

/* Colours the rows without asking their dates; cells show it when they are painted next.
   pfColors: three floats a row as above; copied. iNumRows: the number of rows shown. When it isn't, or the
   user chooses another node meanwhile, the code is QTUTILS_ERROR_ROWS. Waits. ARGUMENT, MEMORY, ROWS,
   NO_ANSWER, BUSY. */
QTUTILS_KIT_EXPORT int qtutils_set_row_colors(qtutils_browser* pBrowser, const float* pfColors, int iNumRows);

#ifdef __cplusplus
}
#endif
