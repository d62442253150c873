// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstring>
#include <ctime>

/// Reads "YYYY-MM-DD HH:MM:SS" as local time, digits by their places. What a day needs is worked out once as
/// long as the texts stay on that day: its beginning, and whether summer time begins or ends on it.
class CLocalTimes
{
public:
    std::time_t of(const char* pcText)
    {
        if (std::memcmp(pcText, acDay, sizeof acDay) != 0)
            enterDay(pcText);
        const int iSeconds = (number(pcText + 11) * 60 + number(pcText + 14)) * 60 + number(pcText + 17);
        return bEvenDay ? iDayBegin + iSeconds : onOddDay(iSeconds);
    }

private:
    static constexpr std::time_t SecondsOfDay = 86400;

    static int number(const char* pcDigits) { return (pcDigits[0] - '0') * 10 + pcDigits[1] - '0'; }

    void enterDay(const char* pcText)
    {
        std::memcpy(acDay, pcText, sizeof acDay);
        oDate = {};
        oDate.tm_year = number(pcText) * 100 + number(pcText + 2) - 1900;
        oDate.tm_mon = number(pcText + 5) - 1;
        oDate.tm_mday = number(pcText + 8);
        iDayBegin = onOddDay(0);
        bEvenDay = onOddDay(SecondsOfDay) == iDayBegin + SecondsOfDay;
    }

    // The zone's rules decide.
    std::time_t onOddDay(std::time_t iSeconds) const
    {
        std::tm oTime = oDate;
        oTime.tm_hour = int(iSeconds / 3600);
        oTime.tm_min = int(iSeconds / 60 % 60);
        oTime.tm_sec = int(iSeconds % 60);
        oTime.tm_isdst = -1;
        return std::mktime(&oTime);
    }

    char acDay[10] = {};
    std::tm oDate = {};
    std::time_t iDayBegin = 0;
    bool bEvenDay = false;
};
