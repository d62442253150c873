// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <optional>
#include <string>

class CSignals;

/// Reads the lines of an open file one by one, so that a pipe's lines are carried out as they come.
class CLineReader
{
public:
    /// The file and the signals must outlive the reader; the caller closes @p iOpened.
    /// @param sName what an error calls the file
    CLineReader(int iOpened, std::string sName, const CSignals& oNoted);

    /// The next line without its line end; nothing at the end of the file or when a signal is noted.
    /// Throws CError when reading fails.
    std::optional<std::string> next();

private:
    bool readMore();

    int iFile;
    std::string sFileName;
    const CSignals& oSignals;
    std::string sRead; // not yet handed out
    bool bEnd = false;
};
