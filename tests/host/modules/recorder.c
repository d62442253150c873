/* SPDX-FileCopyrightText: The qtutils developers
   SPDX-License-Identifier: MIT */

/* A good module of two classes that prints every call, so that a test sees what the host handed over. */

#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

const char* NAMESPACE = "recorder";

static const char* const CRecorder_def[] = {
    "recorder_:",
    "CRecorder(char *pcName)",
    "FREE_CRecorder()",
    "void add(int iNumber)",
    "void greet(char* pcName, char* pcGreeting)",
    "void sum(int* piValues, int iCount, int* piSum)",
    "void scale(float* pfValues, int iCount, float* pfScaled)",
    "void showKept()",
    "void handle()",
    "void block()",
    "void unnamed(int *, int)",
    NULL,
};
static const char* const COther_def[] = {"other_:", "COther()", "FREE_COther()", "void hello(void)", NULL};
const char* const* const CLASSES_recorder[] = {CRecorder_def, COther_def, NULL};

static int iInstances = 0;
static int aiHandles[8];
/* Used after the call that handed them over, as a module with a thread of its own does. */
static const char* pcKeptName = "";
static const int* piKeptValues = NULL;
static const int* piKeptCount = NULL;

void* recorder_CRecorder(void* pHandle, void** ppArgs)
{
    pcKeptName = ppArgs[0];
    printf("construct %s %s\n", pcKeptName, pHandle ? "with a handle" : "without a handle");
    aiHandles[iInstances] = iInstances + 1;
    return &aiHandles[iInstances++];
}

void recorder_FREE_CRecorder(void* pHandle, void** ppArgs)
{
    (void)ppArgs;
    printf("free %d of %s\n", *(int*)pHandle, pcKeptName);
    --iInstances;
}

void recorder_add(void* pHandle, void** ppArgs)
{
    (void)pHandle;
    if (ppArgs[0]) {
        printf("add %d\n", *(int*)ppArgs[0]);
    } else {
        printf("add null\n");
    }
}

void recorder_greet(void* pHandle, void** ppArgs)
{
    (void)pHandle;
    printf("greet <%s>\n", ppArgs[0] ? (char*)ppArgs[0] : "(null)");
    if (ppArgs[1]) {
        strcpy(ppArgs[1], "hello ");
        strcat(ppArgs[1], ppArgs[0]);
    }
}

void recorder_sum(void* pHandle, void** ppArgs)
{
    (void)pHandle;
    piKeptValues = ppArgs[0];
    piKeptCount = ppArgs[1];
    int iSum = 0;
    for (int i = 0; i < *piKeptCount; ++i) {
        iSum += piKeptValues[i];
    }
    *(int*)ppArgs[2] = iSum;
}

void recorder_scale(void* pHandle, void** ppArgs)
{
    (void)pHandle;
    for (int i = 0; i < *(int*)ppArgs[1]; ++i) {
        printf("value %g\n", ((float*)ppArgs[0])[i]);
        ((float*)ppArgs[2])[i] = 2 * ((float*)ppArgs[0])[i];
    }
}

void recorder_showKept(void* pHandle, void** ppArgs)
{
    (void)pHandle;
    (void)ppArgs;
    for (int i = 0; i < *piKeptCount; ++i) {
        printf("kept %d\n", piKeptValues[i]);
    }
}

void recorder_handle(void* pHandle, void** ppArgs)
{
    (void)ppArgs;
    printf("handle %d\n", *(int*)pHandle);
}

/* Never returns, like a call whose answer never comes. */
void recorder_block(void* pHandle, void** ppArgs)
{
    (void)pHandle;
    (void)ppArgs;
    printf("blocked\n");
    fflush(stdout);
    for (;;) {
        pause();
    }
}

void recorder_unnamed(void* pHandle, void** ppArgs)
{
    (void)pHandle;
    *(int*)ppArgs[0] = *(int*)ppArgs[1];
}

void* other_COther(void* pHandle, void** ppArgs)
{
    (void)pHandle;
    (void)ppArgs;
    printf("construct other\n");
    return &aiHandles[7];
}

void other_FREE_COther(void* pHandle, void** ppArgs)
{
    (void)pHandle;
    (void)ppArgs;
    printf("free other\n");
}

void other_hello(void* pHandle, void** ppArgs)
{
    (void)pHandle;
    (void)ppArgs;
    printf("hello from other\n");
}

/* What a module's thread could do while the program ends: the buffers must still be there. */
__attribute__((destructor)) static void useKeptBuffersAtExit(void)
{
    if (piKeptCount) {
        printf("at exit %d\n", piKeptValues[*piKeptCount - 1]);
    }
}
