// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CWidestText.h"

#include <algorithm>

CWidestText::CWidestText(const QFontMetrics& oFontMetrics, int iLeast)
    : oMetrics(oFontMetrics)
    , iWidest(iLeast)
{
}

// A pixel for rounding and a quarter for kerning on top of the letter's own width.
int CWidestText::bound(QChar c)
{
    int& iBound = aiBounds[c.unicode()];
    if (iBound == 0) {
        const int iAdvance = std::max(oMetrics.horizontalAdvance(c), 0) + 1;
        iBound = iAdvance + iAdvance / 4;
    }
    return iBound;
}

bool CWidestText::canWin(const QString& sText)
{
    qint64 iBound = 0;
    for (const QChar c : sText) {
        if (c.unicode() >= NumPlainLetters)
            return true;
        iBound += bound(c);
    }
    return iBound > iWidest;
}

void CWidestText::add(const QString& sText)
{
    if (canWin(sText))
        iWidest = std::max(iWidest, oMetrics.horizontalAdvance(sText));
}
