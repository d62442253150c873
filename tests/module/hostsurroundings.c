/* SPDX-FileCopyrightText: The qtutils developers
   SPDX-License-Identifier: MIT */

#include "hostsurroundings.h"

#include "hostmodule.h"

#include <dirent.h>
#include <fcntl.h>
#include <fenv.h>
#include <limits.h>
#include <locale.h>
#include <pthread.h>
#include <sched.h>
#include <signal.h>
#include <stdatomic.h>
#include <stdio.h>
#include <stdio_ext.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>
#include <unistd.h>
#include <xmmintrin.h>

enum
{
    MostCaught = 200,
    OwnDescriptor = 200
};

/* Set by the C library in every action that it installs. */
static const unsigned Restorer = 0x04000000;

extern char** environ;

static atomic_int iCaught;
static atomic_int aiCaughtBy[MostCaught]; /* 0: not written yet */
static pthread_mutex_t oMutex = PTHREAD_MUTEX_INITIALIZER;
static pthread_cond_t oChanged = PTHREAD_COND_INITIALIZER;
static bool bLetGo;

static void count(int iSignal)
{
    const int i = atomic_fetch_add(&iCaught, 1);
    (void)iSignal;
    if (i < MostCaught)
        aiCaughtBy[i] = gettid();
}

static void append_signals(char* pcText, const sigset_t* pSignals)
{
    for (int i = 1; i < NSIG; i++)
        if (sigismember(pSignals, i) == 1)
            sprintf(pcText + strlen(pcText), " %d", i);
}

static void print_signals(void)
{
    for (int i = 1; i < NSIG; i++) {
        struct sigaction oAction;
        char acBlocked[ResultSize] = "";
        const char* pcAction = "handled";
        if (sigaction(i, NULL, &oAction) != 0)
            continue;
        append_signals(acBlocked, &oAction.sa_mask);
        if (oAction.sa_handler == SIG_DFL)
            pcAction = "default";
        else if (oAction.sa_handler == SIG_IGN)
            pcAction = "ignored";
        printf("signal %d is %s, flags %x, blocks%s\n", i, pcAction, (unsigned)oAction.sa_flags & ~Restorer,
            acBlocked);
        if (oAction.sa_handler == count)
            printf("signal %d is counted\n", i);
    }
}

/* Signal mask and floating-point mode; the exceptions that have come since the start don't belong to it. */
static void thread_state(char* pcText)
{
    sigset_t oBlocked;
    unsigned short usControl;
    __asm__("fnstcw %0" : "=m"(usControl));
    pthread_sigmask(SIG_SETMASK, NULL, &oBlocked);
    sprintf(pcText, "rounding %x, traps %x, mxcsr %x, control word %x, blocked", (unsigned)fegetround(),
        (unsigned)fegetexcept(), _mm_getcsr() & ~(unsigned)_MM_EXCEPT_MASK, usControl);
    append_signals(pcText, &oBlocked);
}

static void print_stream(const char* pcName, FILE* pStream)
{
    if (__fbufsize(pStream) <= 1)
        printf("%s: unbuffered\n", pcName);
    else
        printf("%s: %zu bytes at %p, %s\n", pcName, __fbufsize(pStream), (void*)pStream->_IO_buf_base,
            __flbf(pStream) ? "by lines" : "when full");
}

static void print_descriptors(void)
{
    DIR* pFolder = opendir("/proc/self/fd");
    if (pFolder == NULL)
        abort();
    for (const struct dirent* pEntry = readdir(pFolder); pEntry != NULL; pEntry = readdir(pFolder)) {
        char acTarget[PATH_MAX] = "";
        const int iDescriptor = atoi(pEntry->d_name);
        if (pEntry->d_name[0] == '.' || iDescriptor == dirfd(pFolder)
            || readlinkat(dirfd(pFolder), pEntry->d_name, acTarget, sizeof acTarget - 1) < 0)
            continue;
        printf("descriptor %d is %s at %ld, %o, %s\n", iDescriptor, acTarget,
            (long)lseek(iDescriptor, 0, SEEK_CUR), (unsigned)fcntl(iDescriptor, F_GETFL),
            fcntl(iDescriptor, F_GETFD) == FD_CLOEXEC ? "closed in programs" : "open in programs");
    }
    closedir(pFolder);
}

static void print_surroundings(void)
{
    char acText[ResultSize];
    const mode_t uMask = umask(0);
    umask(uMask);
    printf("mask %o\n", uMask);
    printf("folder %s\n", getcwd(acText, sizeof acText));
    printf("locale %s, a number is %.1f\n", setlocale(LC_ALL, NULL), 1.5);
    print_signals();
    thread_state(acText);
    printf("thread: %s\n", acText);
    print_stream("input", stdin);
    print_stream("output", stdout);
    print_stream("errors", stderr);
    print_descriptors();
    for (char** ppc = environ; *ppc != NULL; ppc++)
        printf("variable %s\n", *ppc);
}

static void handle(int iSignal)
{
    struct sigaction oAction = {.sa_handler = count, .sa_flags = SA_RESTART | SA_NODEFER};
    sigaddset(&oAction.sa_mask, SIGUSR2);
    sigaction(iSignal, &oAction, NULL);
}

static void block(int iSignal)
{
    sigset_t oBlocked;
    sigemptyset(&oBlocked);
    sigaddset(&oBlocked, iSignal);
    pthread_sigmask(SIG_BLOCK, &oBlocked, NULL);
}

static void customize_thread(int iRounding, int iSignal)
{
    unsigned short usControl = 0x27f; /* double precision instead of the extended one */
    __asm__("fldcw %0" : : "m"(usControl));
    _mm_setcsr(_mm_getcsr() | 0x8040); /* tiny numbers are zero */
    fesetround(iRounding);
    feenableexcept(FE_DIVBYZERO | FE_INVALID | FE_OVERFLOW);
    block(iSignal);
}

static void customize(void)
{
    static char acOutput[3 * BUFSIZ];
    static char acErrors[5 * BUFSIZ];
    const int iFolder = open("/", O_PATH);
    handle(SIGPIPE);
    handle(SIGCHLD);
    signal(SIGINT, SIG_IGN);
    customize_thread(FE_DOWNWARD, SIGUSR1);
    umask(027);
    setlocale(LC_CTYPE, "C.UTF-8");
    setlocale(LC_PAPER, "C.UTF-8");
    setvbuf(stdout, acOutput, _IOLBF, sizeof acOutput);
    setvbuf(stderr, acErrors, _IOLBF, sizeof acErrors);
    dup2(iFolder, OwnDescriptor);
    close(iFolder);
}

static void hold(char** apcFields, int iFields, char* pcResult)
{
    char acBefore[ResultSize];
    customize_thread(FE_UPWARD, SIGUSR2);
    thread_state(acBefore);
    if (iFields > 1)
        module_call(apcFields + 1, iFields - 1, pcResult);
    pthread_mutex_lock(&oMutex);
    while (!bLetGo)
        pthread_cond_wait(&oChanged, &oMutex);
    pthread_mutex_unlock(&oMutex);
    thread_state(pcResult);
    if (strcmp(pcResult, acBefore) == 0)
        strcpy(pcResult, "kept");
}

static void let_go(void)
{
    pthread_mutex_lock(&oMutex);
    bLetGo = true;
    pthread_mutex_unlock(&oMutex);
    pthread_cond_broadcast(&oChanged);
}

static void caught(char* pcResult)
{
    const int iCount = atomic_load(&iCaught);
    sprintf(pcResult, "%d:", iCount);
    for (int i = 0; i < iCount && i < MostCaught; i++) {
        while (aiCaughtBy[i] == 0)
            sched_yield();
        sprintf(pcResult + strlen(pcResult), " %d", aiCaughtBy[i]);
    }
}

bool surroundings_command(char** apcFields, int iFields, char* pcResult)
{
    if (strcmp(apcFields[0], "surroundings") == 0)
        print_surroundings();
    else if (strcmp(apcFields[0], "customize") == 0)
        customize();
    else if (strcmp(apcFields[0], "hold") == 0)
        hold(apcFields, iFields, pcResult);
    else if (strcmp(apcFields[0], "let go") == 0)
        let_go();
    else if (strcmp(apcFields[0], "catch") == 0)
        handle(atoi(apcFields[1]));
    else if (strcmp(apcFields[0], "caught") == 0)
        caught(pcResult);
    else if (strcmp(apcFields[0], "block") == 0)
        block(atoi(apcFields[1]));
    else
        return false;
    return true;
}
