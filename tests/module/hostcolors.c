/* SPDX-FileCopyrightText: The qtutils developers
   SPDX-License-Identifier: MIT */

#include "hostcolors.h"

#include "hostmemory.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

struct Array
{
    float* pfColors;
    size_t uSize;
};

static struct Array oLast;
static struct Array oBefore; /* the last one */

struct Run
{
    size_t uRows;
    float afColor[3];
    float fHueStep;
};

/* Reads one run of rows and goes on behind it. */
static struct Run read_run(const char** ppcRows)
{
    struct Run oRun = {0};
    int iLength;
    if (sscanf(*ppcRows, "%zux%f,%f,%f%n", &oRun.uRows, &oRun.afColor[0], &oRun.afColor[1], &oRun.afColor[2],
            &iLength)
        != 4)
        abort();
    *ppcRows += iLength;
    if (sscanf(*ppcRows, "+%f%n", &oRun.fHueStep, &iLength) == 1)
        *ppcRows += iLength;
    *ppcRows += strspn(*ppcRows, ";");
    return oRun;
}

static void fill(float* pfColors, const char* pcRows)
{
    while (*pcRows != '\0') {
        struct Run oRun = read_run(&pcRows);
        for (; oRun.uRows > 0; oRun.uRows--, pfColors += 3) {
            memcpy(pfColors, oRun.afColor, sizeof oRun.afColor);
            oRun.afColor[0] += oRun.fHueStep;
        }
    }
}

static size_t count(const char* pcRows)
{
    size_t uRows = 0;
    while (*pcRows != '\0')
        uRows += read_run(&pcRows).uRows;
    return uRows;
}

float* colors_array(const char* pcRows)
{
    if (strcmp(pcRows, "same") == 0)
        return oLast.pfColors;
    oBefore = oLast;
    oLast.uSize = 3 * count(pcRows) * sizeof(float);
    oLast.pfColors = memory_new(oLast.uSize);
    fill(oLast.pfColors, pcRows);
    return oLast.pfColors;
}

static void drop(struct Array* pArray)
{
    memory_give_back(pArray->pfColors, pArray->uSize);
    pArray->pfColors = NULL;
}

bool colors_command(char** apcFields)
{
    if (strcmp(apcFields[0], "recolor") == 0)
        fill(oLast.pfColors, apcFields[1]);
    else if (strcmp(apcFields[0], "drop colors before") == 0)
        drop(&oBefore);
    else if (strcmp(apcFields[0], "drop colors") == 0)
        drop(&oLast);
    else
        return false;
    return true;
}
