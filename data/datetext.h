// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <ctime>
#include <optional>

/// Date texts, local times and minutes. All functions are pure, need no Qt and may be called from any thread.
namespace datetext {

/// Local time of a row's date text "YYYY-MM-DDTHH:MM:SS"; what follows the seconds is not looked at. Nothing
/// when the text doesn't begin with such a date.
std::optional<std::time_t> rowTime(const char* pcDate);

/// Local time of a host's date text "YYYY-MM-DD HH:MM:SS". Never fails: fields that can't be read stay 0.
std::time_t hostTime(const char* pcDate);

/// Whole minutes since the epoch of a host's date text, halves upward, limited to the range of int.
int hostMinutes(const char* pcDate);

/// A time or a difference of two in whole minutes, halves away from zero, limited to the range of int.
int minutes(std::time_t iSeconds);

} // namespace datetext
