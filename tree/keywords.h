// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <string>
#include <string_view>

/// The tree's statement and the shortening of keyword texts. Pure functions.
namespace keywords {

/// Topic and keywords of every node, from the keyword table that belongs to an assignment table.
QString query(const QString& sSOMTable);

/// The first keywords of a text with one keyword a line, separated by ", ". With three line feeds or more
/// these are the first three; with two all three, with one only the first, with none the whole text. In
/// UTF-8; the result takes the place of what `oShown` holds.
void shorten(std::string_view oKeywords, std::string& oShown);

} // namespace keywords
