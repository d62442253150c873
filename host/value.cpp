// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "value.h"

#include "CError.h"
#include "numbers.h"

#include <cmath>
#include <limits>

namespace {

template <typename... Ts> struct SOverloaded : Ts...
{
    using Ts::operator()...;
};
template <typename... Ts> SOverloaded(Ts...) -> SOverloaded<Ts...>;

bool isDigits(const std::string& sText)
{
    const std::size_t nFirst = sText[0] == '-' ? 1 : 0;
    return sText.size() > nFirst && sText.find_first_not_of("0123456789", nFirst) == std::string::npos;
}

std::string describeWord(const std::string& sText)
{
    if (isDigits(sText) && !parseInt(sText)) {
        return "number " + sText + ", which is out of range";
    }
    return parseNumber(sText) ? "number " + sText : "text \"" + sText + "\"";
}

std::string joined(const SNumbers& oNumbers)
{
    std::string sText;
    for (const double dValue : oNumbers.vdValues) {
        const bool bInt = std::abs(dValue) <= std::numeric_limits<int>::max() && std::trunc(dValue) == dValue;
        if (!sText.empty())
            sText += ' ';
        sText += bInt ? std::to_string(int(dValue)) : numberText(float(dValue));
    }
    return sText;
}

} // namespace

std::string describe(const Value& oValue)
{
    return std::visit(SOverloaded{
                          [](const SNull&) { return std::string("null"); },
                          [](const SWord& oWord) { return describeWord(oWord.sText); },
                          [](const SText& oText) { return "text \"" + oText.sText + "\""; },
                          [](const SNumbers&) { return std::string("an array"); },
                          [](const SBuffer& oBuffer) {
                              return oBuffer.sType + "[" + std::to_string(oBuffer.iLength) + "]";
                          },
                      },
        oValue);
}

std::string printed(const Value& oValue)
{
    return std::visit(SOverloaded{
                          [](const SWord& oWord) { return oWord.sText; },
                          [](const SText& oText) { return oText.sText; },
                          [](const SNumbers& oNumbers) { return joined(oNumbers); },
                          [&](const auto&) { return describe(oValue); },
                      },
        oValue);
}

int toInt(const Value& oValue, const std::string& sWhat)
{
    const auto* pWord = std::get_if<SWord>(&oValue);
    const auto oInt = pWord ? parseInt(pWord->sText) : std::nullopt;
    if (!oInt) {
        throw CError(sWhat + " must be an int, got " + describe(oValue));
    }
    return *oInt;
}

const SNumbers& toNumbers(const Value& oValue, const std::string& sWhat)
{
    const auto* pNumbers = std::get_if<SNumbers>(&oValue);
    if (!pNumbers) {
        throw CError(sWhat + " must be an array, got " + describe(oValue));
    }
    return *pNumbers;
}
