// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <algorithm>
#include <cstdint>
#include <ctime>
#include <limits>
#include <optional>
#include <string_view>

/// Date texts, local times and minutes. All functions are pure, need no Qt and may be called from any thread.
namespace datetext {

/// A date with time, of no particular zone.
struct Stamp
{
    std::int32_t iDay; ///< days since 1970-01-01
    std::int32_t iSecond; ///< seconds since midnight
};

/// The stamp of the text in which the server writes a date with time: "YYYY-MM-DD HH:MM:SS", perhaps with a
/// fraction, which is dropped. Nothing for a text of another form and a day that is in no calendar, as zero
/// dates are.
std::optional<Stamp> stamp(std::string_view oDate);

/// Year, month, day and time of day of a stamp.
std::tm fields(const Stamp& oStamp);

/// Local time of a row's date text "YYYY-MM-DDTHH:MM:SS"; what follows the seconds is not looked at. Nothing
/// when the text doesn't begin with such a date.
std::optional<std::time_t> rowTime(const char* pcDate);

/// Local time of a host's date text "YYYY-MM-DD HH:MM:SS". Never fails: fields that can't be read stay 0.
std::time_t hostTime(const char* pcDate);

/// Whole minutes since the epoch of a host's date text, halves upward, limited to the range of int.
int hostMinutes(const char* pcDate);

/// A time or a difference of two in whole minutes, halves away from zero, limited to the range of int.
inline int minutes(std::time_t iSeconds)
{
    const std::time_t iMinutes = iSeconds / 60 + iSeconds % 60 / 30;
    return int(
        std::clamp<std::time_t>(iMinutes, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

} // namespace datetext
