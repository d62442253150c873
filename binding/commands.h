// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

// The command events that carry host calls to the browser window. No Qt here: the numbers and records are
// shared by the entry points and by the window.

/// Event types of the commands. The numbers are part of the module's contract.
namespace commands {
constexpr int Select = 1001; ///< payload: int*, the node number
constexpr int SetSOMTable = 1002; ///< payload: const char*, the table name
constexpr int Terminate = 1003; ///< no payload
constexpr int FillDate = 1004; ///< payload: int*, the host's array; two-phase answer
constexpr int SetRowColors = 1005; ///< payload: float*, the host's array
constexpr int MarkRow = 1006; ///< payload: MarkRequest*
constexpr int Show = 1007; ///< no payload
constexpr int GetNumRows = 1008; ///< payload: int*, the host's result; answered
constexpr int GetFirstDateInFrame = 1009; ///< payload: int*, the host's result; answered
constexpr int GetFirstDateInSelection = 1010; ///< payload: char*, the host's buffer; answered
constexpr int PassNodeHierarchy = 1011; ///< payload: const CNodeLists*
constexpr int HideTable = 1012; ///< no payload
} // namespace commands

/// Payload of commands::MarkRow.
struct MarkRequest
{
    /// Date text "YYYY-MM-DD HH:MM:SS"; the host's, valid until the command has been handled.
    char* pcDate;
    /// Length of the time frame in units of 3660 seconds; 0 or less stands for ten days.
    int iTimeFrame;
};
