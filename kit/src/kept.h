/* SPDX-FileCopyrightText: The qtutils developers
   SPDX-License-Identifier: MIT */

#pragma once

#include <stdbool.h>
#include <stddef.h>

/* Memory that the module may read or write after the call that handed it over. The module handles its
   commands in the order of the calls, so a block is done with when a later call has been answered. All
   functions are to be called with the turn taken (see turn.h): the lists belong to the process, as the window
   does. */

struct kept_block;

/* Makes a block of zeros. Pages that nobody touches take no memory, so it may be far larger than what is
   needed. Null when there is none. */
struct kept_block* kept_new(size_t uBytes);
void* kept_bytes(struct kept_block* pBlock);
/* Gives a block back that the module doesn't know, or knows no more; null is fine. */
void kept_free(struct kept_block* pBlock);

/* The module has got this block with its last command. */
void kept_retire(struct kept_block* pBlock);
/* The module has got this block as the row colours, and reads it until it has others. */
void kept_set_colors(struct kept_block* pBlock);

/* The row colours that the module has; null before any. */
struct kept_block* kept_colors(void);

/* Number of retired blocks. */
int kept_count(void);
/* A call has been answered that was made after all these blocks were retired. */
void kept_free_retired(void);
