/* SPDX-FileCopyrightText: The qtutils developers
   SPDX-License-Identifier: MIT */

/* Compiled with every warning as an error: the interface is valid C by itself. */
#include "binding/mirta_qtutils.h"

_Static_assert(sizeof CNodeBrowser_def == 16 * sizeof(const char*), "fifteen texts and a null pointer");
_Static_assert(sizeof CLASSES_qtutils == 2 * sizeof(const char**), "one class and a null pointer");
