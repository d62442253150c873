/* SPDX-FileCopyrightText: The qtutils developers
   SPDX-License-Identifier: MIT */

#pragma once

#include <stdbool.h>

/* The plain host's commands about what a library could change in its process:

   surroundings      prints, a line for each: mask and folder, locale, signal actions, this thread's signal
   mask and floating-point mode, standard streams, descriptors, environment customize         gives the
   process, and this thread, unusual ones of all these hold              gives this thread unusual ones and
   waits; the result is "kept" if they are still the same after that, and else says what they are let go ends
   the waiting of all that hold catch SIGNAL      handles a signal from now on caught            how often it
   came, and the threads that it came to: "3: 1204 1204 1205" block SIGNAL      has this thread block it

   False: the first field is none of them. */
bool surroundings_command(char** apcFields, int iFields, char* pcResult);
