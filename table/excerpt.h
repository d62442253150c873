// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QFontMetrics>
#include <QString>

#include <string_view>

/// A part of a long text that looks in a cell as the whole would. Pure functions.
namespace excerpt {

/// The lines in the middle of a text in UTF-8, four at most, of which no more than two are in sight in a low
/// cell: their number is even if that of all lines is. Each is cut off behind `iWidth` pixels or more.
QString ofText(std::string_view oText, const QFontMetrics& oMetrics, int iWidth);

} // namespace excerpt
