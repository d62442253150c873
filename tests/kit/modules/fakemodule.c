/* SPDX-FileCopyrightText: The qtutils developers
   SPDX-License-Identifier: MIT */

#include "fakemodule.h"

#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <threads.h>
#include <time.h>

#ifndef FAKE_NAMESPACE
#define FAKE_NAMESPACE "qtutils"
#endif
#ifndef FAKE_SHOW
#define FAKE_SHOW "void show()"
#endif
#define EXPORT __attribute__((visibility("default")))

enum
{
    RowsInLog = 10 /* of the colours; the others are read, too */
};

EXPORT struct fake fake = {.bWindow = 1, .bAnswers = 1, .iRows = 3};

EXPORT const char* NAMESPACE = FAKE_NAMESPACE;
EXPORT const char* CNodeBrowser_def[] = {"nodeBrowser_:", "CNodeBrowser(char *pcSOMDB, char *pcSourceDB)",
    "FREE_CNodeBrowser()", "void select(int iSelection)", "void getNumRows(int* piNumRows)",
    "void fillDate(int* piDate)", "void dateToInt(char* pcDateIn, int* piDateOut)",
    "void setRowColors(float* pfRowColors)", "void markRow(char* pcDate, int iTimeFrame)",
    "void getFirstDateInFrame(int* piFirstDateInFrame)",
    "void getFirstDateInSelection(char* pcFirstDateInSelection)",
    "void passNodeHierarchy(int* iaNodes, int iNumChildren, int iNode, int iNumNodes)",
    "void setSOMTable(char *pcSOMTable)", "void hideTable()", FAKE_SHOW, NULL};

static const char* apcMarks[1024]; /* not carried out yet */
static int iMarks;
static const float* pfColors; /* the last ones handed over */
static const float* pfShown; /* those that cells are painted with */
static int bColorsNew;
static int bBlocked; /* by fillDate */

static void say(const char* pcFormat, ...)
{
    va_list oArguments;
    const size_t uLength = strlen(fake.acLog);
    va_start(oArguments, pcFormat);
    vsnprintf(fake.acLog + uLength, LogSize - uLength, pcFormat, oArguments);
    va_end(oArguments);
}

static void carry_out(void)
{
    for (int i = 0; i < iMarks; i++)
        say("marked %s\n", apcMarks[i]);
    iMarks = 0;
    if (bColorsNew && pfShown != NULL)
        say("before %g\n", (double)pfShown[2]);
    pfShown = pfColors;
    for (int i = 0; bColorsNew && i < fake.iRows; i++) {
        const float* pfColor = pfColors + 3 * i;
        if (i < RowsInLog || pfColor[2] < 0)
            say("row %d: %g %g %g\n", i, (double)pfColor[0], (double)pfColor[1], (double)pfColor[2]);
    }
    bColorsNew = 0;
}

/* Whether a question is answered. */
static int begin_question(void)
{
    if (bBlocked) {
        fprintf(stderr, "a question between fillDate and setRowColors waits for ever\n");
        abort();
    }
    if (fake.bAnswers)
        carry_out();
    return fake.bAnswers;
}

EXPORT void* nodeBrowser_CNodeBrowser(void* pHandle, void** apSlots)
{
    (void)pHandle;
    fake.iLive++;
    say("CNodeBrowser %s %s\n", (char*)apSlots[0], (char*)apSlots[1]);
    return fake.bWindow ? &fake : NULL;
}

EXPORT void nodeBrowser_FREE_CNodeBrowser(void* pHandle, void** apSlots)
{
    (void)apSlots;
    fake.iLive--;
    say("FREE_CNodeBrowser %s\n", pHandle == &fake ? "handle" : "null");
}

/* How often the kit selects a node again with its colours depends on the load of the machine; the log has the
   last time only. */
static void begin_selection(int iNode)
{
    static size_t uBegin; /* of the last one in the log */
    char acPair[64];
    const int iLength = snprintf(acPair, sizeof acPair, "select %d\nsetRowColors\n", iNode);
    if (uBegin < strlen(fake.acLog) && strncmp(fake.acLog + uBegin, acPair, (size_t)iLength) == 0)
        fake.acLog[uBegin] = '\0';
    uBegin = strlen(fake.acLog);
}

EXPORT void nodeBrowser_select(void* pHandle, void** apSlots)
{
    const struct timespec oMillisecond = {0, 1000000};
    const int iNode = *(int*)apSlots[0];
    (void)pHandle;
    fake.iSelects++;
    begin_selection(iNode);
    say("select %d\n", iNode);
    if (fake.iHoldUps > 0) {
        fake.iHoldUps--;
        thrd_sleep(&oMillisecond, NULL); /* wait-reason: the window may paint in this time */
    }
}

EXPORT void nodeBrowser_getNumRows(void* pHandle, void** apSlots)
{
    (void)pHandle;
    if (fake.iNumAnswers > 0) {
        fake.iRows = fake.aiRows[0];
        memmove(fake.aiRows, fake.aiRows + 1, (MostAnswers - 1) * sizeof(int));
        fake.iNumAnswers--;
    }
    if (begin_question())
        *(int*)apSlots[0] = fake.iRows;
}

EXPORT void nodeBrowser_fillDate(void* pHandle, void** apSlots)
{
    int* piDates = apSlots[0];
    (void)pHandle;
    say("fillDate\n");
    if (!begin_question())
        return;
    for (int i = 0; i < fake.iRows; i++)
        if (i != 1 || !fake.bNoDateInRow1)
            piDates[i] = 10 * i;
    bBlocked = 1;
}

EXPORT void nodeBrowser_dateToInt(void* pHandle, void** apSlots)
{
    (void)pHandle;
    *(int*)apSlots[1] = (int)strlen(apSlots[0]);
}

EXPORT void nodeBrowser_setRowColors(void* pHandle, void** apSlots)
{
    (void)pHandle;
    say("setRowColors\n");
    bBlocked = 0;
    bColorsNew = 1;
    pfColors = apSlots[0];
}

EXPORT void nodeBrowser_markRow(void* pHandle, void** apSlots)
{
    (void)pHandle;
    say("markRow %d\n", *(int*)apSlots[1]);
    apcMarks[iMarks++] = apSlots[0];
}

EXPORT void nodeBrowser_getFirstDateInFrame(void* pHandle, void** apSlots)
{
    (void)pHandle;
    if (begin_question())
        *(int*)apSlots[0] = fake.iFrameMinutes;
}

EXPORT void nodeBrowser_getFirstDateInSelection(void* pHandle, void** apSlots)
{
    (void)pHandle;
    if (begin_question() && fake.pcFirstDate != NULL)
        strcpy(apSlots[0], fake.pcFirstDate);
}

EXPORT void nodeBrowser_passNodeHierarchy(void* pHandle, void** apSlots)
{
    const int* piNodes = apSlots[0];
    (void)pHandle;
    say("passNodeHierarchy %d of %d:%s", *(int*)apSlots[2], *(int*)apSlots[3],
        piNodes == NULL ? " null" : "");
    for (int i = 0; i < *(int*)apSlots[1]; i++)
        say(" %d", piNodes[i]);
    say("\n");
}

EXPORT void nodeBrowser_setSOMTable(void* pHandle, void** apSlots)
{
    (void)pHandle;
    say("setSOMTable %s\n", (char*)apSlots[0]);
}

EXPORT void nodeBrowser_hideTable(void* pHandle, void** apSlots)
{
    (void)pHandle;
    (void)apSlots;
    say("hideTable\n");
}

#ifndef FAKE_WITHOUT_SHOW
EXPORT void nodeBrowser_show(void* pHandle, void** apSlots)
{
    (void)pHandle;
    (void)apSlots;
    say("show\n");
}
#endif
