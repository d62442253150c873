/* SPDX-FileCopyrightText: The qtutils developers
   SPDX-License-Identifier: MIT */

#include "qtutils/rowcolors.h"

#include "browser.h"
#include "kept.h"
#include "turn.h"

#include <string.h>
#include <time.h>

enum
{
    MostRounds = 3,
    Components = 3 /* of a colour */
};

/* In nanoseconds. A selection takes longer than the first; two calls of the module take a tenth of it. */
static const long long ShortTime = 100000;
static const long long LongestTrying = 200000000;

static const float afWhite[Components] = {0, 0, 255};

/* The colours that the user's next node might need before the module has them for it: the module reads three
   floats for each row that it shows, however many were meant. */
static struct kept_block* new_colors(void)
{
    return kept_new((size_t)QTUTILS_MOST_ROWS * Components * sizeof(float));
}

/* Likewise the module writes a date for each row that it shows. */
static struct kept_block* new_dates(int iNumRows)
{
    struct kept_block* pDates = kept_new((size_t)QTUTILS_MOST_ROWS * sizeof(int));
    for (int i = 0; pDates != NULL && i < iNumRows; i++)
        ((int*)kept_bytes(pDates))[i] = QTUTILS_NO_DATE;
    return pDates;
}

static void make_white(float* pfColors, int iNumRows)
{
    for (int i = 0; i < iNumRows; i++)
        memcpy(pfColors + (size_t)Components * (size_t)i, afWhite, sizeof afWhite);
}

/* The number of rows must be as before. */
static int check_rows(qtutils_browser* pBrowser, int iNumRows)
{
    int iNow = iNumRows;
    const int iError = browser_ask_num_rows(pBrowser, &iNow);
    return iError == QTUTILS_OK && iNow != iNumRows ? QTUTILS_ERROR_ROWS : iError;
}

static int set_colors(qtutils_browser* pBrowser, struct kept_block* pColors, int iNumRows)
{
    browser_call(pBrowser, SetRowColors, (void*[]){kept_bytes(pColors)});
    kept_set_colors(pColors);
    return check_rows(pBrowser, iNumRows);
}

static int call_back(
    qtutils_color_callback* pfCallback, const int* piMinutes, int iNumRows, float* pfColors, void* pUser)
{
    make_white(pfColors, iNumRows);
    turn_set_calling_back(true);
    const int iFailed = pfCallback(piMinutes, iNumRows, pfColors, pUser);
    turn_set_calling_back(false);
    if (iFailed == 0)
        return QTUTILS_OK;
    make_white(pfColors, iNumRows);
    return QTUTILS_ERROR_CALLBACK;
}

/* Nothing may come between fillDate and setRowColors that waits: the window is blocked. */
static int dates_to_colors(qtutils_browser* pBrowser, qtutils_color_callback* pfCallback, void* pUser,
    struct kept_block* pDates, struct kept_block* pColors, int iNumRows)
{
    browser_call(pBrowser, FillDate, (void*[]){kept_bytes(pDates)});
    const int iFailed = call_back(pfCallback, kept_bytes(pDates), iNumRows, kept_bytes(pColors), pUser);
    const int iError = set_colors(pBrowser, pColors, iNumRows);
    return iFailed != QTUTILS_OK ? iFailed : iError;
}

static int color_round(qtutils_browser* pBrowser, qtutils_color_callback* pfCallback, void* pUser)
{
    int iNumRows = 0;
    int iError = browser_ask_num_rows(pBrowser, &iNumRows);
    if (iError != QTUTILS_OK || iNumRows > QTUTILS_MOST_ROWS)
        return iError != QTUTILS_OK ? iError : QTUTILS_ERROR_ROWS;
    struct kept_block* pDates = new_dates(iNumRows);
    struct kept_block* pColors = new_colors();
    if (pDates == NULL || pColors == NULL) {
        kept_free(pColors);
        iError = QTUTILS_ERROR_MEMORY;
    } else {
        iError = dates_to_colors(pBrowser, pfCallback, pUser, pDates, pColors, iNumRows);
    }
    kept_free(pDates);
    return iError;
}

static long long nanoseconds(void)
{
    struct timespec oNow;
    clock_gettime(CLOCK_MONOTONIC, &oNow);
    return oNow.tv_sec * 1000000000LL + oNow.tv_nsec;
}

/* A select and its colours without a question between: the window handles both before it paints, unless this
   thread is held up between them. Then rows may be painted without colours, and stay so. Returns whether
   there was no time for that. */
static bool select_with_kept_colors(qtutils_browser* pBrowser, int iNode)
{
    const long long llBegin = nanoseconds();
    browser_call(pBrowser, Select, (void*[]){&iNode});
    browser_call(pBrowser, SetRowColors, (void*[]){kept_bytes(kept_colors())});
    return nanoseconds() - llBegin < ShortTime;
}

static int select_round(qtutils_browser* pBrowser, int iNode, qtutils_color_callback* pfCallback, void* pUser)
{
    int iNumRows = 0;
    browser_call(pBrowser, Select, (void*[]){&iNode});
    int iError = color_round(pBrowser, pfCallback, pUser);
    if (iError == QTUTILS_OK)
        iError = browser_ask_num_rows(pBrowser, &iNumRows);
    if (iError != QTUTILS_OK)
        return iError;
    bool bDone = false;
    const long long llEnd = nanoseconds() + LongestTrying;
    do {
        bDone = select_with_kept_colors(pBrowser, iNode);
        iError = check_rows(pBrowser, iNumRows);
    } while (!bDone && iError == QTUTILS_OK && nanoseconds() < llEnd);
    return iError;
}

int qtutils_select_colored(
    qtutils_browser* pBrowser, int iNode, qtutils_color_callback* pfCallback, void* pUser)
{
    int iError = browser_enter(pBrowser, iNode >= 0 && pfCallback != NULL);
    if (iError != QTUTILS_OK)
        return iError;
    iError = QTUTILS_ERROR_ROWS;
    for (int i = 0; i < MostRounds && iError == QTUTILS_ERROR_ROWS; i++)
        iError = select_round(pBrowser, iNode, pfCallback, pUser);
    turn_give();
    return iError;
}

int qtutils_color_rows(qtutils_browser* pBrowser, qtutils_color_callback* pfCallback, void* pUser)
{
    int iError = browser_enter(pBrowser, pfCallback != NULL);
    if (iError != QTUTILS_OK)
        return iError;
    iError = QTUTILS_ERROR_ROWS;
    for (int i = 0; i < MostRounds && iError == QTUTILS_ERROR_ROWS; i++)
        iError = color_round(pBrowser, pfCallback, pUser);
    turn_give();
    return iError;
}

static int copy_colors(qtutils_browser* pBrowser, const float* pfColors, int iNumRows)
{
    int iShown = 0;
    const int iError = browser_ask_num_rows(pBrowser, &iShown);
    if (iError != QTUTILS_OK || iShown != iNumRows || iShown > QTUTILS_MOST_ROWS)
        return iError != QTUTILS_OK ? iError : QTUTILS_ERROR_ROWS;
    struct kept_block* pColors = new_colors();
    if (pColors == NULL)
        return QTUTILS_ERROR_MEMORY;
    memcpy(kept_bytes(pColors), pfColors, (size_t)iNumRows * Components * sizeof(float));
    return set_colors(pBrowser, pColors, iNumRows);
}

int qtutils_set_row_colors(qtutils_browser* pBrowser, const float* pfColors, int iNumRows)
{
    int iError = browser_enter(pBrowser, pfColors != NULL && iNumRows >= 0);
    if (iError != QTUTILS_OK)
        return iError;
    iError = copy_colors(pBrowser, pfColors, iNumRows);
    turn_give();
    return iError;
}
