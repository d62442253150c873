// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CReport.h"

#include <cstdio>
#include <vector>

CReport::CReport(const std::string& sLine)
    : sFigures(sLine.substr(0, sLine.find('|')))
    , sResults(sLine.substr(sLine.find('|') + 1))
{
}

void CReport::figure(const std::string& sName, double fValue)
{
    std::vector<char> vcValue(64);
    std::snprintf(vcValue.data(), vcValue.size(), "%.9g", fValue);
    sFigures += sName + '=' + vcValue.data() + ' ';
}

void CReport::result(const std::string& sName, const std::string& sValue)
{
    sResults += ' ' + sName + '=' + sValue;
}

void CReport::result(const std::string& sName, long long iValue)
{
    result(sName, std::to_string(iValue));
}

std::string CReport::line() const
{
    return sFigures + '|' + sResults;
}
