/* SPDX-FileCopyrightText: The qtutils developers
   SPDX-License-Identifier: MIT */

/* A module that describes a method which it doesn't export. */

#include <stddef.h>

const char* NAMESPACE = "missingsymbol";
static const char* const CGap_def[] = {"gap_:", "CGap()", "FREE_CGap()", "void jump(int iWidth)", NULL};
const char* const* const CLASSES_missingsymbol[] = {CGap_def, NULL};

void* gap_CGap(void* pHandle, void** ppArgs)
{
    (void)pHandle;
    (void)ppArgs;
    return NULL;
}

void gap_FREE_CGap(void* pHandle, void** ppArgs)
{
    (void)pHandle;
    (void)ppArgs;
}
