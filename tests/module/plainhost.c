/* SPDX-FileCopyrightText: The qtutils developers
   SPDX-License-Identifier: MIT */

/* A host in plain C that obeys the commands of its standard input, one a line, the fields separated by tabs.
   Each command is answered by a line that begins with "=== "; what the module prints stands before it.
   Standard input at its end ends the host. */

#include "hostarguments.h"
#include "hostcolors.h"
#include "hostmodule.h"
#include "hostprobe.h"
#include "hostprocess.h"
#include "hostsurroundings.h"

#include <pthread.h>
#include <signal.h>
#include <stdatomic.h>
#include <stdbool.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

enum
{
    LongestLine = 8192,
    MostFields = 16,
    MostThreads = 16
};

struct Job
{
    pthread_t oThread;
    atomic_int iThreadId;
    atomic_bool bFinished;
    char acLine[LongestLine];
    char* apcFields[MostFields];
    int iFields;
    char acResult[ResultSize];
};

static struct Job aJobs[MostThreads];
static struct Job oLast; /* runs when the process exits */

static void run(char** apcFields, int iFields, char* pcResult);

/* "repeat N METHOD ...": the method's answers, which are to be all the same. */
static void repeat(char** apcFields, int iFields, char* pcResult)
{
    char acOther[ResultSize];
    module_call(apcFields + 2, iFields - 2, pcResult);
    for (int i = atoi(apcFields[1]); i > 1; i--) {
        module_call(apcFields + 2, iFields - 2, acOther);
        if (strcmp(acOther, pcResult) != 0) {
            snprintf(pcResult, ResultSize, "differs: %.100s", acOther);
            return;
        }
    }
}

/* "until N METHOD ...": calls the method now and again until thread N has finished; the result is how often
   it was. */
static void until(char** apcFields, int iFields, char* pcResult)
{
    char acResult[ResultSize];
    const struct timespec oPace = {.tv_nsec = 100000};
    int iCalls = 0;
    for (; !atomic_load(&aJobs[atoi(apcFields[1])].bFinished); iCalls++) {
        module_call(apcFields + 2, iFields - 2, acResult);
        nanosleep(&oPace, NULL); /* wait-reason: the pace of a host, slower than what is handled */
    }
    snprintf(pcResult, ResultSize, "%d", iCalls);
}

static void* job_body(void* pArgument)
{
    struct Job* pJob = pArgument;
    atomic_store(&pJob->iThreadId, gettid());
    run(pJob->apcFields, pJob->iFields, pJob->acResult);
    atomic_store(&pJob->bFinished, true);
    return NULL;
}

static void keep_command(struct Job* pJob, char** apcFields, int iFields)
{
    char* pcNext = pJob->acLine;
    pJob->iFields = iFields;
    for (int i = 0; i < iFields; i++) {
        pJob->apcFields[i] = strcpy(pcNext, apcFields[i]);
        pcNext += strlen(pcNext) + 1;
    }
}

static void run_last(void)
{
    run(oLast.apcFields, oLast.iFields, oLast.acResult);
    printf("at exit %s\n", oLast.acResult);
    fflush(stdout);
}

/* "atexit COMMAND ...": has a command run when the process exits, which prints "at exit" and the result. */
static void run_at_exit(char** apcFields, int iFields)
{
    keep_command(&oLast, apcFields + 1, iFields - 1);
    atexit(run_last);
}

/* "start N COMMAND ...": runs a command in another thread, which gets the number N. */
static void start(char** apcFields, int iFields, char* pcResult)
{
    struct Job* pJob = &aJobs[atoi(apcFields[1])];
    keep_command(pJob, apcFields + 2, iFields - 2);
    atomic_store(&pJob->iThreadId, 0);
    atomic_store(&pJob->bFinished, false);
    pthread_create(&pJob->oThread, NULL, job_body, pJob);
    while (atomic_load(&pJob->iThreadId) == 0)
        sched_yield();
    snprintf(pcResult, ResultSize, "%d", atomic_load(&pJob->iThreadId));
}

/* "join N": waits for thread N; its result. */
static void join(char** apcFields, char* pcResult)
{
    struct Job* pJob = &aJobs[atoi(apcFields[1])];
    pthread_join(pJob->oThread, NULL);
    snprintf(pcResult, ResultSize, "%s", pJob->acResult);
}

/* "fork COMMAND ...": runs a command in a child, which prints "child" and the result and ends, unless the
   command ends it. The result is "exited CODE" or "killed by SIGNAL". */
static void fork_child(char** apcFields, int iFields, char* pcResult)
{
    int iStatus = 0;
    const pid_t iChild = fork();
    if (iChild == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        run(apcFields + 1, iFields - 1, pcResult);
        printf("child %s\n", pcResult);
        fflush(stdout);
        _exit(0);
    }
    waitpid(iChild, &iStatus, 0);
    if (WIFEXITED(iStatus))
        snprintf(pcResult, ResultSize, "exited %d", WEXITSTATUS(iStatus));
    else
        snprintf(pcResult, ResultSize, "killed by %d", WTERMSIG(iStatus));
}

static void module_command(char** apcFields, int iFields, char* pcResult)
{
    if (strcmp(apcFields[0], "load") == 0)
        module_load(apcFields[1], pcResult);
    else if (strcmp(apcFields[0], "unload") == 0)
        module_unload(pcResult);
    else if (strcmp(apcFields[0], "describe") == 0)
        module_describe();
    else if (strcmp(apcFields[0], "addresses") == 0)
        module_addresses();
    else if (strcmp(apcFields[0], "handle") == 0)
        module_use_handle(apcFields[1]);
    else if (strcmp(apcFields[0], "call") == 0)
        module_call(apcFields + 1, iFields - 1, pcResult);
    else if (strcmp(apcFields[0], "repeat") == 0)
        repeat(apcFields, iFields, pcResult);
    else if (strcmp(apcFields[0], "until") == 0)
        until(apcFields, iFields, pcResult);
    else
        snprintf(pcResult, ResultSize, "no such command");
}

static void run(char** apcFields, int iFields, char* pcResult)
{
    pcResult[0] = '\0';
    if (process_command(apcFields, pcResult) || probe_command(apcFields, iFields, pcResult)
        || colors_command(apcFields) || arguments_command(apcFields)
        || surroundings_command(apcFields, iFields, pcResult))
        return;
    if (strcmp(apcFields[0], "start") == 0)
        start(apcFields, iFields, pcResult);
    else if (strcmp(apcFields[0], "finished") == 0)
        snprintf(pcResult, ResultSize, atomic_load(&aJobs[atoi(apcFields[1])].bFinished) ? "yes" : "no");
    else if (strcmp(apcFields[0], "join") == 0)
        join(apcFields, pcResult);
    else if (strcmp(apcFields[0], "atexit") == 0)
        run_at_exit(apcFields, iFields);
    else if (strcmp(apcFields[0], "fork") == 0)
        fork_child(apcFields, iFields, pcResult);
    else
        module_command(apcFields, iFields, pcResult);
}

int main(void)
{
    static char acLine[LongestLine];
    static char acResult[ResultSize];
    while (fgets(acLine, sizeof acLine, stdin) != NULL) {
        char* apcFields[MostFields] = {NULL};
        char* pcRest = acLine;
        int iFields = 0;
        acLine[strcspn(acLine, "\n")] = '\0';
        while (pcRest != NULL && iFields < MostFields)
            apcFields[iFields++] = strsep(&pcRest, "\t");
        if (strcmp(apcFields[0], "return") == 0)
            return atoi(apcFields[1]);
        run(apcFields, iFields, acResult);
        printf("=== %s\n", acResult);
        fflush(stdout);
    }
    return 0;
}
