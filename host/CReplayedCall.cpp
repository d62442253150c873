// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CReplayedCall.h"

#include "CArena.h"
#include "CError.h"
#include "CRooms.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <optional>

namespace {

[[noreturn]] void throwUnfit()
{
    throw CError("not as it is recorded");
}

int toInt(double dNumber)
{
    constexpr double dMost = std::numeric_limits<int>::max();
    if (dNumber < -dMost - 1 || dNumber > dMost || std::trunc(dNumber) != dNumber) {
        throwUnfit();
    }
    return int(dNumber);
}

// A recorded float; JSON has no words for some.
float toFloat(const SJson& oValue)
{
    if (oValue.is(EJson::eNumber)) {
        return float(oValue.vdNumbers.front());
    }
    const std::string& sWord = oValue.sText;
    const float fInfinity = std::numeric_limits<float>::infinity();
    return sWord == "inf" ? fInfinity
        : sWord == "-inf" ? -fInfinity
                          : std::numeric_limits<float>::quiet_NaN();
}

// {"bytes": "..."} has a character from 0 to 255 for each byte.
std::string bytes(const std::string& sUtf8)
{
    std::string sBytes;
    for (std::size_t n = 0; n < sUtf8.size(); ++n) {
        const auto cSign = static_cast<unsigned char>(sUtf8[n]);
        const bool bPair = cSign >= 0xC0 && n + 1 < sUtf8.size();
        sBytes += bPair ? char((cSign << 6) | (static_cast<unsigned char>(sUtf8[++n]) & 0x3F)) : sUtf8[n];
    }
    return sBytes;
}

std::string quoted(const std::string& sText)
{
    return '"' + sText + '"';
}

} // namespace

CReplayedCall::CReplayedCall(
    const SEntryPoint& oItsEntry, const SRecordedCall& oItsRecord, CArena& oBuffers, CRooms& oLarge)
    : oEntry(oItsEntry)
    , oRecord(oItsRecord)
    , oArena(oBuffers)
    , oRooms(oLarge)
{
    const auto& vForms = oEntry.oPrototype.arguments();
    const SJson& oArguments = oRecord.oArguments;
    if (oArguments.is(EJson::eNull)) {
        return;
    }
    const bool bNumbers = oArguments.is(EJson::eNumbers);
    const std::size_t nGiven = bNumbers ? oArguments.vdNumbers.size() : oArguments.vElements.size();
    if (nGiven != vForms.size()) {
        throw CError(oEntry.sSymbol + ": takes " + std::to_string(vForms.size()) + " arguments, not "
            + std::to_string(nGiven));
    }
    ppSlots = oArena.array<void*>(nGiven + 1);
    for (std::size_t n = 0; n < nGiven; ++n) {
        try {
            ppSlots[n] = bNumbers ? slot(n, {EJson::eNumber, {}, {oArguments.vdNumbers[n]}, {}, {}})
                                  : slot(n, oArguments.vElements[n]);
        } catch (const CError& oError) {
            throw CError(oEntry.sSymbol + ": " + oEntry.oPrototype.argumentLabel(n) + " is " + oError.what());
        }
    }
}

void* CReplayedCall::slot(std::size_t nArgument, const SJson& oValue)
{
    const EKind eKind = oEntry.oPrototype.arguments()[nArgument].eKind;
    if (oValue.is(EJson::eNull)) {
        return nullptr;
    }
    if (oValue.find("unreadable")) {
        throw CError("memory that couldn't be read when it was recorded");
    }
    if (oValue.is(EJson::eObject) && oValue.vKeys.empty()
        && (eKind == EKind::eInts || eKind == EKind::eText)) {
        return resultSlot(nArgument);
    }
    switch (eKind) {
    case EKind::eInt: {
        auto* piValue = oArena.array<int>(1);
        *piValue = oValue.is(EJson::eNumber) ? toInt(oValue.vdNumbers.front()) : (throwUnfit(), 0);
        return piValue;
    }
    case EKind::eText:
        return oArena.text(textOf(oValue));
    case EKind::eInts:
        return intsSlot(oValue);
    case EKind::eFloats:
        return floatsSlot(oValue);
    }
    return nullptr;
}

void* CReplayedCall::resultSlot(std::size_t nArgument)
{
    void* pRoom = oRooms.take();
    const SJson* pAfter = nullptr;
    if (oRecord.oAnswer) {
        const auto& vRecorded = oRecord.oAnswer->vResults;
        const SJson* pResult = vResults.size() < vRecorded.size() ? &vRecorded[vResults.size()] : nullptr;
        const SJson* pBefore = pResult ? pResult->find("before") : nullptr;
        pAfter = pResult ? pResult->find("after") : nullptr;
        if (!pBefore || !pAfter) {
            throwUnfit();
        }
        fillRoom(*pBefore, pRoom);
    }
    vResults.push_back({nArgument, pRoom, pAfter});
    return pRoom;
}

void CReplayedCall::fillRoom(const SJson& oBefore, void* pRoom) const
{
    if (oBefore.is(EJson::eNumbers)) {
        auto* piRoom = static_cast<int*>(pRoom);
        std::transform(oBefore.vdNumbers.begin(), oBefore.vdNumbers.end(), piRoom, toInt);
    } else if (!oBefore.find("unreadable")) {
        const std::string sText = textOf(oBefore);
        std::memcpy(pRoom, sText.c_str(), sText.size() + 1);
    }
}

void* CReplayedCall::intsSlot(const SJson& oValue)
{
    if (!oValue.is(EJson::eNumbers)) {
        throwUnfit();
    }
    auto* piValues = oArena.array<int>(oValue.vdNumbers.size());
    std::transform(oValue.vdNumbers.begin(), oValue.vdNumbers.end(), piValues, toInt);
    return piValues;
}

// In a room: the module may have more rows now, and reads on.
void* CReplayedCall::floatsSlot(const SJson& oValue)
{
    if (!oValue.is(EJson::eNumbers) && !oValue.is(EJson::eArray)) {
        throwUnfit();
    }
    auto* pfValues = static_cast<float*>(oRooms.take());
    std::transform(oValue.vdNumbers.begin(), oValue.vdNumbers.end(), pfValues,
        [](double dNumber) { return float(dNumber); });
    std::transform(oValue.vElements.begin(), oValue.vElements.end(), pfValues, toFloat);
    return pfValues;
}

std::string CReplayedCall::textOf(const SJson& oValue) const
{
    const SJson* pBytes = oValue.find("bytes");
    if (!oValue.is(EJson::eText) && !pBytes) {
        throwUnfit();
    }
    return pBytes ? bytes(pBytes->sText) : oValue.sText;
}

std::vector<std::string> CReplayedCall::differences() const
{
    std::vector<std::string> vDifferences;
    for (const SResult& oResult : vResults) {
        if (const std::string sDifference = oResult.pAfter ? difference(oResult) : ""; !sDifference.empty()) {
            vDifferences.push_back(sDifference);
        }
    }
    return vDifferences;
}

// The first one of an array; empty when there is none.
std::string CReplayedCall::difference(const SResult& oResult) const
{
    const std::string& sName = oEntry.oPrototype.arguments()[oResult.nArgument].sName;
    const SJson& oAfter = *oResult.pAfter;
    if (oAfter.find("unreadable")) {
        return {};
    }
    if (!oAfter.is(EJson::eNumbers)) {
        const auto* pcText = static_cast<const char*>(oResult.pRoom);
        return textOf(oAfter) == pcText
            ? std::string()
            : sName + ": recorded " + quoted(textOf(oAfter)) + ", got " + quoted(pcText);
    }
    const auto* piValues = static_cast<const int*>(oResult.pRoom);
    const auto [pRecorded, pGot] = std::mismatch(oAfter.vdNumbers.begin(), oAfter.vdNumbers.end(), piValues);
    if (pRecorded == oAfter.vdNumbers.end()) {
        return {};
    }
    const std::string sPlace =
        oAfter.vdNumbers.size() > 1 ? std::string("[") + std::to_string(pGot - piValues) + "]" : "";
    return sName + sPlace + ": recorded " + std::to_string(std::lround(*pRecorded)) + ", got "
        + std::to_string(*pGot);
}

void CReplayedCall::release()
{
    for (const SResult& oResult : vResults) {
        oRooms.giveBack(oResult.pRoom);
    }
    vResults.clear();
}
