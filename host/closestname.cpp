// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "closestname.h"

#include <algorithm>
#include <cctype>
#include <numeric>

namespace {

bool sameLetter(char cLeft, char cRight)
{
    return std::tolower(static_cast<unsigned char>(cLeft))
        == std::tolower(static_cast<unsigned char>(cRight));
}

} // namespace

std::size_t editDistance(const std::string& sFrom, const std::string& sTo)
{
    std::vector<std::size_t> vRow(sTo.size() + 1);
    std::iota(vRow.begin(), vRow.end(), std::size_t{0});
    for (const char cFrom : sFrom) {
        std::size_t nDiagonal = vRow[0]++;
        for (std::size_t j = 0; j < sTo.size(); ++j) {
            const std::size_t nReplaced = nDiagonal + (sameLetter(cFrom, sTo[j]) ? 0 : 1);
            nDiagonal = vRow[j + 1];
            vRow[j + 1] = std::min({nReplaced, vRow[j] + 1, vRow[j + 1] + 1});
        }
    }
    return vRow.back();
}

const std::string& closestName(const std::string& sName, const std::vector<std::string>& vNames)
{
    return *std::min_element(vNames.begin(), vNames.end(), [&](const auto& sLeft, const auto& sRight) {
        return editDistance(sName, sLeft) < editDistance(sName, sRight);
    });
}
