/* SPDX-FileCopyrightText: The qtutils developers
   SPDX-License-Identifier: MIT */

#pragma once

#include <stdbool.h>

/* The plain host's commands about its own process:

   env NAME VALUE, unenv NAME, getenv NAME   environment; the result of getenv is "unset" or the value
   exit CODE, _exit CODE, quick_exit CODE    end the process
   leave CODE                                ends the main thread, then another one ends the process
   exec CODE                                 becomes a shell that ends with that code
   pass MICROSECONDS                         lets that much time pass
   limit MEGABYTES                           lets the process have that much more memory than it has now
   folder PATH                               makes it the working directory; the result is "there" or not
   library PATH                              loads a library for its initialisation, unloads the one before
   library                                   unloads it

   False: the first field is none of them. */
bool process_command(char** apcFields, char* pcResult);
