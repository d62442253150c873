// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CLetterWidths.h"

#include <QString>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

constexpr QStringView Digits(u"0123456789");

} // namespace

CLetterWidths::CLetterWidths(const QFontMetrics& oFontMetrics)
    : oMetrics(oFontMetrics)
    , oExact(oFontMetrics)
    , pWidths(static_cast<int*>(std::calloc(std::size_t(NumLetters) * NumLetters, sizeof(int))), &std::free)
{
    Q_CHECK_PTR(pWidths.get());
}

std::shared_ptr<CLetterWidths> CLetterWidths::shared(const QFontMetrics& oFontMetrics)
{
    static auto& vKnown = *new std::vector<std::weak_ptr<CLetterWidths>>;
    std::erase_if(vKnown, [](const auto& pKnown) { return pKnown.expired(); });
    for (const auto& pKnown : vKnown)
        if (auto pWidths = pKnown.lock(); pWidths->metrics() == oFontMetrics)
            return pWidths;
    auto pWidths = std::make_shared<CLetterWidths>(oFontMetrics);
    vKnown.push_back(pWidths);
    return pWidths;
}

// Letters that move closer together count as if they did not.
int CLetterWidths::measure(unsigned uBefore, unsigned uLetter) const
{
    const QString sLetter(QChar{uLetter});
    double fWidth = oExact.horizontalAdvance(sLetter);
    if (uBefore != 0) {
        const QString sBefore(QChar{uBefore});
        fWidth =
            std::max(fWidth, oExact.horizontalAdvance(sBefore + sLetter) - oExact.horizontalAdvance(sBefore));
    }
    return int(std::ceil(std::max(fWidth, 0.0) * 64)) + 1;
}

bool CLetterWidths::areDigitsAlike()
{
    if (!oDigitsAlike)
        oDigitsAlike = compareDigits();
    return *oDigitsAlike;
}

bool CLetterWidths::compareDigits() const
{
    const auto width = [&](QChar oFirst, QChar oSecond) {
        return oExact.horizontalAdvance(QString(oFirst) + oSecond);
    };
    for (const QChar oDigit : Digits) {
        for (const QChar oOther : Digits)
            if (width(oDigit, oOther) != width(u'0', u'0'))
                return false;
        for (const char16_t oSign : NumberSigns)
            if (width(oDigit, oSign) != width(u'0', oSign) || width(oSign, oDigit) != width(oSign, u'0'))
                return false;
    }
    return true;
}
