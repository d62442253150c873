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

} // namespace

CLocalTimes::CLocalTimes()
{
    tzset();
    std::tm oGreenwich{};
    gmtime_r(&SomeDay, &oGreenwich); // counts the leap seconds of the process's zone
    bLeapSeconds = oGreenwich.tm_sec != 0;
}

void CLocalTimes::goToDay(std::int64_t iDay)
{
    auto it = oMidnights.find(iDay);
    if (it == oMidnights.end())
        it = oMidnights.emplace(iDay, lookUp(iDay)).first;
    iLastDay = iDay;
    oLastMidnight = it->second;
}

// A local day lies within the four UTC days around it. If the zone's offset is the same at the ends of them
// all, the day has no gap and no hour twice.
CLocalTimes::Midnight CLocalTimes::lookUp(std::int64_t iDay)
{
    if (bLeapSeconds)
        return std::nullopt;
    const long iOffset = offset(iDay);
    if (offset(iDay - 1) != iOffset || offset(iDay + 1) != iOffset || offset(iDay + 2) != iOffset)
        return std::nullopt;
    return iDay * Day - iOffset;
}

long CLocalTimes::offset(std::int64_t iDay)
{
    const auto [it, bNew] = oOffsets.try_emplace(iDay, 0);
    if (bNew) {
        const std::time_t tStart = iDay * Day;
        std::tm oFields{};
        localtime_r(&tStart, &oFields);
        it->second = oFields.tm_gmtoff;
    }
    return it->second;
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
