// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CShortDates.h"

#include <QDate>
#include <QTime>

#include <algorithm>

namespace {

constexpr int Minute = 60; ///< seconds
const QDate Epoch(1970, 1, 1);

} // namespace

CShortDates::CShortDates(const QLocale& oNewLocale)
    : oLocale(oNewLocale)
    , iPrecision(oLocale.timeFormat(QLocale::ShortFormat).contains(u's') ? 1 : Minute)
{
}

QString CShortDates::text(const datetext::Stamp& oStamp)
{
    QString& sDay = oDays[oStamp.iDay];
    if (sDay.isEmpty())
        sDay = oLocale.toString(Epoch.addDays(oStamp.iDay), QLocale::ShortFormat) + u' ';
    const int iTime = oStamp.iSecond / iPrecision;
    QString& sTime = oTimes[iTime];
    if (sTime.isEmpty())
        sTime = oLocale.toString(
            QTime::fromMSecsSinceStartOfDay(iTime * iPrecision * 1000), QLocale::ShortFormat);
    QString sText(sDay.size() + sTime.size(), Qt::Uninitialized); // a sum would take memory twice
    std::ranges::copy(sTime, std::ranges::copy(sDay, sText.data()).out);
    return sText;
}
