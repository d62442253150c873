/* SPDX-FileCopyrightText: The qtutils developers
   SPDX-License-Identifier: MIT */

#pragma once

#include <stdbool.h>

/* The plain host's row colours, three floats a row. They are written as "4x120,255,255;1x0,0,0": so many rows
   of hue, saturation, value, each of which may also be "nan", "inf" or "-inf". With "+7" behind it, each
   row's hue is 7 greater than that of the row before. The arrays lie in memory of hostmemory.h. */

/* A new array; for "same" the one made last. */
float* colors_array(const char* pcRows);

/* "recolor ROWS": writes other colours into the array made last, which has at least so many rows. Calls
   nothing.
   "drop colors": gives that array back. "drop colors before": gives the one back that was made before it.
   No other array is ever given back.

   False: the first field is another command. */
bool colors_command(char** apcFields);
