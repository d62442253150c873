/* SPDX-FileCopyrightText: The qtutils developers
   SPDX-License-Identifier: MIT */

/* The kit's C headers, each for itself and twice, in every language they are for. */

#include <qtutils/recipes.h>

#include <qtutils/rowcolors.h>

#include <qtutils/errors.h>

#include <qtutils/nodebrowser.h>

#include <qtutils/errors.h>
#include <qtutils/nodebrowser.h>
#include <qtutils/recipes.h>
#include <qtutils/rowcolors.h>

static int white(const int* piMinutes, int iNumRows, float* pfColors, void* pUser)
{
    (void)piMinutes;
    (void)iNumRows;
    (void)pfColors;
    (void)pUser;
    return QTUTILS_OK;
}

int color_white(qtutils_browser* pBrowser);
int color_white(qtutils_browser* pBrowser)
{
    return qtutils_color_rows(pBrowser, white, 0);
}
