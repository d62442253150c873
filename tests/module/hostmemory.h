/* SPDX-FileCopyrightText: The qtutils developers
   SPDX-License-Identifier: MIT */

#pragma once

#include <stddef.h>

/* Memory that ends where a page ends, with a page behind it that nobody may touch. Whoever reads or writes
   beyond it ends the process; so does whoever still uses what has been given back, as long as nothing else
   has taken its place. */

/* Of no bytes: a pointer that may not be used. */
void* memory_new(size_t uSize);
/* Whoever writes to it from now on ends the process. */
void memory_make_read_only(void* pMemory, size_t uSize);
/* Null is allowed. */
void memory_give_back(void* pMemory, size_t uSize);
