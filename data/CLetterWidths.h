// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QFontMetricsF>

#include <cstdlib>
#include <memory>
#include <optional>
#include <string_view>

/// Upper bounds of how much room the letters of a font take, for texts too many to lay out. Every pair of
/// letters is laid out once, when it first comes. [ui-thread]
///
/// Knows ASCII, Latin-1 and Latin Extended-A, whose widths depend on nothing but their neighbours.
class CLetterWidths
{
public:
    static constexpr unsigned NumLetters = 0x180;

    explicit CLetterWidths(const QFontMetrics& oFontMetrics);
    /// Those that somebody has already, if there are any for this font.
    static std::shared_ptr<CLetterWidths> shared(const QFontMetrics& oFontMetrics);

    const QFontMetrics& metrics() const { return oMetrics; }
    /// Sixty-fourths of a pixel, at least, that the letter takes behind another one, or at the beginning (0).
    /// Both must be smaller than NumLetters.
    int after(unsigned uBefore, unsigned uLetter)
    {
        int& iWidth = pWidths.get()[uBefore * NumLetters + uLetter];
        return iWidth != 0 ? iWidth : iWidth = measure(uBefore, uLetter);
    }
    /// Whether texts of digits and the signs of numbers and dates keep their width when a digit is exchanged.
    bool areDigitsAlike();
    static constexpr bool isNumberSign(unsigned uLetter)
    {
        return uLetter < NumLetters && NumberSigns.find(char16_t(uLetter)) != std::u16string_view::npos;
    }

private:
    static constexpr std::u16string_view NumberSigns = u" .,:-/+";

    int measure(unsigned uBefore, unsigned uLetter) const;
    bool compareDigits() const;

    QFontMetrics oMetrics;
    QFontMetricsF oExact;
    // By the letter before and the letter; 0: not laid out yet. From calloc(), so that only what is used
    // takes memory.
    std::unique_ptr<int, decltype(&std::free)> pWidths;
    std::optional<bool> oDigitsAlike;
};
