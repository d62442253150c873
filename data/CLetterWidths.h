// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QFontMetricsF>

#include <optional>
#include <vector>

/// Upper bounds of how much room the letters of a font take, for texts too many to lay out. Every pair of
/// letters is laid out once, when it first comes. [ui-thread]
///
/// Knows ASCII, Latin-1 and Latin Extended-A, whose widths depend on nothing but their neighbours.
class CLetterWidths
{
public:
    static constexpr unsigned NumLetters = 0x180;

    explicit CLetterWidths(const QFontMetrics& oFontMetrics);

    const QFontMetrics& metrics() const { return oMetrics; }
    /// Sixty-fourths of a pixel, at least, that the letter takes behind another one, or at the beginning (0).
    /// Both must be smaller than NumLetters.
    int after(unsigned uBefore, unsigned uLetter)
    {
        int& iWidth = viWidths[uBefore * NumLetters + uLetter];
        return iWidth != 0 ? iWidth : iWidth = measure(uBefore, uLetter);
    }
    /// Whether texts of digits and the signs of numbers and dates keep their width when a digit is exchanged.
    bool areDigitsAlike();
    static bool isNumberSign(unsigned uLetter);

private:
    int measure(unsigned uBefore, unsigned uLetter) const;
    bool compareDigits() const;

    QFontMetrics oMetrics;
    QFontMetricsF oExact;
    std::vector<int> viWidths; ///< 0: not laid out yet
    std::optional<bool> oDigitsAlike;
};
