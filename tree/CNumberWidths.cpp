// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CNumberWidths.h"

namespace {

// Also beside one another and behind a minus, because fonts may move pairs of letters together.
bool hasEqualDigits(const QFontMetricsF& oMetrics)
{
    const QString sDigits = QStringLiteral("0123456789");
    const double fDigit = oMetrics.horizontalAdvance(sDigits.front());
    const double fMinus = oMetrics.horizontalAdvance(QLatin1Char('-'));
    for (const QChar cFirst : sDigits) {
        if (oMetrics.horizontalAdvance(QLatin1Char('-') + QString(cFirst)) != fMinus + fDigit)
            return false;
        for (const QChar cSecond : sDigits)
            if (oMetrics.horizontalAdvance(QString(cFirst) + cSecond) != 2 * fDigit)
                return false;
    }
    return true;
}

std::size_t numDigits(int iNumber)
{
    std::size_t uDigits = 1;
    while ((iNumber /= 10) != 0)
        uDigits++;
    return uDigits;
}

} // namespace

CNumberWidths::CNumberWidths(const QFontMetrics& oFontMetrics)
    : oMetrics(oFontMetrics)
    , bEqualDigits(hasEqualDigits(QFontMetricsF(oFontMetrics)))
{
}

int CNumberWidths::width(int iNumber)
{
    if (!bEqualDigits)
        return oMetrics.horizontalAdvance(QString::number(iNumber));
    int& iWidth = (iNumber < 0 ? aiNegative : aiPositive)[numDigits(iNumber)];
    if (iWidth == 0)
        iWidth = oMetrics.horizontalAdvance(QString::number(iNumber));
    return iWidth;
}
