// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "completion.h"

#include <algorithm>

SCompletion complete(const std::string& sLine, const std::vector<std::string>& vCandidates)
{
    const std::size_t nBefore = sLine.find_last_of(" \t([,;*");
    const std::string sWord = nBefore == std::string::npos ? sLine : sLine.substr(nBefore + 1);
    SCompletion oCompletion;
    for (const std::string& sCandidate : vCandidates) {
        if (sCandidate.compare(0, sWord.size(), sWord) == 0) {
            oCompletion.vMatches.push_back(sCandidate);
        }
    }
    if (oCompletion.vMatches.empty()) {
        return oCompletion;
    }
    std::string sCommon = oCompletion.vMatches.front();
    for (const std::string& sMatch : oCompletion.vMatches) {
        const auto oDiffer = std::mismatch(sCommon.begin(), sCommon.end(), sMatch.begin(), sMatch.end());
        sCommon.erase(oDiffer.first, sCommon.end());
    }
    oCompletion.sInsert = sCommon.substr(sWord.size()) + (oCompletion.vMatches.size() == 1 ? " " : "");
    return oCompletion;
}
