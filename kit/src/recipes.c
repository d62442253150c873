/* SPDX-FileCopyrightText: The qtutils developers
   SPDX-License-Identifier: MIT */

#include "qtutils/recipes.h"

#include <math.h>
#include <string.h>

enum
{
    Components = 3,
    ScaleSize = 5
};

typedef float color[Components]; /* hue, saturation, value */

/* Hues that no kind of colour vision confuses in this order, each darker than the one before. */
static const color afScale[ScaleSize] = {
    {48, 38, 255}, {58, 115, 235}, {95, 115, 208}, {165, 130, 185}, {208, 150, 180}};

static const color afHit = {36, 140, 255};

/* Chosen so that the least difference between two of them, for any kind of colour vision, is large among pale
   colours. */
static const color afGroups[QTUTILS_NUM_GROUP_COLORS] = {{210, 80, 255}, {20, 80, 255}, {120, 140, 255},
    {280, 140, 255}, {180, 140, 190}, {340, 140, 235}, {90, 140, 165}, {260, 80, 215}};

/* The colour of a place on the scale, from 0 (pale) to 1. */
static void paint_share(double dShare, float* pfColor)
{
    const double dPlace = dShare * (ScaleSize - 1);
    const int iStep = dPlace < ScaleSize - 1 ? (int)dPlace : ScaleSize - 2;
    for (int i = 0; i < Components; i++)
        pfColor[i] =
            (float)(afScale[iStep][i] + (dPlace - iStep) * (afScale[iStep + 1][i] - afScale[iStep][i]));
}

/* The share of a value between two others; the whole where these are the same. */
static double share(double dValue, double dPale, double dStrong)
{
    return dPale == dStrong ? 1 : (dValue - dPale) / (dStrong - dPale);
}

int qtutils_color_by_date(const int* piMinutes, int iNumRows, float* pfColors, void* pUser)
{
    int iOldest = INT_MAX;
    int iNewest = INT_MIN;
    (void)pUser;
    for (int i = 0; i < iNumRows; i++)
        if (piMinutes[i] != QTUTILS_NO_DATE) {
            iOldest = piMinutes[i] < iOldest ? piMinutes[i] : iOldest;
            iNewest = piMinutes[i] > iNewest ? piMinutes[i] : iNewest;
        }
    for (int i = 0; i < iNumRows; i++)
        if (piMinutes[i] != QTUTILS_NO_DATE)
            paint_share(share(piMinutes[i], iOldest, iNewest), pfColors + Components * i);
    return 0;
}

int qtutils_color_by_distance(const int* piMinutes, int iNumRows, float* pfColors, void* pUser)
{
    const qtutils_row_floats* pRows = pUser;
    float fNear = INFINITY;
    float fFar = -INFINITY;
    (void)piMinutes;
    if (pRows->iNumRows != iNumRows)
        return 1;
    for (int i = 0; i < iNumRows; i++)
        if (isfinite(pRows->pfValues[i])) {
            fNear = fminf(fNear, pRows->pfValues[i]);
            fFar = fmaxf(fFar, pRows->pfValues[i]);
        }
    for (int i = 0; i < iNumRows; i++)
        if (isfinite(pRows->pfValues[i]))
            paint_share(share(pRows->pfValues[i], fFar, fNear), pfColors + Components * i);
    return 0;
}

int qtutils_color_by_hit(const int* piMinutes, int iNumRows, float* pfColors, void* pUser)
{
    const qtutils_row_ints* pRows = pUser;
    (void)piMinutes;
    if (pRows->iNumRows != iNumRows)
        return 1;
    for (int i = 0; i < iNumRows; i++)
        if (pRows->piValues[i] != 0)
            memcpy(pfColors + Components * i, afHit, sizeof afHit);
    return 0;
}

int qtutils_color_by_group(const int* piMinutes, int iNumRows, float* pfColors, void* pUser)
{
    const qtutils_row_ints* pRows = pUser;
    (void)piMinutes;
    if (pRows->iNumRows != iNumRows)
        return 1;
    for (int i = 0; i < iNumRows; i++)
        if (pRows->piValues[i] >= 0)
            memcpy(pfColors + Components * i, afGroups[pRows->piValues[i] % QTUTILS_NUM_GROUP_COLORS],
                sizeof(color));
    return 0;
}
