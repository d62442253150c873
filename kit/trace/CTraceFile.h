// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <atomic>
#include <string>
#include <sys/types.h>

/// The file that calls are recorded in, a line at a time. Any thread may write; lines never mix.
///
/// The first thing that goes wrong is said in one line on standard error, and nothing is written any more.
/// The host notices nothing else: neither signals nor errno, and a file of its own under the same number is
/// left alone.
class CTraceFile
{
public:
    /// Creates the file, or empties it; @p pcPath null says that no file is named.
    explicit CTraceFile(const char* pcPath);
    CTraceFile(const CTraceFile&) = delete;
    CTraceFile& operator=(const CTraceFile&) = delete;
    ~CTraceFile() = default;

    /// Whether lines are still wanted; never in a child made by fork.
    [[nodiscard]] bool isOpen() const;

    /// Writes the line, with its line end, at once.
    void write(const std::string& sLine);

    /// Says on standard error, once, why nothing is recorded from now on.
    void giveUp(const char* pcCause);

private:
    [[nodiscard]] bool isStillOurs() const;

    enum class EState
    {
        eOpening,
        eOpen,
        eGivenUp,
    };

    std::atomic<EState> eState = EState::eOpening;
    pid_t iProcess;
    int iFile = -1;
    dev_t oDevice = 0;
    ino_t oNumber = 0;
};
