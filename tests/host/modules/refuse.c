/* SPDX-FileCopyrightText: The qtutils developers
   SPDX-License-Identifier: MIT */

/* A module whose constructor always fails; its destructor must never be called. */

#include <stddef.h>
#include <stdio.h>

const char* NAMESPACE = "refuse";
static const char* const CRefuse_def[] = {
    "refuse_:", "CRefuse()", "FREE_CRefuse()", "void add(int iNumber)", NULL};
const char* const* const CLASSES_refuse[] = {CRefuse_def, NULL};

void* refuse_CRefuse(void* pHandle, void** ppArgs)
{
    (void)pHandle;
    (void)ppArgs;
    return NULL;
}

void refuse_FREE_CRefuse(void* pHandle, void** ppArgs)
{
    (void)pHandle;
    (void)ppArgs;
    printf("freed what was never built\n");
}

void refuse_add(void* pHandle, void** ppArgs)
{
    (void)pHandle;
    (void)ppArgs;
}
