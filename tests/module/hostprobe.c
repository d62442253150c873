/* SPDX-FileCopyrightText: The qtutils developers
   SPDX-License-Identifier: MIT */

#include "hostprobe.h"

#include "hostmodule.h"

#include <dlfcn.h>
#include <stdio.h>
#include <string.h>

typedef union
{
    void* pSymbol;
    void (*pfAsk)(int, char**, char*, size_t);
} Probe;

bool probe_command(char** apcFields, int iFields, char* pcResult)
{
    static Probe oProbe; /* threads that ask at the same time find the same */
    if (strcmp(apcFields[0], "ask") != 0)
        return false;
    if (oProbe.pSymbol == NULL) {
        void* pLibrary = dlopen(QTUTILS_PROBE, RTLD_NOW | RTLD_LOCAL);
        if (pLibrary == NULL) {
            snprintf(pcResult, ResultSize, "%s", dlerror());
            return true;
        }
        oProbe.pSymbol = dlsym(pLibrary, "probe_ask");
    }
    oProbe.pfAsk(iFields - 1, apcFields + 1, pcResult, ResultSize);
    return true;
}
