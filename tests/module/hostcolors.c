/* SPDX-FileCopyrightText: The qtutils developers
   SPDX-License-Identifier: MIT */

#include "hostcolors.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static float* pfLast;

/* Reads one run of rows and goes on behind it; the number of rows. */
static size_t read_run(const char** ppcRows, float* pfColor)
{
    size_t uRows;
    int iLength;
    if (sscanf(*ppcRows, "%zux%f,%f,%f%n", &uRows, &pfColor[0], &pfColor[1], &pfColor[2], &iLength) != 4)
        abort();
    *ppcRows += iLength;
    *ppcRows += strspn(*ppcRows, ";");
    return uRows;
}

static void fill(float* pfColors, const char* pcRows)
{
    while (*pcRows != '\0') {
        float afColor[3];
        for (size_t u = read_run(&pcRows, afColor); u > 0; u--, pfColors += 3)
            memcpy(pfColors, afColor, sizeof afColor);
    }
}

static size_t count(const char* pcRows)
{
    size_t uRows = 0;
    while (*pcRows != '\0') {
        float afColor[3];
        uRows += read_run(&pcRows, afColor);
    }
    return uRows;
}

float* colors_array(const char* pcRows)
{
    if (strcmp(pcRows, "same") == 0)
        return pfLast;
    pfLast = malloc(3 * count(pcRows) * sizeof(float));
    if (pfLast == NULL)
        abort();
    fill(pfLast, pcRows);
    return pfLast;
}

bool colors_command(char** apcFields)
{
    if (strcmp(apcFields[0], "recolor") != 0)
        return false;
    fill(pfLast, apcFields[1]);
    return true;
}
