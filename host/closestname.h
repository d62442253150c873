// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <vector>

/// Number of characters to insert, remove or replace to turn one text into the other; letter case doesn't
/// count.
std::size_t editDistance(const std::string& sFrom, const std::string& sTo);

/// The name that takes the fewest edits to reach from @p sName, the first of equals; @p vNames must not be
/// empty.
const std::string& closestName(const std::string& sName, const std::vector<std::string>& vNames);
