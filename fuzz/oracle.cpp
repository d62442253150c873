// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "oracle.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace oracle {

void demand(bool bHolds, const char* pcDemand)
{
    if (!bHolds) {
        std::fprintf(stderr, "broken: %s\n", pcDemand);
        std::abort();
    }
}

void demandOneLine(const std::string& sText)
{
    const bool bControl = std::any_of(sText.begin(), sText.end(),
        [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7f'; });
    demand(!sText.empty() && !bControl, "an error is one line");
}

std::string text(const std::uint8_t* pData, std::size_t nSize)
{
    return {pData, pData + nSize};
}

} // namespace oracle
