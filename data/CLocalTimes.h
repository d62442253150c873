// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "datetext.h"

#include <array>
#include <ctime>
#include <limits>
#include <optional>

/// Local times of many dates, each as mktime() gives it. Asks the zone's rules only once a day, as long as
/// the dates stay within some years.
///
/// Needs no Qt. The zone is that of the process when the object is made. [one thread]
class CLocalTimes
{
public:
    CLocalTimes();

    std::time_t time(const datetext::Stamp& oStamp)
    {
        if (oStamp.iDay != iLastDay)
            goToDay(oStamp.iDay);
        if (!oLastDay.bEven)
            return timeAroundChange(oStamp);
        return unasked(oLastDay.tMidnight + oStamp.iSecond);
    }

private:
    /// The zone's offset, in seconds east of Greenwich, around a local day.
    struct LocalDay
    {
        bool bEven = false; ///< it doesn't change
        bool bOneChange = false; ///< it changes once
        std::time_t tMidnight = 0; ///< by the offset before the change
        std::time_t tMidnightAfter = 0; ///< by the offset after it
    };

    /// The zone's offset at the start of a UTC day.
    struct DayOffset
    {
        std::int32_t iDay = std::numeric_limits<std::int32_t>::min();
        std::int32_t iSeconds = 0;
    };

    void goToDay(std::int64_t iDay);
    long offset(std::int64_t iDay);
    void findChange(std::int64_t iDay);
    std::time_t findSecond(std::int64_t iDay);
    std::time_t timeAroundChange(const datetext::Stamp& oStamp);
    std::time_t askZone(const datetext::Stamp& oStamp);
    std::time_t unasked(std::time_t tTime)
    {
        tUnasked = tTime;
        return tTime;
    }

    std::array<DayOffset, 4096> aOffsets; ///< a day's place goes by its last bits
    bool bLeapSeconds; ///< the zone counts them
    std::int64_t iLastDay = std::numeric_limits<std::int64_t>::min();
    LocalDay oLastDay;
    std::int64_t iLastChanged =
        std::numeric_limits<std::int64_t>::min(); ///< the UTC day of the last change found
    std::time_t tLastChange = 0;
    std::optional<std::time_t> tUnasked; ///< the date before, if mktime() wasn't asked for it
};
