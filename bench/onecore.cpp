// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "onecore.h"

#include "workerloop.h"

#include <sched.h>
#include <unistd.h>

void stayOnOneCore()
{
    cpu_set_t oCores;
    CPU_ZERO(&oCores);
    CPU_SET(std::size_t(sysconf(_SC_NPROCESSORS_ONLN) - 1), &oCores);
    if (sched_setaffinity(0, sizeof oCores, &oCores) != 0)
        workerloop::fail("can't stay on one core");
}
