// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

/// A look at the module's window from inside the host's process (interior.cpp): for results that the module
/// gives nobody but its user, and for times of single steps of the interface's thread.
class CInterior
{
public:
    /// Loads the library named by QTUTILS_BENCH_INTERIOR. A window must have been constructed.
    CInterior();

    /// The answer to a question; waits while the interface is busy.
    std::string ask(const std::string& sQuestion) const;
    /// An answer that is a number.
    double number(const std::string& sQuestion) const { return std::stod(ask(sQuestion)); }

private:
    void (*pfAsk)(const char* pcQuestion, char* pcAnswer, std::size_t uSize);
};
