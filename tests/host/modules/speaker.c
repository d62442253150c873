/* SPDX-FileCopyrightText: The qtutils developers
   SPDX-License-Identifier: MIT */

/* A module that prints what it is told: on either channel, without a line end, or from a thread of its own.
 */

#include <pthread.h>
#include <sched.h>
#include <stdio.h>
#include <string.h>
#include <unistd.h>

const char* NAMESPACE = "speaker";
static const char* const CSpeaker_def[] = {
    "speaker_:",
    "CSpeaker()",
    "FREE_CSpeaker()",
    "void say(char* pcText)",
    "void warn(char* pcText)",
    "void begin(char* pcText)",
    "void sayLater(char* pcText)",
    "void repeat(char* pcText, int iTimes)",
    NULL,
};
const char* const* const CLASSES_speaker[] = {CSpeaker_def, NULL};

static int iHandle;

void* speaker_CSpeaker(void* pHandle, void** ppArgs)
{
    (void)pHandle;
    (void)ppArgs;
    return &iHandle;
}

void speaker_FREE_CSpeaker(void* pHandle, void** ppArgs)
{
    (void)pHandle;
    (void)ppArgs;
}

void speaker_say(void* pHandle, void** ppArgs)
{
    (void)pHandle;
    printf("%s\n", (const char*)ppArgs[0]);
}

void speaker_warn(void* pHandle, void** ppArgs)
{
    (void)pHandle;
    fprintf(stderr, "%s\n", (const char*)ppArgs[0]);
}

void speaker_begin(void* pHandle, void** ppArgs)
{
    (void)pHandle;
    fputs(ppArgs[0], stdout);
}

void speaker_repeat(void* pHandle, void** ppArgs)
{
    for (int i = 0; i < *(int*)ppArgs[1]; ++i) {
        speaker_say(pHandle, ppArgs);
    }
}

/* The state of the main thread is the letter behind the program's name, which stands in brackets. */
static int mainThreadSleeps(void)
{
    char acPath[64];
    char acState[256] = "";
    snprintf(acPath, sizeof acPath, "/proc/self/task/%d/stat", (int)getpid());
    FILE* pFile = fopen(acPath, "r");
    if (pFile) {
        fgets(acState, sizeof acState, pFile);
        fclose(pFile);
    }
    const char* pcBracket = strrchr(acState, ')');
    return pcBracket && pcBracket[2] == 'S';
}

static void* printWhenTheHostSleeps(void* pText)
{
    while (!mainThreadSleeps()) {
        sched_yield();
    }
    printf("%s\n", (const char*)pText);
    fflush(stdout);
    return NULL;
}

void speaker_sayLater(void* pHandle, void** ppArgs)
{
    (void)pHandle;
    pthread_t oThread;
    pthread_create(&oThread, NULL, printWhenTheHostSleeps, ppArgs[0]);
    pthread_detach(oThread);
}
