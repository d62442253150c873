// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <string>

/// What a side of a comparison answers: figures to compare, and results that must be the same on all sides.
class CReport
{
public:
    CReport() = default;
    /// A report from its line.
    explicit CReport(const std::string& sLine);

    /// A figure, such as seconds or bytes.
    void figure(const std::string& sName, double fValue);
    /// A result; without blanks.
    void result(const std::string& sName, const std::string& sValue);
    void result(const std::string& sName, long long iValue);

    /// "figure=value ... | result=value ...".
    std::string line() const;

private:
    std::string sFigures;
    std::string sResults;
};
