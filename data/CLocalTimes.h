// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "datetext.h"

#include <ctime>
#include <limits>
#include <optional>
#include <unordered_map>

/// Local times of many dates, each as mktime() gives it. Asks the zone's rules only once a day.
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
        if (!oLastMidnight)
            return askZone(oStamp);
        tUnasked = *oLastMidnight + oStamp.iSecond;
        return *tUnasked;
    }

private:
    /// A local day, counted from 1970-01-01.
    using Midnight = std::optional<std::time_t>; ///< nothing: the zone's offset changes around that day

    void goToDay(std::int64_t iDay);
    Midnight lookUp(std::int64_t iDay);
    long offset(std::int64_t iDay);
    std::time_t askZone(const datetext::Stamp& oStamp);

    std::unordered_map<std::int64_t, Midnight> oMidnights;
    std::unordered_map<std::int64_t, long> oOffsets; ///< seconds east of Greenwich, at the start of a UTC day
    bool bLeapSeconds; ///< the zone counts them
    std::int64_t iLastDay = std::numeric_limits<std::int64_t>::min();
    Midnight oLastMidnight;
    std::optional<std::time_t> tUnasked; ///< the date before, if mktime() wasn't asked for it
};
