// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QRawFont>

#include <array>
#include <vector>

class QFont;
class QPainter;

/// Draws texts as runs of glyphs; a letter's glyph and width are looked up once.
class CGlyphs
{
public:
    explicit CGlyphs(const QFont& oFont);

    /// Draws a text whose line stands in the middle of a row of that height; what is right of `fRight` is
    /// left out. Letters beyond Latin are drawn as question marks.
    void draw(
        QPainter& oPainter, const QPointF& oTopLeft, double fHeight, double fRight, const QString& sText);

private:
    static constexpr std::size_t NumLetters = 0x250; // Latin

    QRawFont oRawFont;
    std::array<quint32, NumLetters> auGlyphs{};
    std::array<double, NumLetters> afWidths{};
    std::vector<quint32> vuRun;
    std::vector<QPointF> vPlaces;
};
