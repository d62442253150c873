// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CGlyphs.h"

#include <QFont>
#include <QGlyphRun>
#include <QPainter>

CGlyphs::CGlyphs(const QFont& oFont)
    : oRawFont(QRawFont::fromFont(oFont))
{
    for (std::size_t u = 0; u < NumLetters; u++) {
        const QList<quint32> luGlyphs = oRawFont.glyphIndexesForString(QChar(char16_t(u)));
        auGlyphs[u] = luGlyphs.value(0);
        afWidths[u] = oRawFont.advancesForGlyphIndexes(luGlyphs).value(0).x();
    }
}

void CGlyphs::draw(
    QPainter& oPainter, const QPointF& oTopLeft, double fHeight, double fRight, const QString& sText)
{
    vuRun.clear();
    vPlaces.clear();
    double fX = 0;
    for (const QChar c : sText) {
        if (oTopLeft.x() + fX >= fRight)
            break;
        const std::size_t uLetter = c.unicode() < NumLetters ? c.unicode() : u'?';
        vuRun.push_back(auGlyphs[uLetter]);
        vPlaces.emplace_back(fX, 0);
        fX += afWidths[uLetter];
    }
    QGlyphRun oRun;
    oRun.setRawFont(oRawFont);
    oRun.setRawData(vuRun.data(), vPlaces.data(), int(vuRun.size()));
    const double fLine = oRawFont.ascent() + oRawFont.descent();
    oPainter.drawGlyphRun(oTopLeft + QPointF(0, (fHeight - fLine) / 2 + oRawFont.ascent()), oRun);
}
