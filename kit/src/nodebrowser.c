/* SPDX-FileCopyrightText: The qtutils developers
   SPDX-License-Identifier: MIT */

#include "browser.h"
#include "kept.h"
#include "turn.h"

#include <limits.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>

enum
{
    MostNodes = 10000000, /* the module takes no more */
    MostRetired = 64
};

/* The largest packet of the database server: no field of a row is longer. */
static const size_t LongestField = (size_t)1 << 30;

int browser_enter(const qtutils_browser* pBrowser, bool bArguments)
{
    if (pBrowser == NULL || !bArguments)
        return QTUTILS_ERROR_ARGUMENT;
    return turn_take() ? QTUTILS_OK : QTUTILS_ERROR_BUSY;
}

void browser_call(qtutils_browser* pBrowser, int iEntry, void** apSlots)
{
    pBrowser->oModule.apfCalls[iEntry](pBrowser->pHandle, apSlots);
}

int browser_ask(qtutils_browser* pBrowser, int iEntry, int iNone, int* piAnswer)
{
    int iAnswer = iNone;
    browser_call(pBrowser, iEntry, (void*[]){&iAnswer});
    if (iAnswer == iNone)
        return QTUTILS_ERROR_NO_ANSWER;
    kept_free_retired();
    *piAnswer = iAnswer;
    return QTUTILS_OK;
}

int browser_ask_num_rows(qtutils_browser* pBrowser, int* piNumRows)
{
    return browser_ask(pBrowser, GetNumRows, -1, piNumRows);
}

/* A call with nothing to wait for. */
static int call(qtutils_browser* pBrowser, bool bArguments, int iEntry, void** apSlots)
{
    const int iError = browser_enter(pBrowser, bArguments);
    if (iError != QTUTILS_OK)
        return iError;
    browser_call(pBrowser, iEntry, apSlots);
    turn_give();
    return QTUTILS_OK;
}

static int ask(qtutils_browser* pBrowser, int iEntry, int iNone, int* piAnswer)
{
    int iError = browser_enter(pBrowser, piAnswer != NULL);
    if (iError != QTUTILS_OK)
        return iError;
    iError = browser_ask(pBrowser, iEntry, iNone, piAnswer);
    turn_give();
    return iError;
}

static bool is_date(const char* pcDate)
{
    struct tm oDate;
    const char* pcEnd = strptime(pcDate, "%Y-%m-%d %H:%M:%S", &oDate);
    return pcEnd != NULL && *pcEnd == '\0';
}

/* A failed construction leaves no reason, so the module's conditions are looked at again. */
static int window_error(void)
{
    static const char* const apcVariables[] = {"MYSQL_HOST", "MYSQL_USER", "MYSQL_PWD"};
    for (int i = 0; i < 3; i++)
        if (getenv(apcVariables[i]) == NULL) {
            detail_set("%s is unset", apcVariables[i]);
            return QTUTILS_ERROR_ENVIRONMENT;
        }
    return QTUTILS_ERROR_WINDOW;
}

/* A failed construction counts, so it is taken back. An answered one is a later call than all before. */
static int construct(qtutils_browser* pBrowser, const char* pcSOMDatabase, const char* pcSourceDatabase)
{
    void* apSlots[] = {(void*)pcSOMDatabase, (void*)pcSourceDatabase};
    pBrowser->pHandle = pBrowser->oModule.pfConstruct(NULL, apSlots);
    if (pBrowser->pHandle != NULL)
        return QTUTILS_OK;
    const int iError = window_error();
    browser_call(pBrowser, Free, NULL);
    module_unload(&pBrowser->oModule);
    return iError;
}

static int load_and_construct(
    qtutils_browser* pBrowser, const char* pcModule, const char* pcSOMDatabase, const char* pcSourceDatabase)
{
    int iError = pBrowser == NULL ? QTUTILS_ERROR_MEMORY : module_load(pcModule, &pBrowser->oModule);
    if (iError == QTUTILS_OK)
        iError = construct(pBrowser, pcSOMDatabase, pcSourceDatabase);
    return iError;
}

int qtutils_open(const char* pcModule, const char* pcSOMDatabase, const char* pcSourceDatabase,
    qtutils_browser** ppBrowser)
{
    detail_set("%s", "");
    if (ppBrowser == NULL)
        return QTUTILS_ERROR_ARGUMENT;
    *ppBrowser = NULL;
    if (pcSOMDatabase == NULL || pcSourceDatabase == NULL)
        return QTUTILS_ERROR_ARGUMENT;
    if (!turn_take())
        return QTUTILS_ERROR_BUSY;
    qtutils_browser* pBrowser = malloc(sizeof *pBrowser);
    const int iError = load_and_construct(pBrowser, pcModule, pcSOMDatabase, pcSourceDatabase);
    turn_give();
    if (iError == QTUTILS_OK)
        *ppBrowser = pBrowser;
    else
        free(pBrowser);
    return iError;
}

int qtutils_close(qtutils_browser* pBrowser)
{
    if (pBrowser == NULL)
        return QTUTILS_OK;
    const int iError = call(pBrowser, true, Free, NULL);
    if (iError != QTUTILS_OK)
        return iError;
    module_unload(&pBrowser->oModule);
    free(pBrowser);
    return QTUTILS_OK;
}

int qtutils_set_som_table(qtutils_browser* pBrowser, const char* pcTable)
{
    return call(pBrowser, pcTable != NULL, SetSOMTable, (void*[]){(void*)pcTable});
}

static bool are_nodes(const int* piNodes, int iNumber, int iNumNodes)
{
    if (iNumber < 0 || (iNumber > 0 && piNodes == NULL))
        return false;
    for (int i = 0; i < iNumber; i++)
        if (piNodes[i] < 0 || piNodes[i] >= iNumNodes)
            return false;
    return true;
}

int qtutils_pass_node_hierarchy(
    qtutils_browser* pBrowser, const int* piChildren, int iNumChildren, int iNode, int iNumNodes)
{
    int iNone = 0; /* the module wants an array also for no children */
    void* pChildren = piChildren == NULL ? (void*)&iNone : (void*)piChildren;
    const bool bGood = iNumNodes <= MostNodes && iNumChildren <= MostNodes && are_nodes(&iNode, 1, iNumNodes)
        && are_nodes(piChildren, iNumChildren, iNumNodes);
    return call(pBrowser, bGood, PassNodeHierarchy, (void*[]){pChildren, &iNumChildren, &iNode, &iNumNodes});
}

int qtutils_show(qtutils_browser* pBrowser)
{
    return call(pBrowser, true, Show, NULL);
}

int qtutils_hide_table(qtutils_browser* pBrowser)
{
    return call(pBrowser, true, HideTable, NULL);
}

int qtutils_select(qtutils_browser* pBrowser, int iNode)
{
    return call(pBrowser, iNode >= 0, Select, (void*[]){&iNode});
}

int qtutils_get_num_rows(qtutils_browser* pBrowser, int* piNumRows)
{
    return ask(pBrowser, GetNumRows, -1, piNumRows);
}

/* The module reads the date when it handles the command. An answer now and then bounds what is kept. */
static int mark(qtutils_browser* pBrowser, const char* pcDate, int iTimeFrame)
{
    int iNumRows = 0;
    const size_t uSize = strlen(pcDate) + 1;
    if (kept_count() >= MostRetired && browser_ask_num_rows(pBrowser, &iNumRows) != QTUTILS_OK)
        return QTUTILS_ERROR_NO_ANSWER;
    struct kept_block* pDate = kept_new(uSize);
    if (pDate == NULL)
        return QTUTILS_ERROR_MEMORY;
    memcpy(kept_bytes(pDate), pcDate, uSize);
    browser_call(pBrowser, MarkRow, (void*[]){kept_bytes(pDate), &iTimeFrame});
    kept_retire(pDate);
    return QTUTILS_OK;
}

int qtutils_mark_row(qtutils_browser* pBrowser, const char* pcDate, int iTimeFrame)
{
    int iError = browser_enter(pBrowser, pcDate != NULL);
    if (iError != QTUTILS_OK)
        return iError;
    iError = is_date(pcDate) ? mark(pBrowser, pcDate, iTimeFrame) : QTUTILS_ERROR_DATE;
    turn_give();
    return iError;
}

int qtutils_get_first_date_in_frame(qtutils_browser* pBrowser, int* piMinutes)
{
    return ask(pBrowser, GetFirstDateInFrame, INT_MIN, piMinutes);
}

/* The module knows no length, so it gets room for the longest field. A first byte that stays tells that it
   has written nothing. */
static int first_date(qtutils_browser* pBrowser, char* pcDate, size_t uSize)
{
    int iNumRows = 0;
    struct kept_block* pField = kept_new(LongestField);
    if (pField == NULL)
        return QTUTILS_ERROR_MEMORY;
    char* pcField = kept_bytes(pField);
    pcField[0] = '\1';
    browser_call(pBrowser, GetFirstDateInSelection, (void*[]){pcField});
    int iError = browser_ask_num_rows(pBrowser, &iNumRows);
    if (iError == QTUTILS_OK && pcField[0] == '\1')
        iError = QTUTILS_ERROR_NO_ROWS;
    if (iError == QTUTILS_OK && strlen(pcField) >= uSize)
        iError = QTUTILS_ERROR_SPACE;
    if (iError == QTUTILS_OK)
        strcpy(pcDate, pcField);
    kept_free(pField);
    return iError;
}

int qtutils_get_first_date_in_selection(qtutils_browser* pBrowser, char* pcDate, size_t uSize)
{
    int iError = browser_enter(pBrowser, pcDate != NULL);
    if (iError != QTUTILS_OK)
        return iError;
    iError = first_date(pBrowser, pcDate, uSize);
    turn_give();
    return iError;
}

int qtutils_date_to_int(qtutils_browser* pBrowser, const char* pcDate, int* piMinutes)
{
    if (pBrowser == NULL || pcDate == NULL || piMinutes == NULL)
        return QTUTILS_ERROR_ARGUMENT;
    if (!is_date(pcDate))
        return QTUTILS_ERROR_DATE;
    browser_call(pBrowser, DateToInt, (void*[]){(void*)pcDate, piMinutes});
    return QTUTILS_OK;
}
