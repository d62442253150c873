/* SPDX-FileCopyrightText: The qtutils developers
   SPDX-License-Identifier: MIT */

#include "hostmodule.h"

#include "binding/mirta_qtutils.h"
#include "hostarguments.h"

#include <dlfcn.h>
#include <stdatomic.h>
#include <stdbool.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

enum
{
    MostArguments = 8,
    LongestName = 100
};

/* C has no cast from data to function. */
typedef union
{
    void* pSymbol;
    void* (*pfConstruct)(void*, void**);
    void (*pfCall)(void*, void**);
} EntryPoint;

static const char** _Atomic ppcDefinition; /* of the module's one class */
static void* _Atomic pModule;
static void* _Atomic pHandle;
static void* _Atomic pFirstHandle;

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
    const char* pcClass = *atomic_load(&ppcDefinition);
    char acName[LongestName];
    char acSymbol[2 * LongestName];
    function_name(pcPrototype, acName);
    snprintf(acSymbol, sizeof acSymbol, "%.*s%s", (int)strcspn(pcClass, ":"), pcClass, acName);
    return (EntryPoint){dlsym(pModule, acSymbol)};
}

static EntryPoint method(const char* pcMethod)
{
    const char** ppcPrototypes = atomic_load(&ppcDefinition);
    for (int i = 1; ppcPrototypes != NULL && ppcPrototypes[i] != NULL; i++) {
        char acName[LongestName];
        function_name(ppcPrototypes[i], acName);
        if (strcmp(acName, pcMethod) == 0)
            return entry_point(ppcPrototypes[i]);
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
    const char** ppcPrototypes = atomic_load(&ppcDefinition);
    for (int i = 0; ppcPrototypes[i] != NULL; i++)
        printf("%s: %s\n", i == 0 || entry_point(ppcPrototypes[i]).pSymbol != NULL ? "there" : "missing",
            ppcPrototypes[i]);
}

void module_addresses(void)
{
    static const char* const apcSymbols[] = {"CNodeBrowser_def", "NAMESPACE", "CLASSES_qtutils"};
    for (int i = 0; i < 3; i++)
        printf("%zu\n", (size_t)dlsym(pModule, apcSymbols[i]));
}

static void enter(const char* pcMethod, EntryPoint oEntry, void** apSlots, char* pcResult)
{
    if (strcmp(pcMethod, "CNodeBrowser") == 0) {
        void* pBefore = pHandle;
        void* pMade = oEntry.pfConstruct(NULL, apSlots);
        pHandle = pMade;
        if (pFirstHandle == NULL)
            pFirstHandle = pMade;
        if (pMade == NULL)
            append_text(pcResult, "null");
        else
            append_text(pcResult, pMade == pBefore ? "same window" : "window");
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
        argument_make(&aArguments[i], apcFields[i]);
        apSlots[i - 1] = aArguments[i].pSlot;
    }
    enter(apcFields[0], oEntry, bNoArray ? NULL : apSlots, pcResult);
    for (int i = 1; i < iFields; i++) {
        argument_append_results(&aArguments[i], pcResult);
        argument_give_back(&aArguments[i]);
    }
}

void module_use_handle(const char* pcWhich)
{
    static char cNoHandle;
    pHandle = NULL;
    if (strcmp(pcWhich, "first") == 0)
        pHandle = pFirstHandle;
    else if (strcmp(pcWhich, "wrong") == 0)
        pHandle = &cNoHandle;
}
