/* SPDX-FileCopyrightText: The qtutils developers
   SPDX-License-Identifier: MIT */

#pragma once

#include <stdbool.h>
#include <stddef.h>

/* One argument of a call. Its memory is that of hostmemory.h, read-only unless it takes a result. */
struct Argument
{
    void* pSlot; /* null: the host passes null */
    size_t uSize; /* of the memory at pSlot */
    int iResults; /* number of int results */
    bool bText; /* a text is the result */
    bool bKept;
    bool bKeptText;
};

/* Makes an argument from its field, see hostmodule.h. */
void argument_make(struct Argument* pArgument, const char* pcField);
/* Appends its results to a text of ResultSize bytes. */
void argument_append_results(const struct Argument* pArgument, char* pcResult);
/* Gives its memory back unless it is kept. */
void argument_give_back(struct Argument* pArgument);

/* Carries out "drop text", which gives the last kept text back; false for other commands. */
bool arguments_command(char** apcFields);

/* Appends to a text of ResultSize bytes, behind a blank if there is something already. */
void append_text(char* pcResult, const char* pcText);
