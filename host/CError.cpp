// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CError.h"

#include <string_view>

namespace {

// \n and \t as scripts write them, others as \x and two digits.
std::string escaped(char c)
{
    constexpr std::string_view svDigits = "0123456789abcdef";
    if (c == '\n') {
        return "\\n";
    }
    if (c == '\t') {
        return "\\t";
    }
    const auto nCode = static_cast<unsigned char>(c);
    return {'\\', 'x', svDigits[nCode / 16], svDigits[nCode % 16]};
}

std::string oneLine(const std::string& sText)
{
    std::string sLine;
    for (const char c : sText) {
        const bool bControl = (c >= 0 && c < ' ') || c == 127;
        sLine += bControl ? escaped(c) : std::string(1, c);
    }
    return sLine;
}

} // namespace

CError::CError(const std::string& sCause, bool bLocated)
    : std::runtime_error(oneLine(sCause))
    , bHasPlace(bLocated)
{
}
