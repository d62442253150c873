// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CRecording.h"

#include "CError.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <fstream>
#include <limits>

namespace {

const SJson& member(const SJson& oLine, const char* pcKey, EJson eType)
{
    const SJson* pValue = oLine.find(pcKey);
    if (!pValue || !pValue->is(eType)) {
        throw CError(std::string("no \"") + pcKey + "\" as it is recorded");
    }
    return *pValue;
}

int number(const SJson& oLine, const char* pcKey)
{
    const double dNumber = member(oLine, pcKey, EJson::eNumber).vdNumbers.front();
    if (dNumber < 0 || dNumber > std::numeric_limits<int>::max() || std::trunc(dNumber) != dNumber) {
        throw CError(std::string("\"") + pcKey + "\" is no count");
    }
    return int(dNumber);
}

std::string handle(const SJson& oLine)
{
    const SJson* pValue = oLine.find("handle");
    return pValue && pValue->is(EJson::eText) ? pValue->sText : std::string();
}

} // namespace

CRecording::CRecording(const std::string& sFile)
{
    std::ifstream oFile(sFile);
    if (!oFile) {
        throw CError("can't open recording \"" + sFile + "\": " + std::strerror(errno));
    }
    read(oFile, sFile);
}

CRecording::CRecording(std::istream& oInput, const std::string& sName)
{
    read(oInput, sName);
}

void CRecording::read(std::istream& oInput, const std::string& sName)
{
    std::string sLine;
    int iLine = 1;
    for (; std::getline(oInput, sLine) && !oInput.eof(); ++iLine) {
        try {
            readLine(parseJson(sLine), iLine);
        } catch (const CError& oError) {
            throw CError(sName + ":" + std::to_string(iLine) + ": " + oError.what(), true);
        }
    }
    if (iLine == 1) {
        throw CError("\"" + sName + "\" has no recording");
    }
}

void CRecording::readLine(const SJson& oLine, int iLine)
{
    if (iLine == 1) {
        if (number(oLine, "qtutils-trace") != 1) {
            throw CError("a recording of another version");
        }
    } else if (oLine.find("call")) {
        readCall(oLine, iLine);
    } else if (oLine.find("answer")) {
        readAnswer(oLine, iLine);
    } else {
        throw CError(oLine.find("qtutils-trace") ? "a second recording begins" : "neither call nor answer");
    }
}

void CRecording::readCall(const SJson& oLine, int iLine)
{
    const SJson* pArguments = oLine.find("arguments");
    if (!pArguments) {
        throw CError("no \"arguments\" as it is recorded");
    }
    viNumbers.push_back(number(oLine, "call"));
    vSteps.push_back({vCalls.size(), false});
    vCalls.push_back({iLine, number(oLine, "thread"), member(oLine, "function", EJson::eText).sText,
        handle(oLine), *pArguments, std::nullopt});
}

void CRecording::readAnswer(const SJson& oLine, int iLine)
{
    const int iNumber = number(oLine, "answer");
    const auto pNumber = std::find(viNumbers.rbegin(), viNumbers.rend(), iNumber);
    if (pNumber == viNumbers.rend()) {
        throw CError("an answer without its call");
    }
    const auto nCall = std::size_t(viNumbers.rend() - pNumber - 1);
    if (vCalls[nCall].oAnswer) {
        throw CError("a second answer of the same call");
    }
    const SJson* pResults = oLine.find("results");
    vCalls[nCall].oAnswer = {
        iLine, !handle(oLine).empty(), handle(oLine), pResults ? pResults->vElements : std::vector<SJson>()};
    vSteps.push_back({nCall, true});
}
