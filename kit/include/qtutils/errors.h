/* SPDX-FileCopyrightText: The qtutils developers
   SPDX-License-Identifier: MIT */

#pragma once

/* Error codes of the kit. Valid C11 and C++11; include qtutils/nodebrowser.h for all of the kit. */

#define QTUTILS_KIT_EXPORT __attribute__((visibility("default")))

#ifdef __cplusplus
extern "C" {
#endif

/* What a function returns. The numbers stay as they are; new ones are added at the end. */
enum qtutils_error
{
    QTUTILS_OK = 0,
    QTUTILS_ERROR_ARGUMENT = 1, /* a null pointer, or a number out of its range */
    QTUTILS_ERROR_MEMORY = 2,
    QTUTILS_ERROR_MODULE = 3, /* the file can't be loaded, or is another module; see the detail */
    QTUTILS_ERROR_ENVIRONMENT = 4, /* MYSQL_HOST, MYSQL_USER or MYSQL_PWD is unset; see the detail */
    QTUTILS_ERROR_WINDOW = 5, /* no window: there is no display, or the host has a Qt application */
    QTUTILS_ERROR_NO_ANSWER = 6, /* the window is gone, or its display */
    QTUTILS_ERROR_BUSY = 7, /* called by the colour callback, which must not call back */
    QTUTILS_ERROR_DATE = 8, /* no date of the form "YYYY-MM-DD HH:MM:SS" */
    QTUTILS_ERROR_NO_ROWS = 9, /* there is no document to tell the date of */
    QTUTILS_ERROR_ROWS = 10, /* another number of rows is shown */
    QTUTILS_ERROR_SPACE = 11, /* the result is longer than the buffer */
    QTUTILS_ERROR_CALLBACK = 12 /* the colour callback failed */
};

/* One English sentence without full stop; never null, also for a number that is no code. The text is constant
   and lives as long as the library. [any-thread] */
QTUTILS_KIT_EXPORT const char* qtutils_error_text(int iError);

/* What exactly was wrong in this thread's last qtutils_open: the loader's message or the variable's name;
   empty when that succeeded. Lives until the thread's next qtutils_open. [any-thread] */
QTUTILS_KIT_EXPORT const char* qtutils_error_detail(void);

#ifdef __cplusplus
}
#endif
