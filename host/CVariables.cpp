// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CVariables.h"

#include "CError.h"
#include "numbers.h"

#include <cmath>
#include <limits>

namespace {

void checkLength(int iCount, std::size_t nTuple, const std::string& sMaker)
{
    if (nTuple > 0 && std::size_t(iCount) > std::numeric_limits<int>::max() / nTuple) {
        throw CError(sMaker + " makes an array of more than "
            + std::to_string(std::numeric_limits<int>::max()) + " elements");
    }
}

} // namespace

const Value& CVariables::get(const std::string& sName) const
{
    const auto pFound = oValues.find(sName);
    if (pFound == oValues.end()) {
        throw CError("unknown variable $" + sName);
    }
    return pFound->second;
}

std::vector<std::string> CVariables::names() const
{
    std::vector<std::string> vNames;
    for (const auto& oVariable : oValues) {
        vNames.push_back(oVariable.first);
    }
    return vNames;
}

Value CVariables::evaluate(const SExpression& oExpression) const
{
    switch (oExpression.eType) {
    case EExpression::eWord:
        return SWord{oExpression.sText};
    case EExpression::eText:
        return SText{oExpression.sText};
    case EExpression::eVariable:
        return get(oExpression.sText);
    case EExpression::eArray:
        return array(oExpression);
    case EExpression::eBuffer:
        return buffer(oExpression);
    case EExpression::eProduct:
        return SWord{std::to_string(product(oExpression))};
    case EExpression::eRepeat:
        return repeat(oExpression);
    case EExpression::eRamp:
        return ramp(oExpression);
    case EExpression::eNull:
        break;
    }
    return SNull{};
}

SNumbers CVariables::array(const SExpression& oExpression) const
{
    SNumbers oNumbers;
    for (const SExpression& oPart : oExpression.vParts) {
        const Value oValue = evaluate(oPart);
        const auto* pWord = std::get_if<SWord>(&oValue);
        const auto oNumber = pWord ? parseNumber(pWord->sText) : std::nullopt;
        if (!oNumber) {
            throw CError("element " + std::to_string(oNumbers.vdValues.size() + 1)
                + " of an array must be a number, got " + describe(oValue));
        }
        if (oNumbers.sNotInt.empty() && !parseInt(pWord->sText)) {
            oNumbers.sNotInt = pWord->sText;
        }
        oNumbers.vdValues.push_back(*oNumber);
    }
    return oNumbers;
}

SBuffer CVariables::buffer(const SExpression& oExpression) const
{
    return {oExpression.sText, count(oExpression)};
}

int CVariables::product(const SExpression& oExpression) const
{
    int iProduct = 1;
    for (const SExpression& oPart : oExpression.vParts) {
        if (__builtin_mul_overflow(iProduct, toInt(evaluate(oPart), "a factor"), &iProduct)) {
            throw CError("a product is out of range");
        }
    }
    return iProduct;
}

SNumbers CVariables::repeat(const SExpression& oExpression) const
{
    const int iCount = count(oExpression);
    const Value oValue = evaluate(oExpression.vParts[1]);
    const SNumbers& oTuple = toNumbers(oValue, "the tuple of repeat");
    checkLength(iCount, oTuple.vdValues.size(), "repeat");
    SNumbers oNumbers{{}, oTuple.sNotInt};
    oNumbers.vdValues.reserve(std::size_t(iCount) * oTuple.vdValues.size());
    for (int i = 0; i < iCount; ++i) {
        oNumbers.vdValues.insert(oNumbers.vdValues.end(), oTuple.vdValues.begin(), oTuple.vdValues.end());
    }
    return oNumbers;
}

SNumbers CVariables::ramp(const SExpression& oExpression) const
{
    const int iCount = count(oExpression);
    const Value oFirstValue = evaluate(oExpression.vParts[1]);
    const Value oLastValue = evaluate(oExpression.vParts[2]);
    const SNumbers& oFirst = toNumbers(oFirstValue, "the first tuple of ramp");
    const SNumbers& oLast = toNumbers(oLastValue, "the last tuple of ramp");
    const std::size_t nTuple = oFirst.vdValues.size();
    if (nTuple != oLast.vdValues.size()) {
        throw CError("the two tuples of ramp differ in length");
    }
    checkLength(iCount, nTuple, "ramp");
    SNumbers oNumbers{{}, oFirst.sNotInt.empty() ? oLast.sNotInt : oFirst.sNotInt};
    oNumbers.vdValues.reserve(std::size_t(iCount) * nTuple);
    for (int i = 0; i < iCount; ++i) {
        const double dShare = iCount > 1 ? double(i) / (iCount - 1) : 0.0;
        for (std::size_t n = 0; n < nTuple; ++n) {
            oNumbers.vdValues.push_back(std::lerp(oFirst.vdValues[n], oLast.vdValues[n], dShare));
        }
    }
    return oNumbers;
}

// The length of a buffer or the count of an array maker: the first part of the expression.
int CVariables::count(const SExpression& oExpression) const
{
    const std::string sWhat = oExpression.eType == EExpression::eBuffer ? "the length of a buffer"
                                                                        : "the count of " + oExpression.sText;
    const int iCount = toInt(evaluate(oExpression.vParts[0]), sWhat);
    if (iCount < 0) {
        throw CError(sWhat + " must not be negative, got " + std::to_string(iCount));
    }
    return iCount;
}
