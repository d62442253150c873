// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "datetext.h"

#include <algorithm>
#include <chrono>
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

constexpr std::string_view StampForm = "0000-00-00 00:00:00"; ///< 0: a digit
constexpr int Minute = 60; ///< seconds
constexpr int Hour = 3600;

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool hasStampForm(std::string_view oDate)
{
    if (oDate.size() < StampForm.size()
        || (oDate.size() > StampForm.size() && oDate[StampForm.size()] != '.'))
        return false;
    for (std::size_t i = 0; i < StampForm.size(); i++)
        if (StampForm[i] == '0' ? !isDigit(oDate[i]) : oDate[i] != StampForm[i])
            return false;
    return true;
}

int twoDigits(const char* pc)
{
    return 10 * (pc[0] - '0') + pc[1] - '0';
}

} // namespace

std::optional<Stamp> stamp(std::string_view oDate)
{
    if (!hasStampForm(oDate))
        return std::nullopt;
    const char* pc = oDate.data();
    const int iYear = 100 * twoDigits(pc) + twoDigits(pc + 2);
    const std::chrono::year_month_day oDay(std::chrono::year(iYear),
        std::chrono::month(unsigned(twoDigits(pc + 5))), std::chrono::day(unsigned(twoDigits(pc + 8))));
    const int iHour = twoDigits(pc + 11);
    const int iMinute = twoDigits(pc + 14);
    const int iSecond = twoDigits(pc + 17);
    if (iYear == 0 || !oDay.ok() || iHour > 23 || iMinute > 59 || iSecond > 59)
        return std::nullopt;
    const auto iDay = std::chrono::sys_days(oDay).time_since_epoch().count();
    return Stamp{std::int32_t(iDay), iHour * Hour + iMinute * Minute + iSecond};
}

std::tm fields(const Stamp& oStamp)
{
    const std::chrono::year_month_day oDay{std::chrono::sys_days(std::chrono::days(oStamp.iDay))};
    std::tm oFields{};
    oFields.tm_year = int(oDay.year()) - 1900;
    oFields.tm_mon = int(unsigned(oDay.month())) - 1;
    oFields.tm_mday = int(unsigned(oDay.day()));
    oFields.tm_hour = oStamp.iSecond / Hour;
    oFields.tm_min = oStamp.iSecond % Hour / Minute;
    oFields.tm_sec = oStamp.iSecond % Minute;
    return oFields;
}

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
    const long double fMinutes = std::floor(static_cast<long double>(hostTime(pcDate)) / 60.0L + 0.5L);
    return int(
        std::clamp<long double>(fMinutes, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

} // namespace datetext
