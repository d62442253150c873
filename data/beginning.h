// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <string_view>

/// The first letters of a text in UTF-8: so many bytes at most, ending with a whole letter.
QString beginning(std::string_view oText, std::size_t uLength);
