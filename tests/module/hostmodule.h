/* SPDX-FileCopyrightText: The qtutils developers
   SPDX-License-Identifier: MIT */

#pragma once

#include <stddef.h>

/* The plain host's side of the interface: finds the module's class in the descriptor and calls its methods by
   name. Only one module is loaded at a time. */

enum
{
    ResultSize = 4096 /* bytes of a result text, terminator included */
};

/* Loads the module and reads its descriptor. The result is "loaded" or the reason why not. */
void module_load(const char* pcPath, char* pcResult);
/* Unloads it. The result is "unloaded" or the reason why not. */
void module_unload(char* pcResult);

/* Prints the descriptor, a line for each text, and whether each prototype's function is there. */
void module_describe(void);
/* Prints the addresses of the descriptor's symbols, in decimal. */
void module_addresses(void);

/* Calls a method of the class. The first field is its name, the others are its arguments:

   i:7        int                                      t:text   text
   n:1,2,3    int array                                r:3xab   text "ababab"
   s:1-999    int array of all these numbers           h:ff0a   text of these bytes
   k:text     text that is kept after the call, and so are those of kr: and kh:
   c:4x120,255,255;1x0,0,0   row colours, see hostcolors.h; kept after the call
   oi:5       int array for 5 results                  ot:20    buffer for a text of 20 bytes
   null       null pointer                             no array   instead of all arguments: a null array

   Each lies in memory of its own, see hostmemory.h. Whatever isn't kept is given back after the call. Results
   start as Untouched ("untouched" for a text); they are put into the result text, separated by blanks. The
   constructor's result is "window", "same window" for the handle that it returned before, or "null". */
void module_call(char** apcFields, int iFields, char* pcResult);

/* Gives further calls another handle: "null", the "first" one that was ever constructed, or a "wrong" one. */
void module_use_handle(const char* pcWhich);
