/* SPDX-FileCopyrightText: The qtutils developers
   SPDX-License-Identifier: MIT */

#pragma once

#include "calls.h"

typedef void* construct_function(void* pHandle, void** apArguments);
typedef void call_function(void* pHandle, void** apArguments);

/* A loaded module. */
struct module
{
    void* pLibrary;
    construct_function* pfConstruct;
    call_function* apfCalls[NumEntryPoints]; /* without the constructor */
};

/* Loads the module; null: from the usual places. Returns a code of errors.h, with its detail set. */
int module_load(const char* pcPath, struct module* pModule);
void module_unload(struct module* pModule);

/* Sets this thread's qtutils_error_detail. */
void detail_set(const char* pcFormat, ...) __attribute__((format(printf, 1, 2)));
