// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "json.h"

#include <cstddef>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

/// What a host got back from a recorded call.
struct SRecordedAnswer
{
    int iLine; ///< of the file, from 1
    bool bHandle; ///< whether a constructor returned one
    std::string sHandle; ///< as it is written; of a constructor
    std::vector<SJson> vResults; ///< in the order of the slots: objects with "before" and "after"
};

/// A call of a host.
struct SRecordedCall
{
    int iLine; ///< of the file, from 1
    int iThread;
    std::string sFunction; ///< the exported symbol
    std::string sHandle; ///< as it is written; empty for null
    SJson oArguments; ///< null, or an array in the order of the prototype
    std::optional<SRecordedAnswer> oAnswer; ///< nothing when the recording ends before
};

/// A file of calls as qtutils-trace writes it.
class CRecording
{
public:
    /// What happened in turn: a call began, or its answer was there.
    struct SStep
    {
        std::size_t nCall;
        bool bAnswer;
    };

    /// Reads the file. A last line without its end is passed over: the host, or the disk, ended there. Throws
    /// CError "FILE:LINE: cause".
    explicit CRecording(const std::string& sFile);

    /// The same from an open stream; an error calls it @p sName.
    CRecording(std::istream& oInput, const std::string& sName);

    [[nodiscard]] const std::vector<SRecordedCall>& calls() const { return vCalls; }
    [[nodiscard]] const std::vector<SStep>& steps() const { return vSteps; }

private:
    void read(std::istream& oInput, const std::string& sName);
    void readLine(const SJson& oLine, int iLine);
    void readCall(const SJson& oLine, int iLine);
    void readAnswer(const SJson& oLine, int iLine);

    std::vector<SRecordedCall> vCalls;
    std::vector<SStep> vSteps;
    std::vector<int> viNumbers; ///< of the calls, as the file counts them
};
