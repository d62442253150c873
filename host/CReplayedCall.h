// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "CClass.h"
#include "CRecording.h"

#include <string>
#include <vector>

class CArena;
class CRooms;

/// A recorded call made ready to be made again, and what comes back.
class CReplayedCall
{
public:
    /// Throws CError for arguments that don't fit the prototype or couldn't be read when they were recorded.
    /// @param oBuffers, oLarge get all memory and must outlive every thread of the module
    CReplayedCall(
        const SEntryPoint& oItsEntry, const SRecordedCall& oItsRecord, CArena& oBuffers, CRooms& oLarge);

    /// One pointer per argument; null when the host gave none.
    [[nodiscard]] void** slots() const { return ppSlots; }

    /// After the answer: each difference from the recorded one, such as "piNumRows: recorded 5, got 6".
    [[nodiscard]] std::vector<std::string> differences() const;

    /// After the answer: gives the memory of the results back.
    void release();

private:
    struct SResult
    {
        std::size_t nArgument;
        void* pRoom;
        const SJson* pAfter; ///< null without a recorded answer
    };

    void* slot(std::size_t nArgument, const SJson& oValue);
    void* resultSlot(std::size_t nArgument);
    void* floatsSlot(const SJson& oValue);
    void* intsSlot(const SJson& oValue);
    [[nodiscard]] std::string textOf(const SJson& oValue) const;
    void fillRoom(const SJson& oBefore, void* pRoom) const;
    [[nodiscard]] std::string difference(const SResult& oResult) const;

    const SEntryPoint& oEntry;
    const SRecordedCall& oRecord;
    CArena& oArena;
    CRooms& oRooms;
    void** ppSlots = nullptr;
    std::vector<SResult> vResults;
};
