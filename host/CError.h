// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <stdexcept>
#include <string>

/// An error for the user: one line without a line end. Everything the host reports is thrown as this class.
/// Control characters of the cause, which a text of a script or a module may bring, are shown as escapes.
class CError : public std::runtime_error
{
public:
    /// @param bLocated true when @p sCause already begins with file and line
    explicit CError(const std::string& sCause, bool bLocated = false);

    /// Whether the text already names file and line.
    [[nodiscard]] bool located() const { return bHasPlace; }

private:
    bool bHasPlace;
};
