// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "Rows.h"
#include "recipes.h"

#include <utility>

/// The recipes of recipes.h for qtutils::NodeBrowser: colour functions that hold what they need. One that is
/// called for another number of rows than it has values for throws Error with QTUTILS_ERROR_ROWS.
namespace qtutils {

/// Runs a recipe of the C library.
inline void runRecipe(
    qtutils_color_callback* pRecipe, std::span<const RowDate> oDates, std::span<Color> oColors, void* pUser)
{
    std::vector<int> viMinutes;
    viMinutes.reserve(oDates.size());
    for (const RowDate& oDate : oDates)
        viMinutes.push_back(oDate ? int(oDate->count()) : QTUTILS_NO_DATE);
    float* pfColors = oColors.empty() ? nullptr : &oColors.data()->fHue;
    if (pRecipe(viMinutes.data(), int(oColors.size()), pfColors, pUser) != 0)
        throw Error(QTUTILS_ERROR_ROWS);
}

/// From pale yellow for the oldest row to blue for the newest one.
inline ColorRows colorByDate()
{
    return [](std::span<const RowDate> oDates, std::span<Color> oColors) {
        runRecipe(qtutils_color_by_date, oDates, oColors, nullptr);
    };
}

/// From pale yellow for the largest distance to blue for the least one.
inline ColorRows colorByDistance(std::vector<float> vfDistances)
{
    return [vfValues = std::move(vfDistances)](std::span<const RowDate> oDates, std::span<Color> oColors) {
        qtutils_row_floats oValues{vfValues.data(), int(vfValues.size())};
        runRecipe(qtutils_color_by_distance, oDates, oColors, &oValues);
    };
}

/// Orange for rows whose value isn't 0.
inline ColorRows colorByHit(std::vector<int> viHits)
{
    return [viValues = std::move(viHits)](std::span<const RowDate> oDates, std::span<Color> oColors) {
        qtutils_row_ints oValues{viValues.data(), int(viValues.size())};
        runRecipe(qtutils_color_by_hit, oDates, oColors, &oValues);
    };
}

/// One of eight colours for each group; negative numbers are no group.
inline ColorRows colorByGroup(std::vector<int> viGroups)
{
    return [viValues = std::move(viGroups)](std::span<const RowDate> oDates, std::span<Color> oColors) {
        qtutils_row_ints oValues{viValues.data(), int(viValues.size())};
        runRecipe(qtutils_color_by_group, oDates, oColors, &oValues);
    };
}

} // namespace qtutils
