// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CArena.h"
#include "CError.h"
#include "CRecording.h"
#include "CReplayedCall.h"
#include "CRooms.h"
#include "oracle.h"

#include <sstream>

using oracle::demand;

namespace {

const std::vector<SEntryPoint>& entryPoints()
{
    static const std::vector<SEntryPoint> vEntryPoints{{CPrototype("none()"), "none", nullptr},
        {CPrototype("int(int i)"), "int", nullptr}, {CPrototype("text(char* pc)"), "text", nullptr},
        {CPrototype("ints(int* pi)"), "ints", nullptr}, {CPrototype("floats(float*)"), "floats", nullptr},
        {CPrototype("all(int i, char* pc, int* pi, float* pf)"), "all", nullptr}};
    return vEntryPoints;
}

// All of a replay but the call itself.
void make(const SEntryPoint& oEntry, const SRecordedCall& oRecord, CRooms& oRooms)
{
    CArena oArena;
    try {
        CReplayedCall oCall(oEntry, oRecord, oArena, oRooms);
        demand((oCall.slots() == nullptr) == oRecord.oArguments.is(EJson::eNull), "slots are as recorded");
        for (const std::string& sDifference : oCall.differences()) {
            oracle::demandOneLine(CError(sDifference).what());
        }
        oCall.release();
    } catch (const CError& oError) {
        oracle::demandOneLine(oError.what());
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize)
{
    static CRooms oRooms;
    std::istringstream oInput(oracle::text(pData, nSize));
    try {
        const CRecording oRecording(oInput, "input");
        std::size_t nAnswers = 0;
        for (const SRecordedCall& oRecord : oRecording.calls()) {
            nAnswers += oRecord.oAnswer ? 1 : 0;
            for (const SEntryPoint& oEntry : entryPoints()) {
                make(oEntry, oRecord, oRooms);
            }
        }
        demand(oRecording.steps().size() == oRecording.calls().size() + nAnswers, "each step is one of both");
    } catch (const CError& oError) {
        oracle::demandOneLine(oError.what());
    }
    return 0;
}
