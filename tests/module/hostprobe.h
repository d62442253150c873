/* SPDX-FileCopyrightText: The qtutils developers
   SPDX-License-Identifier: MIT */

#pragma once

/* The plain host's way to look at the user interface: a library of the tests (probe.cpp) in the same process.

   ask QUESTION ...   the result is the probe's answer; it comes once everything that somebody in front of the
                      display did before has taken effect. Waits as long as the interface is busy.

   False: the first field is another command. */
#include <stdbool.h>

bool probe_command(char** apcFields, int iFields, char* pcResult);
