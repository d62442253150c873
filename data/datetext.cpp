// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "datetext.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace datetext {
namespace {

// The zone's rules decide about summer time.
std::time_t localTime(std::tm oFields)
{
    oFields.tm_isdst = -1;
    return std::mktime(&oFields);
}

template <typename T> int limited(T iValue)
{
    constexpr T Lowest = std::numeric_limits<int>::min();
    constexpr T Highest = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(iValue, Lowest, Highest));
}

} // namespace

std::optional<std::time_t> rowTime(const char* pcDate)
{
    std::tm oFields{};
    if (strptime(pcDate, "%Y-%m-%dT%H:%M:%S", &oFields) == nullptr)
        return std::nullopt;
    return localTime(oFields);
}

std::time_t hostTime(const char* pcDate)
{
    std::tm oFields{};
    strptime(pcDate, "%Y-%m-%d %H:%M:%S", &oFields); // not tested on purpose: what could be read counts
    return localTime(oFields);
}

int hostMinutes(const char* pcDate)
{
    return limited(std::floor(static_cast<long double>(hostTime(pcDate)) / 60.0L + 0.5L));
}

int minutes(std::time_t iSeconds)
{
    return limited(std::lround(static_cast<double>(iSeconds) / 60.0));
}

} // namespace datetext
