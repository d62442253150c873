// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QFontMetrics>
#include <QString>

#include <array>

/// Finds the width of the widest of many texts in one font, without laying out each of them.
///
/// Laying out a text costs a hundred times more than adding up its letters' widths. For plain Latin letters
/// the sum and a margin for kerning are an upper bound, so only texts that could still win are laid out.
/// Texts with any other letter always are.
class CWidestText
{
public:
    /// `iLeast` is the width in pixels to start from.
    CWidestText(const QFontMetrics& oFontMetrics, int iLeast);

    void add(const QString& sText);
    /// Width in pixels of the widest text so far, as QFontMetrics::horizontalAdvance() gives it.
    int width() const { return iWidest; }

private:
    bool canWin(const QString& sText);
    int bound(QChar c);

    static constexpr int NumPlainLetters = 0x250; ///< ASCII, Latin-1 and the Latin extensions A and B
    QFontMetrics oMetrics;
    std::array<int, NumPlainLetters> aiBounds{}; ///< 0: not asked for yet
    int iWidest;
};
