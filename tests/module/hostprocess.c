/* SPDX-FileCopyrightText: The qtutils developers
   SPDX-License-Identifier: MIT */

#include "hostprocess.h"

#include "hostmodule.h"

#include <dlfcn.h>
#include <limits.h>
#include <locale.h>
#include <pthread.h>
#include <signal.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

extern char** environ;

static void print_locale(void)
{
    static const int aiCategories[] = {LC_CTYPE, LC_NUMERIC, LC_TIME, LC_COLLATE, LC_MONETARY, LC_MESSAGES};
    for (size_t u = 0; u < sizeof aiCategories / sizeof aiCategories[0]; u++)
        printf("locale category %d is %s\n", aiCategories[u], setlocale(aiCategories[u], NULL));
    printf("a number is %.1f\n", 1.5);
}

static void print_signals(void)
{
    sigset_t oBlocked;
    pthread_sigmask(SIG_SETMASK, NULL, &oBlocked);
    for (int i = 1; i < NSIG; i++) {
        struct sigaction oAction;
        const char* pcAction = "handled";
        if (sigaction(i, NULL, &oAction) != 0)
            continue;
        if (oAction.sa_handler == SIG_DFL)
            pcAction = "default";
        else if (oAction.sa_handler == SIG_IGN)
            pcAction = "ignored";
        printf("signal %d is %s%s\n", i, pcAction, sigismember(&oBlocked, i) == 1 ? " and blocked" : "");
    }
}

static void print_surroundings(void)
{
    char acFolder[PATH_MAX];
    const mode_t uMask = umask(0);
    umask(uMask);
    printf("mask %o\n", uMask);
    printf("folder %s\n", getcwd(acFolder, sizeof acFolder));
    print_locale();
    print_signals();
    for (char** ppc = environ; *ppc != NULL; ppc++)
        printf("variable %s\n", *ppc);
}

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

static void ignore(int iSignal)
{
    (void)iSignal;
}

static void customize(void)
{
    sigset_t oBlocked;
    signal(SIGPIPE, ignore);
    sigemptyset(&oBlocked);
    sigaddset(&oBlocked, SIGUSR1);
    pthread_sigmask(SIG_BLOCK, &oBlocked, NULL);
    umask(027);
    setlocale(LC_CTYPE, "C.UTF-8");
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
        snprintf(pcResult, ResultSize,
            dlopen(apcFields[1], RTLD_NOW | RTLD_LOCAL) == NULL ? "not loaded" : "loaded");
    else if (strcmp(apcFields[0], "folder") == 0)
        snprintf(pcResult, ResultSize, chdir(apcFields[1]) == 0 ? "there" : "not there");
    else if (strcmp(apcFields[0], "surroundings") == 0)
        print_surroundings();
    else if (strcmp(apcFields[0], "customize") == 0)
        customize();
    else
        return end_process(apcFields);
    return true;
}
