// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <vector>

/// Completion of the word before the cursor.
struct SCompletion
{
    std::string sInsert; ///< what to add at the cursor; ends with a blank when the word is then complete
    std::vector<std::string> vMatches; ///< the candidates that begin with the word
};

/// Completes the last word of @p sLine, which ends at the cursor, with one of @p vCandidates.
SCompletion complete(const std::string& sLine, const std::vector<std::string>& vCandidates);
