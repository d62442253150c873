/* SPDX-FileCopyrightText: The qtutils developers
   SPDX-License-Identifier: MIT */

#include "hostprocess.h"

#include "hostmodule.h"

#include <dlfcn.h>
#include <pthread.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/resource.h>
#include <time.h>
#include <unistd.h>

static void limit_memory(int iMegabytes)
{
    unsigned long ulPages = 0;
    struct rlimit oLimit;
    FILE* pFile = fopen("/proc/self/statm", "r");
    if (pFile == NULL || fscanf(pFile, "%lu", &ulPages) != 1)
        abort();
    fclose(pFile);
    oLimit.rlim_cur = ulPages * (rlim_t)sysconf(_SC_PAGESIZE) + (rlim_t)iMegabytes * 1024 * 1024;
    oLimit.rlim_max = oLimit.rlim_cur;
    setrlimit(RLIMIT_AS, &oLimit);
}

static void* last_thread(void* pExitCode)
{
    char acState[100] = "";
    while (strstr(acState, ") Z") == NULL) {
        FILE* pFile = fopen("/proc/self/stat", "r");
        if (pFile == NULL || fgets(acState, sizeof acState, pFile) == NULL)
            abort();
        fclose(pFile);
    }
    exit(*(int*)pExitCode);
}

static void leave(int iExitCode)
{
    static int iKept;
    pthread_t oThread;
    iKept = iExitCode;
    pthread_create(&oThread, NULL, last_thread, &iKept);
    pthread_exit(NULL);
}

/* Turning round: a sleep is never as short as the times that count here. */
static void pass(long lMicroseconds)
{
    struct timespec oBegin;
    struct timespec oNow;
    clock_gettime(CLOCK_MONOTONIC, &oBegin);
    do
        clock_gettime(CLOCK_MONOTONIC, &oNow);
    while ((oNow.tv_sec - oBegin.tv_sec) * 1000000 + (oNow.tv_nsec - oBegin.tv_nsec) / 1000 < lMicroseconds);
}

/* One at a time: the one before is unloaded. */
static void load_library(const char* pcPath, char* pcResult)
{
    static void* pLibrary;
    if (pLibrary != NULL)
        dlclose(pLibrary);
    pLibrary = pcPath == NULL ? NULL : dlopen(pcPath, RTLD_NOW | RTLD_LOCAL);
    snprintf(pcResult, ResultSize, pLibrary == NULL ? "not loaded" : "loaded");
}

static bool end_process(char** apcFields)
{
    if (strcmp(apcFields[0], "exit") == 0)
        exit(atoi(apcFields[1]));
    if (strcmp(apcFields[0], "_exit") == 0)
        _exit(atoi(apcFields[1]));
    if (strcmp(apcFields[0], "quick_exit") == 0)
        quick_exit(atoi(apcFields[1]));
    if (strcmp(apcFields[0], "leave") == 0)
        leave(atoi(apcFields[1]));
    if (strcmp(apcFields[0], "exec") == 0)
        execl("/bin/sh", "sh", "-c", "exit $0", apcFields[1], (char*)NULL);
    return false;
}

bool process_command(char** apcFields, char* pcResult)
{
    if (strcmp(apcFields[0], "env") == 0)
        setenv(apcFields[1], apcFields[2], 1);
    else if (strcmp(apcFields[0], "unenv") == 0)
        unsetenv(apcFields[1]);
    else if (strcmp(apcFields[0], "getenv") == 0)
        snprintf(pcResult, ResultSize, "%s", getenv(apcFields[1]) == NULL ? "unset" : getenv(apcFields[1]));
    else if (strcmp(apcFields[0], "limit") == 0)
        limit_memory(atoi(apcFields[1]));
    else if (strcmp(apcFields[0], "library") == 0)
        load_library(apcFields[1], pcResult);
    else if (strcmp(apcFields[0], "pass") == 0)
        pass(atol(apcFields[1]));
    else if (strcmp(apcFields[0], "folder") == 0)
        snprintf(pcResult, ResultSize, chdir(apcFields[1]) == 0 ? "there" : "not there");
    else
        return end_process(apcFields);
    return true;
}
