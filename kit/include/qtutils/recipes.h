/* SPDX-FileCopyrightText: The qtutils developers
   SPDX-License-Identifier: MIT */

#pragma once

/* Recipes for row colours: functions for qtutils_color_rows and qtutils_select_colored. Dark text can be read
   on each of their colours (a contrast of 5 at least), and readers with other colour vision tell them apart:
   a scale grows darker from end to end, and groups differ in lightness as well as in hue. A row without a
   value stays white. */

#include "errors.h"
#include "rowcolors.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The number of different colours of groups. */
#define QTUTILS_NUM_GROUP_COLORS 8

/* What the host knows of each row, in the order of the rows. Both live until the recipe has returned. */
typedef struct qtutils_row_ints
{
    const int* piValues;
    int iNumRows;
} qtutils_row_ints;

typedef struct qtutils_row_floats
{
    const float* pfValues;
    int iNumRows;
} qtutils_row_floats;

/* From pale yellow for the oldest row to blue for the newest one. pUser: not used. Always returns 0. */
QTUTILS_KIT_EXPORT int qtutils_color_by_date(
    const int* piMinutes, int iNumRows, float* pfColors, void* pUser);

/* The same scale, from the largest value (far, pale) to the least one (near, blue). What is no finite number
   is no value. pUser: a qtutils_row_floats. Returns 1 when it has another number of rows. */
QTUTILS_KIT_EXPORT int qtutils_color_by_distance(
    const int* piMinutes, int iNumRows, float* pfColors, void* pUser);

/* Orange for rows whose value isn't 0: those that have a word, for instance. pUser: a qtutils_row_ints.
   Returns 1 when it has another number of rows. */
QTUTILS_KIT_EXPORT int qtutils_color_by_hit(const int* piMinutes, int iNumRows, float* pfColors, void* pUser);

/* One of QTUTILS_NUM_GROUP_COLORS colours for the number of the row's group, which begin anew behind the last
   one. A negative number is no group. pUser: a qtutils_row_ints. Returns 1 when it has another number of
   rows. */
QTUTILS_KIT_EXPORT int qtutils_color_by_group(
    const int* piMinutes, int iNumRows, float* pfColors, void* pUser);

#ifdef __cplusplus
}
#endif
