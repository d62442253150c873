/* SPDX-FileCopyrightText: The qtutils developers
   SPDX-License-Identifier: MIT */

#include "hostmodule.h"

#include "binding/mirta_qtutils.h"
#include "hostcolors.h"

#include <dlfcn.h>
#include <stdbool.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

enum
{
    MostArguments = 8,
    Untouched = -7777,
    CanarySize = 16,
    LongestName = 100
};

/* C has no cast from data to function. */
typedef union
{
    void* pSymbol;
    void* (*pfConstruct)(void*, void**);
    void (*pfCall)(void*, void**);
} EntryPoint;

static const char** ppcDefinition; /* of the module's one class */
static void* pModule;
static void* pHandle;

struct Argument
{
    void* pSlot; /* null: the host passes null */
    size_t uSize; /* of the memory at pSlot */
    int iResults; /* number of int results */
    bool bText; /* a text is the result */
    bool bKept;
};

/* The name of the function in a prototype such as "void select(int iSelection)". */
static void function_name(const char* pcPrototype, char* pcName)
{
    const size_t uLength = strcspn(pcPrototype, "(");
    size_t uBegin = uLength;
    while (uBegin > 0 && pcPrototype[uBegin - 1] != ' ')
        uBegin--;
    snprintf(pcName, LongestName, "%.*s", (int)(uLength - uBegin), pcPrototype + uBegin);
}

static EntryPoint entry_point(const char* pcPrototype)
{
    char acName[LongestName];
    char acSymbol[2 * LongestName];
    function_name(pcPrototype, acName);
    snprintf(
        acSymbol, sizeof acSymbol, "%.*s%s", (int)strcspn(ppcDefinition[0], ":"), ppcDefinition[0], acName);
    return (EntryPoint){dlsym(pModule, acSymbol)};
}

static EntryPoint method(const char* pcMethod)
{
    for (int i = 1; ppcDefinition != NULL && ppcDefinition[i] != NULL; i++) {
        char acName[LongestName];
        function_name(ppcDefinition[i], acName);
        if (strcmp(acName, pcMethod) == 0)
            return entry_point(ppcDefinition[i]);
    }
    return (EntryPoint){NULL};
}

void module_load(const char* pcPath, char* pcResult)
{
    const char*** pppcClasses;
    pModule = dlopen(pcPath, RTLD_NOW | RTLD_LOCAL);
    if (pModule == NULL) {
        snprintf(pcResult, ResultSize, "%s", dlerror());
        return;
    }
    pppcClasses = dlsym(pModule, "CLASSES_qtutils");
    ppcDefinition = pppcClasses == NULL ? NULL : pppcClasses[0];
    snprintf(pcResult, ResultSize, ppcDefinition == NULL ? "no class" : "loaded");
}

void module_unload(char* pcResult)
{
    const bool bUnloaded = pModule != NULL && dlclose(pModule) == 0;
    pModule = NULL;
    ppcDefinition = NULL;
    snprintf(pcResult, ResultSize, bUnloaded ? "unloaded" : "not loaded");
}

void module_describe(void)
{
    const char** ppcNamespace = dlsym(pModule, "NAMESPACE");
    const char*** pppcClasses = dlsym(pModule, "CLASSES_qtutils");
    printf("namespace %s\n", *ppcNamespace);
    printf(
        "%s\n", (const void*)pppcClasses[0] == dlsym(pModule, "CNodeBrowser_def") ? "class" : "other class");
    printf("%s\n", pppcClasses[1] == NULL ? "end of classes" : "further class");
    for (int i = 0; ppcDefinition[i] != NULL; i++)
        printf("%s: %s\n", i == 0 || entry_point(ppcDefinition[i]).pSymbol != NULL ? "there" : "missing",
            ppcDefinition[i]);
}

void module_addresses(void)
{
    static const char* const apcSymbols[] = {"CNodeBrowser_def", "NAMESPACE", "CLASSES_qtutils"};
    for (int i = 0; i < 3; i++)
        printf("%zu\n", (size_t)dlsym(pModule, apcSymbols[i]));
}

static void* memory(struct Argument* pArgument, size_t uSize)
{
    pArgument->uSize = uSize;
    pArgument->pSlot = malloc(uSize);
    if (pArgument->pSlot == NULL)
        abort();
    return pArgument->pSlot;
}

static void int_array(struct Argument* pArgument, const char* pcNumbers)
{
    int* piNumbers = memory(pArgument, (strlen(pcNumbers) + 1) * sizeof(int));
    for (char* pcNext = NULL; *pcNumbers != '\0'; pcNumbers = *pcNext == ',' ? pcNext + 1 : pcNext)
        *piNumbers++ = (int)strtol(pcNumbers, &pcNext, 10);
}

static void text(struct Argument* pArgument, const char* pcText)
{
    strcpy(memory(pArgument, strlen(pcText) + 1), pcText);
}

static void repeated_text(struct Argument* pArgument, const char* pcValue)
{
    const size_t uTimes = (size_t)atol(pcValue);
    const char* pcOnce = strchr(pcValue, 'x') + 1;
    const size_t uLength = strlen(pcOnce);
    char* pcText = memory(pArgument, uTimes * uLength + 1);
    pcText[0] = '\0';
    for (size_t u = 0; u < uTimes; u++)
        memcpy(pcText + u * uLength, pcOnce, uLength + 1);
}

static void int_results(struct Argument* pArgument, int iCount)
{
    int* piResults = memory(pArgument, (size_t)iCount * sizeof(int));
    pArgument->iResults = iCount;
    for (int i = 0; i < iCount; i++)
        piResults[i] = Untouched;
}

static void text_result(struct Argument* pArgument, size_t uSize)
{
    char* pcBuffer = memory(pArgument, uSize + CanarySize);
    pArgument->bText = true;
    memset(pcBuffer, '~', uSize + CanarySize);
    strcpy(pcBuffer, "untouched");
}

static void make_argument(struct Argument* pArgument, const char* pcField)
{
    const char* pcValue;
    memset(pArgument, 0, sizeof *pArgument);
    if (strcmp(pcField, "null") == 0)
        return;
    pcValue = strchr(pcField, ':') + 1;
    if (pcField[0] == 'i' || pcField[0] == 'n')
        int_array(pArgument, pcValue);
    else if (pcField[0] == 't' || pcField[0] == 'k')
        text(pArgument, pcValue);
    else if (pcField[0] == 'r')
        repeated_text(pArgument, pcValue);
    else if (pcField[0] == 'c')
        pArgument->pSlot = colors_array(pcValue);
    else if (pcField[0] == 'o' && pcField[1] == 'i')
        int_results(pArgument, atoi(pcValue));
    else if (pcField[0] == 'o' && pcField[1] == 't')
        text_result(pArgument, (size_t)atoi(pcValue));
    else
        abort();
    if (pcField[0] == 'k' || pcField[0] == 'c')
        pArgument->bKept = true;
}

static void append(char* pcResult, const char* pcText)
{
    const size_t uLength = strlen(pcResult);
    snprintf(pcResult + uLength, ResultSize - uLength, "%s%s", uLength == 0 ? "" : " ", pcText);
}

static void append_results(const struct Argument* pArgument, char* pcResult)
{
    const int* piResults = pArgument->pSlot;
    const char* pcText = pArgument->pSlot;
    for (int i = 0; i < pArgument->iResults; i++) {
        char acNumber[20];
        snprintf(acNumber, sizeof acNumber, "%d", piResults[i]);
        append(pcResult, acNumber);
    }
    if (!pArgument->bText)
        return;
    append(pcResult, pcText);
    for (size_t u = pArgument->uSize - CanarySize; u < pArgument->uSize; u++)
        if (pcText[u] != '~') {
            append(pcResult, "OVERRUN");
            return;
        }
}

static void give_back(struct Argument* pArgument)
{
    if (pArgument->pSlot == NULL || pArgument->bKept)
        return;
    memset(pArgument->pSlot, 0x5a, pArgument->uSize);
    free(pArgument->pSlot);
}

static void enter(const char* pcMethod, EntryPoint oEntry, void** apSlots, char* pcResult)
{
    if (strcmp(pcMethod, "CNodeBrowser") == 0) {
        void* pBefore = pHandle;
        pHandle = oEntry.pfConstruct(NULL, apSlots);
        if (pHandle == NULL)
            append(pcResult, "null");
        else
            append(pcResult, pHandle == pBefore ? "same window" : "window");
    } else {
        oEntry.pfCall(pHandle, apSlots);
    }
}

void module_call(char** apcFields, int iFields, char* pcResult)
{
    struct Argument aArguments[MostArguments];
    void* apSlots[MostArguments];
    const EntryPoint oEntry = method(apcFields[0]);
    const bool bNoArray = iFields == 2 && strcmp(apcFields[1], "no array") == 0;
    pcResult[0] = '\0';
    if (bNoArray)
        iFields = 1;
    if (oEntry.pSymbol == NULL || iFields > MostArguments) {
        snprintf(pcResult, ResultSize, "no such method");
        return;
    }
    for (int i = 1; i < iFields; i++) {
        make_argument(&aArguments[i], apcFields[i]);
        apSlots[i - 1] = aArguments[i].pSlot;
    }
    enter(apcFields[0], oEntry, bNoArray ? NULL : apSlots, pcResult);
    for (int i = 1; i < iFields; i++) {
        append_results(&aArguments[i], pcResult);
        give_back(&aArguments[i]);
    }
}

void module_forget_handle(void)
{
    pHandle = NULL;
}
