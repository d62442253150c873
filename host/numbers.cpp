// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "numbers.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace {

template <typename T> std::optional<T> parseWhole(const std::string& sText)
{
    T tValue{};
    const char* pcEnd = sText.data() + sText.size();
    const auto [pcRead, eError] = std::from_chars(sText.data(), pcEnd, tValue);
    return eError == std::errc() && pcRead == pcEnd ? std::optional<T>(tValue) : std::nullopt;
}

} // namespace

std::optional<int> parseInt(const std::string& sText)
{
    return parseWhole<int>(sText);
}

std::optional<double> parseNumber(const std::string& sText)
{
    const std::optional<double> oNumber = parseWhole<double>(sText);
    // Also false for "nan", which from_chars reads.
    const bool bFits = oNumber && std::abs(*oNumber) <= std::numeric_limits<float>::max();
    return bFits ? oNumber : std::nullopt;
}

std::string numberText(float fNumber)
{
    std::array<char, 32> acText{};
    const auto oResult = std::to_chars(acText.data(), acText.data() + acText.size(), fNumber);
    return std::string(acText.data(), oResult.ptr);
}
