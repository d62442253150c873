// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// Checksums of results that are too large to be compared as they are (FNV-1a).
namespace textsum {

constexpr std::uint64_t Begin = 0xcbf29ce484222325;

constexpr std::uint64_t add(std::uint64_t uSum, std::string_view sText)
{
    for (const char c : sText)
        uSum = (uSum ^ static_cast<unsigned char>(c)) * 0x100000001b3;
    return uSum;
}

inline std::string of(const std::vector<int>& viNumbers)
{
    const auto* pcBegin = reinterpret_cast<const char*>(viNumbers.data());
    return std::to_string(add(Begin, {pcBegin, viNumbers.size() * sizeof(int)}));
}

} // namespace textsum
