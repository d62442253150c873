// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>

#include <optional>
#include <string>

/// Keeps what the making of the application object would change in the host's process: puts the locale back,
/// and sets two environment variables for that time only.
class CSurroundings
{
public:
    CSurroundings();
    ~CSurroundings();
    CSurroundings(const CSurroundings&) = delete;
    CSurroundings& operator=(const CSurroundings&) = delete;

private:
    /// Sets an environment variable for its own lifetime.
    class CVariable
    {
    public:
        CVariable(const char* pcVariable, const QByteArray& oValue);
        ~CVariable();
        CVariable(const CVariable&) = delete;
        CVariable& operator=(const CVariable&) = delete;

    private:
        const char* pcName;
        std::optional<QByteArray> oBefore;
    };

    std::string sLocale;
    CVariable oNoGLib;
    CVariable oPlatform;
};
