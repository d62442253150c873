// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <vector>

/// Why a constructor may have returned a null handle, as far as it shows from outside: the first variable of
/// @p vNeeded that the environment lacks, else the state of the X display that DISPLAY names.
std::string nullHandleReason(const std::vector<std::string>& vNeeded);
