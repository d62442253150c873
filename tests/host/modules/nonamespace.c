/* SPDX-FileCopyrightText: The qtutils developers
   SPDX-License-Identifier: MIT */

/* A shared object that is no class module. */

int iUnrelated = 1;
