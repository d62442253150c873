// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CReplay.h"

#include "CArena.h"
#include "CError.h"
#include "CInstances.h"
#include "CModule.h"
#include "CSession.h"
#include "CSignals.h"
#include "nullhandle.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <utility>

namespace {

using namespace std::chrono_literals;

struct SFound
{
    const CClass* pClass;
    const SEntryPoint* pEntry;
};

SFound find(const CModule& oModule, const std::string& sSymbol)
{
    for (const CClass& oClass : oModule.classes()) {
        for (const SEntryPoint& oEntry : oClass.entryPoints()) {
            if (oEntry.sSymbol == sSymbol) {
                return {&oClass, &oEntry};
            }
        }
    }
    throw CError("the module has no \"" + sSymbol + "\"");
}

} // namespace

CReplay::CReplay(const CModule& oLoaded, CArena& oBuffers, const CSignals& oNoted, double dSeconds)
    : oModule(oLoaded)
    , oArena(oBuffers)
    , oSignals(oNoted)
    , dPatience(dSeconds)
{
}

bool CReplay::run(const std::string& sItsFile, const std::vector<std::string>& vNeededVariables)
{
    sFile = sItsFile;
    vNeeded = vNeededVariables;
    const CRecording oRecording(sFile);
    try {
        play(oRecording);
    } catch (...) {
        freeAll();
        throw;
    }
    freeAll();
    if (bSame && !oSignals.pending()) {
        std::printf("%s: answers as recorded, calls: %zu\n", sFile.c_str(), oRecording.calls().size());
        std::fflush(stdout);
    }
    return bSame;
}

void CReplay::play(const CRecording& oRecording)
{
    for (const CRecording::SStep& oStep : oRecording.steps()) {
        const SRecordedCall& oRecord = oRecording.calls()[oStep.nCall];
        if (oSignals.pending()) {
            return;
        }
        if (!oStep.bAnswer) {
            begin(oRecord, oStep.nCall);
        } else if (isAnswered(oStep.nCall)) {
            compare(oRecord, oStep.nCall);
        } else if (!oSignals.pending()) {
            differ(oRecord.oAnswer->iLine, oRecord.sFunction + " has no answer; the rest is not played");
            return;
        }
    }
    compareUnanswered(oRecording);
}

void CReplay::begin(const SRecordedCall& oRecord, std::size_t nCall)
{
    try {
        const auto [pClass, pEntry] = find(oModule, oRecord.sFunction);
        const bool bConstructs = pEntry == &pClass->constructor();
        if (pEntry == &pClass->destructor()) {
            oConstructions[pClass] = std::max(oConstructions[pClass] - 1, 0);
        }
        const auto pHandle = oHandles.find(oRecord.sHandle);
        auto pCall = std::make_shared<SCall>(SCall{CReplayedCall(*pEntry, oRecord, oArena, oRooms),
            pEntry->pFunction, pClass, bConstructs, pHandle == oHandles.end() ? nullptr : pHandle->second});
        oCalls.emplace(nCall, pCall);
        oCallers.start(oRecord.iThread, [pCall, pProgress = pProgress] {
            if (pCall->bConstructs) {
                pCall->pHandle = callConstructor(pCall->pFunction, pCall->pHandle, pCall->oCall.slots());
            } else {
                callEntryPoint(pCall->pFunction, pCall->pHandle, pCall->oCall.slots());
            }
            const std::lock_guard oLock(pProgress->oMutex);
            pCall->bAnswered = true;
            pProgress->oAnswered.notify_one();
        });
    } catch (const CError& oError) {
        throw CError(sFile + ":" + std::to_string(oRecord.iLine) + ": " + oError.what(), true);
    }
}

// Waits for the answer; a signal ends the waiting.
bool CReplay::isAnswered(std::size_t nCall) const
{
    const SCall& oCall = *oCalls.at(nCall);
    const auto oEnd = std::chrono::steady_clock::now() + std::chrono::duration<double>(dPatience);
    std::unique_lock oLock(pProgress->oMutex);
    while (!oCall.bAnswered && !oSignals.pending() && std::chrono::steady_clock::now() < oEnd) {
        pProgress->oAnswered.wait_for(oLock, 10ms);
    }
    return oCall.bAnswered;
}

void CReplay::compare(const SRecordedCall& oRecord, std::size_t nCall)
{
    const auto pCall = oCalls.extract(nCall).mapped();
    for (const std::string& sDifference : pCall->oCall.differences()) {
        differ(oRecord.oAnswer->iLine, oRecord.sFunction + ": " + sDifference);
    }
    pCall->oCall.release();
    if (pCall->bConstructs) {
        oConstructions[pCall->pClass] += pCall->pHandle ? 1 : 0;
        takeHandle(oRecord, pCall->pHandle);
    }
}

void CReplay::takeHandle(const SRecordedCall& oRecord, void* pHandle)
{
    const SRecordedAnswer& oAnswer = *oRecord.oAnswer;
    if (oAnswer.bHandle && !pHandle) {
        throw CError(sFile + ":" + std::to_string(oAnswer.iLine) + ": " + oRecord.sFunction
                + " returned a null handle: " + nullHandleReason(vNeeded),
            true);
    }
    if (!oAnswer.bHandle && pHandle) {
        differ(oAnswer.iLine, oRecord.sFunction + ": recorded a null handle, got one");
    }
    oHandles[oAnswer.sHandle] = pHandle;
    pLastHandle = pHandle;
}

// Calls that the recording ends in: the host crashed there, or was ended while it waited.
void CReplay::compareUnanswered(const CRecording& oRecording)
{
    const auto oUnanswered = std::exchange(oCalls, {});
    for (const auto& [nCall, pCall] : oUnanswered) {
        oCalls.emplace(nCall, pCall);
        const SRecordedCall& oRecord = oRecording.calls()[nCall];
        if (isAnswered(nCall)) {
            oConstructions[pCall->pClass] += pCall->bConstructs && pCall->pHandle ? 1 : 0;
            differ(oRecord.iLine, oRecord.sFunction + ": recorded no answer, got one");
        }
    }
}

void CReplay::freeAll()
{
    for (auto& [pClass, iNumber] : oConstructions) {
        const SEntryPoint& oDestructor = pClass->destructor();
        for (; iNumber > 0; --iNumber) {
            callEntryPoint(oDestructor.pFunction, pLastHandle,
                oArena.array<void*>(oDestructor.oPrototype.arguments().size() + 1));
        }
    }
}

void CReplay::differ(int iLine, const std::string& sText)
{
    bSame = false;
    printError(CError(sFile + ":" + std::to_string(iLine) + ": " + sText).what());
}
