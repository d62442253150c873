/* SPDX-FileCopyrightText: The qtutils developers
   SPDX-License-Identifier: MIT */

/* A module whose list of classes is empty. */

#include <stddef.h>

const char* NAMESPACE = "emptyclasses";
const char* const* const CLASSES_emptyclasses[] = {NULL};
