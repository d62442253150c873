// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Values as JSON, the same in every locale.
namespace jsontext {

/// A text in UTF-8 as a string; any other as {"bytes": "..."}, a character for each byte.
std::string text(std::string_view svText);

/// A number; "nan", "inf" and "-inf", which JSON doesn't have, as strings.
std::string number(float fNumber);

/// Seconds with six decimals, from nanoseconds that are not negative.
std::string seconds(long long iNanoseconds);

/// The values, already in JSON, as an array.
std::string array(const std::vector<std::string>& vValues);

std::string array(const std::vector<int>& viValues);
std::string array(const std::vector<float>& vfValues);

} // namespace jsontext
