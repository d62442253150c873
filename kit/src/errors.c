/* SPDX-FileCopyrightText: The qtutils developers
   SPDX-License-Identifier: MIT */

#include "qtutils/errors.h"

#include "entrypoints.h"

#include <stdarg.h>
#include <stdio.h>

static const char* const apcTexts[] = {
    [QTUTILS_OK] = "no error",
    [QTUTILS_ERROR_ARGUMENT] = "an argument is null or out of its range",
    [QTUTILS_ERROR_MEMORY] = "there is not enough memory",
    [QTUTILS_ERROR_MODULE] = "the module can't be loaded",
    [QTUTILS_ERROR_ENVIRONMENT] = "a variable for the database server is unset",
    [QTUTILS_ERROR_WINDOW] =
        "the window can't be made: there is no display, or the host has a Qt application",
    [QTUTILS_ERROR_NO_ANSWER] = "the window is gone",
    [QTUTILS_ERROR_BUSY] = "a colour callback must not call this",
    [QTUTILS_ERROR_DATE] = "a date is not of the form YYYY-MM-DD HH:MM:SS",
    [QTUTILS_ERROR_NO_ROWS] = "there are no rows",
    [QTUTILS_ERROR_ROWS] = "another number of rows is shown",
    [QTUTILS_ERROR_SPACE] = "the result is longer than the buffer",
    [QTUTILS_ERROR_CALLBACK] = "the colour callback failed",
};

static _Thread_local char acDetail[1024];

const char* qtutils_error_text(int iError)
{
    const int iTexts = sizeof apcTexts / sizeof apcTexts[0];
    return iError >= 0 && iError < iTexts ? apcTexts[iError] : "unknown error";
}

const char* qtutils_error_detail(void)
{
    return acDetail;
}

void detail_set(const char* pcFormat, ...)
{
    va_list oArguments;
    va_start(oArguments, pcFormat);
    vsnprintf(acDetail, sizeof acDetail, pcFormat, oArguments);
    va_end(oArguments);
}
