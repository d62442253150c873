// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "data/datetext.h"
#include "oracle.h"

#include <array>
#include <cstdlib>
#include <cstring>
#include <limits>

using oracle::demand;

namespace {

constexpr std::array Zones{"UTC", "Europe/Berlin", "America/St_Johns", "Pacific/Apia", "Australia/Lord_Howe"};

std::int64_t floorDivided(std::int64_t iNumber, std::int64_t iDivisor)
{
    const std::int64_t iQuotient = iNumber / iDivisor;
    return iNumber % iDivisor < 0 ? iQuotient - 1 : iQuotient;
}

std::string dateOf(std::time_t iTime)
{
    std::tm oFields{};
    std::array<char, 64> acText{};
    demand(localtime_r(&iTime, &oFields) != nullptr, "a date is a local time");
    std::strftime(acText.data(), acText.size(), "%Y-%m-%d %H:%M:%S", &oFields);
    return acText.data();
}

void checkRow(const std::string& sDate)
{
    const auto oTime = datetext::rowTime(sDate.c_str());
    const auto nT = sDate.find('T');
    if (!oTime || nT == std::string::npos) {
        demand(!oTime, "a row's date has a T");
        return;
    }
    std::string sHostDate = sDate;
    sHostDate[nT] = ' ';
    demand(datetext::hostTime(sHostDate.c_str()) == *oTime, "a row's date and a host's are the same time");
}

void checkHost(const std::string& sDate)
{
    const std::time_t iTime = datetext::hostTime(sDate.c_str());
    const int iMinutes = datetext::hostMinutes(sDate.c_str());
    const std::int64_t iWanted = floorDivided(iTime + 30, 60);
    demand(iWanted == iMinutes || iMinutes == std::numeric_limits<int>::max()
            || iMinutes == std::numeric_limits<int>::min(),
        "a host's date is rounded to whole minutes");
    const std::string sAgain = dateOf(iTime);
    const std::time_t iAgain = datetext::hostTime(sAgain.c_str());
    // an hour that comes twice has two times
    demand(sAgain.size() != 19 || dateOf(iAgain) == sAgain, "a local time's text is that time");
}

void checkMinutes(std::int64_t iSeconds)
{
    const int iMinutes = datetext::minutes(iSeconds);
    demand(iSeconds >= 0 ? iMinutes >= 0 : iMinutes <= 0, "minutes keep the sign");
    const std::int64_t iError = std::int64_t{iMinutes} * 60 - iSeconds;
    demand((iError >= -30 && iError <= 30) || iMinutes == std::numeric_limits<int>::max()
            || iMinutes == std::numeric_limits<int>::min(),
        "seconds are rounded to whole minutes");
}

} // namespace

// The first byte chooses the zone; the rest is a date, and its first bytes are seconds.
int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize)
{
    if (nSize == 0)
        return 0;
    setenv("TZ", Zones.at(pData[0] % Zones.size()), 1);
    tzset();
    const std::string sDate(oracle::text(pData + 1, nSize - 1).c_str()); // up to a zero
    checkRow(sDate);
    checkHost(sDate);
    std::int64_t iSeconds = 0;
    std::memcpy(&iSeconds, pData + 1, std::min(nSize - 1, sizeof iSeconds));
    checkMinutes(iSeconds);
    return 0;
}
