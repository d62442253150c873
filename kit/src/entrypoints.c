/* SPDX-FileCopyrightText: The qtutils developers
   SPDX-License-Identifier: MIT */

#include "entrypoints.h"

#include "qtutils/errors.h"

#include <dlfcn.h>
#include <limits.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

enum
{
    LongestSymbol = 64
};

/* The calls are made as these prototypes say, so a module with others is refused. */
static const char* const apcPrototypes[NumEntryPoints] = {
    "CNodeBrowser(char *pcSOMDB, char *pcSourceDB)",
    "FREE_CNodeBrowser()",
    "void select(int iSelection)",
    "void getNumRows(int* piNumRows)",
    "void fillDate(int* piDate)",
    "void dateToInt(char* pcDateIn, int* piDateOut)",
    "void setRowColors(float* pfRowColors)",
    "void markRow(char* pcDate, int iTimeFrame)",
    "void getFirstDateInFrame(int* piFirstDateInFrame)",
    "void getFirstDateInSelection(char* pcFirstDateInSelection)",
    "void passNodeHierarchy(int* iaNodes, int iNumChildren, int iNode, int iNumNodes)",
    "void setSOMTable(char *pcSOMTable)",
    "void hideTable()",
    "void show()",
};

/* "nodeBrowser_" and the name before the bracket. */
static void* function_of(void* pLibrary, const char* pcPrototype)
{
    char acSymbol[LongestSymbol];
    const char* pcName = strncmp(pcPrototype, "void ", 5) == 0 ? pcPrototype + 5 : pcPrototype;
    snprintf(acSymbol, sizeof acSymbol, "nodeBrowser_%.*s", (int)strcspn(pcName, "("), pcName);
    return dlsym(pLibrary, acSymbol);
}

/* POSIX has functions in pointers to data. C has no cast for it. */
static void keep_function(struct module* pModule, int iEntry, void* pFunction)
{
    if (iEntry == Construct)
        memcpy(&pModule->pfConstruct, &pFunction, sizeof pFunction);
    else
        memcpy(&pModule->apfCalls[iEntry], &pFunction, sizeof pFunction);
}

static int find_functions(struct module* pModule, const char* pcPath)
{
    const char** ppcNamespace = dlsym(pModule->pLibrary, "NAMESPACE");
    const char** ppcDefinition = dlsym(pModule->pLibrary, "CNodeBrowser_def");
    if (ppcNamespace == NULL || ppcDefinition == NULL || strcmp(*ppcNamespace, "qtutils") != 0) {
        detail_set("%s is not a qtutils module", pcPath);
        return QTUTILS_ERROR_MODULE;
    }
    for (int i = 0; i < NumEntryPoints; i++) {
        const char* pcPrototype = *++ppcDefinition;
        void* pFunction = function_of(pModule->pLibrary, apcPrototypes[i]);
        if (pcPrototype == NULL || strcmp(pcPrototype, apcPrototypes[i]) != 0 || pFunction == NULL) {
            detail_set("%s has no \"%s\"", pcPath, apcPrototypes[i]);
            return QTUTILS_ERROR_MODULE;
        }
        keep_function(pModule, i, pFunction);
    }
    return QTUTILS_OK;
}

/* The module that is installed with this library; a name for the loader to search for where there is none. */
static const char* installed_module(char acPath[PATH_MAX])
{
    Dl_info oThis;
    if (dladdr(apcPrototypes, &oThis) == 0 || realpath(oThis.dli_fname, acPath) == NULL)
        return "qtutils.so";
    char* pcName = strrchr(acPath, '/') + 1;
    const size_t nRoom = (size_t)(acPath + PATH_MAX - pcName);
    if (snprintf(pcName, nRoom, "%s", QTUTILS_MODULE_BESIDE) >= (int)nRoom || access(acPath, F_OK) != 0)
        return "qtutils.so";
    return acPath;
}

static const char* path_of(const char* pcPath, char acInstalled[PATH_MAX])
{
    const char* pcVariable = getenv("QTUTILS_MODULE");
    if (pcPath != NULL)
        return pcPath;
    return pcVariable != NULL && pcVariable[0] != '\0' ? pcVariable : installed_module(acInstalled);
}

int module_load(const char* pcPath, struct module* pModule)
{
    char acInstalled[PATH_MAX];
    const char* pcFile = path_of(pcPath, acInstalled);
    pModule->pLibrary = dlopen(pcFile, RTLD_NOW | RTLD_LOCAL);
    if (pModule->pLibrary == NULL) {
        detail_set("%s", dlerror());
        return QTUTILS_ERROR_MODULE;
    }
    const int iError = find_functions(pModule, pcFile);
    if (iError != QTUTILS_OK)
        module_unload(pModule);
    return iError;
}

void module_unload(struct module* pModule)
{
    dlclose(pModule->pLibrary);
}
