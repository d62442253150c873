// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

/// The fuzzed code under test: one input. Returns 0. An input that breaks a demand ends the program.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize);

/// What every target demands of the code that it runs.
namespace oracle {

/// Ends the program with SIGABRT and a line that names the demand when it doesn't hold.
void demand(bool bHolds, const char* pcDemand);

/// Demands of an error's text that it is one line that can be shown: not empty, no control characters.
void demandOneLine(const std::string& sText);

/// The input as text.
std::string text(const std::uint8_t* pData, std::size_t nSize);

} // namespace oracle
