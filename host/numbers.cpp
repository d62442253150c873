// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "numbers.h"

#include <array>
#include <charconv>
#include <cmath>

namespace {

// From here on a number is rounded to infinity; up to here it is rounded to the largest float.
constexpr double dTooLarge = 0x1.ffffffp127;

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
    const bool bFits = oNumber && std::abs(*oNumber) < dTooLarge;
    return bFits ? oNumber : std::nullopt;
}

std::string numberText(float fNumber)
{
    std::array<char, 32> acText{};
    const auto oResult = std::to_chars(acText.data(), acText.data() + acText.size(), fNumber);
    return std::string(acText.data(), oResult.ptr);
}
