// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QFontMetricsF>

#include <array>
#include <memory>
#include <optional>

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
        std::unique_ptr<Widths>& pWidths = vpBehind[uBefore];
        if (!pWidths)
            pWidths = std::make_unique<Widths>();
        int& iWidth = (*pWidths)[uLetter];
        return iWidth != 0 ? iWidth : iWidth = measure(uBefore, uLetter);
    }
    /// Whether texts of digits and the signs of numbers and dates keep their width when a digit is exchanged.
    bool areDigitsAlike();
    static bool isNumberSign(unsigned uLetter);

private:
    using Widths = std::array<int, NumLetters>; ///< 0: not laid out yet

    int measure(unsigned uBefore, unsigned uLetter) const;
    bool compareDigits() const;

    QFontMetrics oMetrics;
    QFontMetricsF oExact;
    std::array<std::unique_ptr<Widths>, NumLetters> vpBehind; ///< by the letter before
    std::optional<bool> oDigitsAlike;
};
