// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CArguments.h"

#include "CArena.h"
#include "CError.h"
#include "numbers.h"

#include <cmath>
#include <cstring>

namespace {

std::string countText(std::size_t nCount)
{
    return std::to_string(nCount) + (nCount == 1 ? " argument" : " arguments");
}

[[noreturn]] void throwKind(const std::string& sWhat, const char* pcExpected, const Value& oValue)
{
    throw CError(sWhat + " must be " + pcExpected + ", got " + describe(oValue));
}

const char* bufferType(EKind eKind)
{
    switch (eKind) {
    case EKind::eText:
        return "char";
    case EKind::eInts:
        return "int";
    case EKind::eFloats:
        return "float";
    case EKind::eInt:
        break;
    }
    return "";
}

Value intsValue(const int* piValues, int iLength)
{
    if (iLength == 1) {
        return SWord{std::to_string(*piValues)};
    }
    return SNumbers{{piValues, piValues + iLength}, {}};
}

Value floatsValue(const float* pfValues, int iLength)
{
    if (iLength == 1) {
        return SWord{numberText(*pfValues)};
    }
    SNumbers oNumbers{{pfValues, pfValues + iLength}, {}};
    for (int i = 0; i < iLength && oNumbers.sNotInt.empty(); ++i) {
        const std::string sNumber = numberText(pfValues[i]);
        oNumbers.sNotInt = parseInt(sNumber) ? "" : sNumber;
    }
    return oNumbers;
}

} // namespace

CArguments::CArguments(const CPrototype& oForm, const std::vector<Value>& vValues, CArena& oBuffers)
    : oPrototype(oForm)
    , oArena(oBuffers)
{
    const std::size_t nExpected = oPrototype.arguments().size();
    if (vValues.size() != nExpected) {
        throw CError(oPrototype.name() + ": takes " + countText(nExpected) + ", got "
            + std::to_string(vValues.size()) + "; it is \"" + oPrototype.text() + "\"");
    }
    // One slot more than arguments: a module that looks too far finds null.
    ppSlots = oArena.array<void*>(nExpected + 1);
    for (std::size_t n = 0; n < nExpected; ++n) {
        ppSlots[n] = slot(n, vValues[n]);
    }
}

void* CArguments::slot(std::size_t nIndex, const Value& oValue)
{
    if (std::holds_alternative<SNull>(oValue)) {
        return nullptr;
    }
    const std::string sWhat = oPrototype.name() + ": " + oPrototype.argumentLabel(nIndex);
    const EKind eKind = oPrototype.arguments()[nIndex].eKind;
    const auto* pBuffer = std::get_if<SBuffer>(&oValue);
    if (pBuffer && pBuffer->sType == bufferType(eKind)) {
        return bufferSlot(nIndex, *pBuffer);
    }
    switch (eKind) {
    case EKind::eInt:
        return intSlot(oValue, sWhat);
    case EKind::eText:
        return textSlot(oValue, sWhat);
    case EKind::eInts:
        return intsSlot(oValue, sWhat);
    case EKind::eFloats:
        return floatsSlot(oValue, sWhat);
    }
    return nullptr;
}

void* CArguments::bufferSlot(std::size_t nIndex, const SBuffer& oBuffer)
{
    if (oBuffer.sType == "int") {
        return allocate<int>(nIndex, oBuffer.iLength);
    }
    if (oBuffer.sType == "float") {
        return allocate<float>(nIndex, oBuffer.iLength);
    }
    return allocate<char>(nIndex, oBuffer.iLength);
}

template <typename T> void* CArguments::allocate(std::size_t nArgument, int iLength)
{
    auto* pData = oArena.array<T>(std::size_t(iLength));
    vBuffers.push_back({nArgument, iLength, pData});
    return pData;
}

void* CArguments::intSlot(const Value& oValue, const std::string& sWhat)
{
    const int iValue = toInt(oValue, sWhat);
    int* piValue = oArena.array<int>(1);
    *piValue = iValue;
    return piValue;
}

void* CArguments::textSlot(const Value& oValue, const std::string& sWhat)
{
    const bool bText = std::holds_alternative<SWord>(oValue) || std::holds_alternative<SText>(oValue);
    if (!bText) {
        throwKind(sWhat, "text or char[N]", oValue);
    }
    return oArena.text(printed(oValue));
}

void* CArguments::intsSlot(const Value& oValue, const std::string& sWhat)
{
    const auto* pNumbers = std::get_if<SNumbers>(&oValue);
    if (!pNumbers) {
        throwKind(sWhat, "an int array or int[N]", oValue);
    }
    if (!pNumbers->sNotInt.empty()) {
        throw CError(sWhat + " must be an int array, got an array with " + pNumbers->sNotInt);
    }
    auto* piValues = oArena.array<int>(pNumbers->vdValues.size());
    for (const double dValue : pNumbers->vdValues) {
        *piValues++ = int(std::lround(dValue)); // a ramp has fractions between its ends
    }
    return piValues - pNumbers->vdValues.size();
}

void* CArguments::floatsSlot(const Value& oValue, const std::string& sWhat)
{
    const auto* pNumbers = std::get_if<SNumbers>(&oValue);
    if (!pNumbers) {
        throwKind(sWhat, "a float array or float[N]", oValue);
    }
    auto* pfValues = oArena.array<float>(pNumbers->vdValues.size());
    for (const double dValue : pNumbers->vdValues) {
        *pfValues++ = float(dValue);
    }
    return pfValues - pNumbers->vdValues.size();
}

std::vector<CArguments::SResult> CArguments::results() const
{
    std::vector<SResult> vResults;
    for (const SResultBuffer& oBuffer : vBuffers) {
        const SArgument& oArgument = oPrototype.arguments()[oBuffer.nArgument];
        SResult oResult{oArgument.sName, SNull{}};
        if (oArgument.sName.empty()) {
            oResult.sName = oPrototype.argumentLabel(oBuffer.nArgument);
        }
        if (oArgument.eKind == EKind::eInts) {
            oResult.oValue = intsValue(static_cast<const int*>(oBuffer.pData), oBuffer.iLength);
        } else if (oArgument.eKind == EKind::eFloats) {
            oResult.oValue = floatsValue(static_cast<const float*>(oBuffer.pData), oBuffer.iLength);
        } else {
            const auto* pcText = static_cast<const char*>(oBuffer.pData);
            oResult.oValue = SText{std::string(pcText, strnlen(pcText, std::size_t(oBuffer.iLength)))};
        }
        vResults.push_back(oResult);
    }
    return vResults;
}
