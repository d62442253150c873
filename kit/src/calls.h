/* SPDX-FileCopyrightText: The qtutils developers
   SPDX-License-Identifier: MIT */

#pragma once

/* The module's calls, in the order of its descriptor, for the library and the tracer. Valid C and C++. */
enum entry_point
{
    Construct,
    Free,
    Select,
    GetNumRows,
    FillDate,
    DateToInt,
    SetRowColors,
    MarkRow,
    GetFirstDateInFrame,
    GetFirstDateInSelection,
    PassNodeHierarchy,
    SetSOMTable,
    HideTable,
    Show,
    NumEntryPoints
};
