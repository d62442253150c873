// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CNumberWidths.h"

#include <cstdint>
#include <cstdlib>

namespace {

std::size_t numDigits(int iNumber)
{
    std::size_t uDigits = 1;
    for (std::int64_t iPower = 10; iPower <= std::abs(std::int64_t(iNumber)); iPower *= 10)
        uDigits++;
    return uDigits;
}

} // namespace

CNumberWidths::CNumberWidths(CLetterWidths& oLetterWidths)
    : oMetrics(oLetterWidths.metrics())
    , bDigitsAlike(oLetterWidths.areDigitsAlike())
{
}

int CNumberWidths::width(int iNumber)
{
    if (!bDigitsAlike)
        return oMetrics.horizontalAdvance(QString::number(iNumber));
    int& iWidth = (iNumber < 0 ? aiNegative : aiPositive)[numDigits(iNumber)];
    if (iWidth == 0)
        iWidth = oMetrics.horizontalAdvance(QString::number(iNumber));
    return iWidth;
}
