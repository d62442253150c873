// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <optional>
#include <string>

/// The whole text as an int; nothing when it isn't one or doesn't fit.
std::optional<int> parseInt(const std::string& sText);

/// The whole text as a finite number that a float can hold; nothing when it isn't one.
std::optional<double> parseNumber(const std::string& sText);

/// The shortest text that reads back as the same float.
std::string numberText(float fNumber);
