/* SPDX-FileCopyrightText: The qtutils developers
   SPDX-License-Identifier: MIT */

#pragma once

/* A module without a window that says what was called. As the real one it carries commands out later: when
   the next call is made that has an answer. */

#ifdef __cplusplus
extern "C" {
#endif

enum
{
    MostAnswers = 16,
    LogSize = 65536
};

/* What tests set and look at: the symbol "fake" of the module. */
struct fake
{
    int bWindow; /* whether constructions succeed */
    int bAnswers; /* whether questions are answered */
    int iRows; /* of the current node, also for getNumRows when aiRows has no more */
    int aiRows[MostAnswers]; /* the next answers of getNumRows; the user chooses nodes meanwhile */
    int iNumAnswers;
    int bNoDateInRow1; /* fillDate leaves that row out */
    int iFrameMinutes; /* answer of getFirstDateInFrame */
    const char* pcFirstDate; /* answer of getFirstDateInSelection; null: no row */
    int iLive; /* constructions minus destructions */
    int iHoldUps; /* so many of the next selects hold up the calling thread */
    int iSelects; /* calls of select; one that is made again with its colours is in the log once */
    char acLog[LogSize]; /* a line for each call, then for what was carried out */
};

#ifdef __cplusplus
}
#endif
