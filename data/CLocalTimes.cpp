// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CLocalTimes.h"

namespace {

constexpr std::int64_t Day = 86400; ///< seconds
constexpr std::time_t SomeDay = 18000 * Day; ///< after the last leap second

std::time_t localTime(std::tm oFields)
{
    oFields.tm_isdst = -1; // the zone's rules decide about summer time
    return std::mktime(&oFields);
}

long offsetAt(std::time_t tTime)
{
    std::tm oFields{};
    localtime_r(&tTime, &oFields);
    return oFields.tm_gmtoff;
}

} // namespace

CLocalTimes::CLocalTimes()
{
    tzset();
    std::tm oGreenwich{};
    gmtime_r(&SomeDay, &oGreenwich); // counts the leap seconds of the process's zone
    bLeapSeconds = oGreenwich.tm_sec != 0;
}

// A local day lies within the four UTC days around it. If the zone's offset is the same at the ends of them
// all, the day has no gap and no hour twice.
void CLocalTimes::goToDay(std::int64_t iDay)
{
    iLastDay = iDay;
    oLastDay = {};
    if (bLeapSeconds)
        return;
    const long iOffset = offset(iDay);
    oLastDay.tMidnight = iDay * Day - iOffset;
    oLastDay.bEven =
        offset(iDay - 1) == iOffset && offset(iDay + 1) == iOffset && offset(iDay + 2) == iOffset;
    if (!oLastDay.bEven)
        findChange(iDay);
}

long CLocalTimes::offset(std::int64_t iDay)
{
    DayOffset& oOffset = aOffsets[std::size_t(iDay) % aOffsets.size()];
    if (oOffset.iDay != iDay)
        oOffset = {std::int32_t(iDay), std::int32_t(offsetAt(iDay * Day))};
    return oOffset.iSeconds;
}

// The four UTC days around the local one have one change of the offset unless two of them differ from the day
// before. The days around a change ask for it one after the other.
void CLocalTimes::findChange(std::int64_t iDay)
{
    std::int64_t iChanged = iDay - 1;
    while (offset(iChanged) == offset(iChanged + 1))
        iChanged++;
    for (std::int64_t i = iChanged + 1; i < iDay + 2; i++)
        if (offset(i) != offset(i + 1))
            return;
    if (iChanged != iLastChanged)
        tLastChange = findSecond(iChanged);
    iLastChanged = iChanged;
    oLastDay.bOneChange = true;
    oLastDay.tMidnight = iDay * Day - offset(iChanged);
    oLastDay.tMidnightAfter = iDay * Day - offset(iChanged + 1);
}

// The first second of a UTC day that has the next day's offset.
std::time_t CLocalTimes::findSecond(std::int64_t iDay)
{
    std::time_t tBefore = iDay * Day;
    std::time_t tAfter = tBefore + Day;
    while (tAfter - tBefore > 1) {
        const std::time_t tMiddle = tBefore + (tAfter - tBefore) / 2;
        (offsetAt(tMiddle) == offset(iDay) ? tBefore : tAfter) = tMiddle;
    }
    return tAfter;
}

// Before the change or after it, unless the hour is one that comes twice or not at all.
std::time_t CLocalTimes::timeAroundChange(const datetext::Stamp& oStamp)
{
    if (!oLastDay.bOneChange)
        return askZone(oStamp);
    const std::time_t tBefore = oLastDay.tMidnight + oStamp.iSecond;
    const std::time_t tAfter = oLastDay.tMidnightAfter + oStamp.iSecond;
    const bool bBefore = tBefore < tLastChange;
    const bool bAfter = tAfter >= tLastChange;
    return bBefore == bAfter ? askZone(oStamp) : unasked(bBefore ? tBefore : tAfter);
}

// Where an hour comes twice or not at all, mktime() goes by the offset that it used last, so let that be the
// offset of the date before.
std::time_t CLocalTimes::askZone(const datetext::Stamp& oStamp)
{
    if (tUnasked) {
        std::tm oBefore{};
        localtime_r(&*tUnasked, &oBefore);
        std::mktime(&oBefore);
        tUnasked.reset();
    }
    return localTime(datetext::fields(oStamp));
}
