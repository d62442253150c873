// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CWidestText.h"

#include <algorithm>

CWidestText::CWidestText(const QFontMetrics& oFontMetrics, int iLeast)
    : oMetrics(oFontMetrics)
    , aiAdvances()
    , iWidest(iLeast)
{
    // A pixel for rounding and a quarter for kerning on top of each letter.
    for (int i = 0; i < NumPlainLetters; i++) {
        const int iAdvance = std::max(oMetrics.horizontalAdvance(QChar(i)), 0) + 1;
        aiAdvances[std::size_t(i)] = iAdvance + iAdvance / 4;
    }
}

bool CWidestText::canWin(const QString& sText) const
{
    qint64 iBound = 0;
    for (const QChar c : sText) {
        if (c.unicode() >= NumPlainLetters)
            return true;
        iBound += aiAdvances[c.unicode()];
    }
    return iBound > iWidest;
}

void CWidestText::add(const QString& sText)
{
    if (canWin(sText))
        iWidest = std::max(iWidest, oMetrics.horizontalAdvance(sText));
}
