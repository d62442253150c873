// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "CReport.h"

#include <chrono>
#include <functional>
#include <string>
#include <vector>

/// The talk with the runner: a line of words on standard input asks for a round, and a line that begins with
/// "= " answers it.
namespace workerloop {

using Words = std::vector<std::string>;

/// Says that the side is ready, then runs rounds until the input ends.
void serve(const CReport& oReady, const std::function<CReport(const Words&)>& round);

/// Seconds that a function takes.
template <typename Function> double seconds(Function function)
{
    const auto oBegin = std::chrono::steady_clock::now();
    function();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - oBegin).count();
}

/// Ends the program with a line on standard error.
[[noreturn]] void fail(const std::string& sWhy);

} // namespace workerloop
