// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "data/CLetterWidths.h"

#include <array>

/// The widths of whole numbers in a font, without laying out each of them. In nearly all fonts the digits are
/// equally wide, so that numbers with the same number of digits are, too.
class CNumberWidths
{
public:
    explicit CNumberWidths(CLetterWidths& oLetterWidths);

    /// In pixels, as QFontMetrics::horizontalAdvance() gives it for the number in decimal.
    int width(int iNumber);

private:
    static constexpr std::size_t NumLengths = 12; ///< up to "-2147483648"

    QFontMetrics oMetrics;
    bool bDigitsAlike;
    std::array<int, NumLengths> aiPositive{}; ///< by the number of letters; 0: not measured yet
    std::array<int, NumLengths> aiNegative{};
};
