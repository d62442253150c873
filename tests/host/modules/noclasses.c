/* SPDX-FileCopyrightText: The qtutils developers
   SPDX-License-Identifier: MIT */

/* A module that names its namespace and describes no class. */

const char* NAMESPACE = "noclasses";
