// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "Error.h"
#include "rowcolors.h"

#include <chrono>
#include <cstring>
#include <ctime>
#include <exception>
#include <functional>
#include <optional>
#include <ratio>
#include <span>
#include <string>
#include <vector>

namespace qtutils {

/// Times that come from the window are whole minutes.
using TimePoint = std::chrono::sys_time<std::chrono::minutes>;
/// The unit of time frames: an hour and a minute.
using TimeFrame = std::chrono::duration<int, std::ratio<3660>>;
/// Minutes after the first row's date; nothing for a row without a date.
using RowDate = std::optional<std::chrono::minutes>;

/// A row's colour.
struct Color
{
    float fHue = 0; ///< 0 to 359
    float fSaturation = 0; ///< 0 to 255
    float fValue = 255; ///< 0 to 255
};

/// Gives the rows their colours, which are white at first; both spans live during the call. May throw; all
/// rows are white then.
using ColorRows = std::function<void(std::span<const RowDate> oDates, std::span<Color> oColors)>;

/// A time as the module reads it: "YYYY-MM-DD HH:MM:SS" in local time.
inline std::string dateText(std::chrono::sys_seconds oTime)
{
    const std::time_t iTime = std::chrono::system_clock::to_time_t(oTime);
    std::tm oFields{};
    char acText[64];
    localtime_r(&iTime, &oFields);
    return {acText, std::strftime(acText, sizeof acText, "%Y-%m-%d %H:%M:%S", &oFields)};
}

/// A function of the host as the C library calls it; keeps what is thrown.
class ColorCall
{
public:
    explicit ColorCall(const ColorRows& itsFunction)
        : function(itsFunction)
    {
    }

    /// A qtutils_color_callback; pUser is the object.
    static int run(const int* piMinutes, int iNumRows, float* pfColors, void* pUser) noexcept
    {
        auto* pCall = static_cast<ColorCall*>(pUser);
        pCall->oThrown = nullptr;
        try {
            pCall->color({piMinutes, std::size_t(iNumRows)}, pfColors);
        } catch (...) {
            pCall->oThrown = std::current_exception();
        }
        return pCall->oThrown ? 1 : 0;
    }

    /// Throws what the function has thrown, or else an error for the code unless that is QTUTILS_OK.
    void check(int iError) const
    {
        if (oThrown)
            std::rethrow_exception(oThrown);
        Error::check(iError);
    }

private:
    void color(std::span<const int> oMinutes, float* pfColors) const
    {
        std::vector<RowDate> vDates;
        std::vector<Color> vColors(oMinutes.size());
        vDates.reserve(oMinutes.size());
        for (const int iMinutes : oMinutes)
            vDates.push_back(
                iMinutes == QTUTILS_NO_DATE ? RowDate() : RowDate(std::chrono::minutes(iMinutes)));
        function(vDates, vColors);
        if (!vColors.empty())
            std::memcpy(pfColors, vColors.data(), vColors.size() * sizeof(Color));
    }

    const ColorRows& function;
    std::exception_ptr oThrown;
};

static_assert(sizeof(Color) == 3 * sizeof(float), "the module reads three floats a row");

} // namespace qtutils
