// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

/// The colour that the host gives a row: hue, saturation, value.
namespace rowcolors {

constexpr float hue(int iRow)
{
    return float(iRow * 37L % 360);
}
constexpr float Saturation = 90;
constexpr float Value = 240;

} // namespace rowcolors
