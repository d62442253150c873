// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "CCallers.h"
#include "CRecording.h"
#include "CReplayedCall.h"
#include "CRooms.h"

#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

class CModule;
class CSignals;

/// Makes the calls of a recording again and compares the answers.
///
/// Each thread of the recording has one here. A call begins when all has happened that happened before it in
/// the recording, so calls that overlapped do so again.
class CReplay
{
public:
    /// The references must outlive the object, and the arena every thread of the module.
    /// @param dSeconds how long to wait for an answer
    CReplay(const CModule& oLoaded, CArena& oBuffers, const CSignals& oNoted, double dSeconds);

    /// Plays the file, and prints a line for each difference, or the number of calls. Then takes back what
    /// the recording has constructed and not freed. Throws CError for a file that can't be played, and for a
    /// null handle where there was one.
    /// @return whether there was no difference
    bool run(const std::string& sFile, const std::vector<std::string>& vNeededVariables);

private:
    /// A call under way. Its thread may be blocked for ever, so it holds what it needs.
    struct SCall
    {
        CReplayedCall oCall;
        void* pFunction;
        const CClass* pClass;
        bool bConstructs;
        void* pHandle; ///< for the call; after a construction the new one
        bool bAnswered = false;
    };
    struct SProgress
    {
        std::mutex oMutex;
        std::condition_variable oAnswered;
    };

    void play(const CRecording& oRecording);
    void begin(const SRecordedCall& oRecord, std::size_t nCall);
    [[nodiscard]] bool isAnswered(std::size_t nCall) const;
    void compare(const SRecordedCall& oRecord, std::size_t nCall);
    void compareUnanswered(const CRecording& oRecording);
    void takeHandle(const SRecordedCall& oRecord, void* pHandle);
    void freeAll();
    void differ(int iLine, const std::string& sText);

    const CModule& oModule;
    CArena& oArena;
    const CSignals& oSignals;
    double dPatience;
    std::string sFile;
    std::vector<std::string> vNeeded;
    CRooms oRooms;
    CCallers oCallers;
    std::shared_ptr<SProgress> pProgress = std::make_shared<SProgress>();
    std::map<std::size_t, std::shared_ptr<SCall>> oCalls; ///< those under way, by their place
    std::map<std::string, void*> oHandles; ///< by the text of the recorded one
    std::map<const CClass*, int> oConstructions; ///< with a handle, not taken back yet
    void* pLastHandle = nullptr;
    bool bSame = true;
};
