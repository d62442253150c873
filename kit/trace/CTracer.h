// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "CRealModule.h"
#include "CTraceFile.h"

#include <atomic>
#include <chrono>

class CCallReader;

/// Passes calls on to the module, and records each: a line before it, and one with its answer behind it. So
/// the file shows a call that crashes the host or never returns.
class CTracer
{
public:
    CTracer();
    ~CTracer() = delete; // the host may call while the process ends

    [[nodiscard]] const CRealModule& module() const { return oModule; }

    /// A call as the host has made it; returns the handle for the constructor, else null.
    void* call(entry_point eFunction, void* pHandle, void** apArguments);

private:
    using Clock = std::chrono::steady_clock;

    void* recordedCall(entry_point eFunction, void* pHandle, void** apArguments);
    void* passOn(entry_point eFunction, void* pHandle, void** apArguments) const;
    void writeAnswer(
        entry_point eFunction, long iCall, Clock::time_point oBegin, void* pHandle, CCallReader& oReader);
    void noteRows(entry_point eFunction, const CCallReader& oReader);

    CTraceFile oFile;
    CRealModule oModule;
    Clock::time_point oStart = Clock::now();
    std::atomic<long> iCalls = 0;
    std::atomic<int> iNode = -1; ///< the host's last selection
    std::atomic<int> iRows = -1; ///< of that node, as far as the host has learned; -1 when not
};
