// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "errors.h"

#include <stdexcept>
#include <string>

namespace qtutils {

/// What the methods of NodeBrowser throw. The text is that of the code, and the detail where there is one.
class Error : public std::runtime_error
{
public:
    explicit Error(int iError, const std::string& sDetail = {})
        : std::runtime_error(qtutils_error_text(iError) + (sDetail.empty() ? sDetail : ": " + sDetail))
        , iItsCode(iError)
    {
    }

    /// One of enum qtutils_error.
    int code() const noexcept { return iItsCode; }

    /// Throws unless the code is QTUTILS_OK.
    static void check(int iError)
    {
        if (iError != QTUTILS_OK)
            throw Error(iError);
    }

private:
    int iItsCode;
};

} // namespace qtutils
