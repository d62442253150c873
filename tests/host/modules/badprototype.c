/* SPDX-FileCopyrightText: The qtutils developers
   SPDX-License-Identifier: MIT */

/* A module with a prototype of an unknown type. */

#include <stddef.h>

const char* NAMESPACE = "badprototype";
static const char* const CBad_def[] = {"bad_:", "CBad()", "FREE_CBad()", "void tint(double dHue)", NULL};
const char* const* const CLASSES_badprototype[] = {CBad_def, NULL};

void* bad_CBad(void* pHandle, void** ppArgs)
{
    (void)pHandle;
    (void)ppArgs;
    return NULL;
}

void bad_FREE_CBad(void* pHandle, void** ppArgs)
{
    (void)pHandle;
    (void)ppArgs;
}
