// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <vector>

#include <sys/types.h>

/// Takes what the process prints on one channel, from whichever thread, for as long as the object lives.
/// Printing never blocks. What was not taken when it ends is printed after all.
class CCapture
{
public:
    /// Throws std::system_error.
    /// @param iTaken the channel: STDOUT_FILENO or STDERR_FILENO
    explicit CCapture(int iTaken);
    CCapture(const CCapture&) = delete;
    CCapture& operator=(const CCapture&) = delete;
    ~CCapture();

    /// Number of whole lines that were printed and not taken yet.
    std::size_t lineCount();

    /// The lines printed since the last call, without their line ends; what follows the last one counts as a
    /// line.
    std::vector<std::string> take();

    /// Prints on the channel itself.
    void pass(const std::string& sText) const;

private:
    void readMore();

    int iChannel;
    int iReal; // the channel as it was
    int iStore; // memory that stands in for it
    off_t iRead = 0;
    std::string sUntaken;
};
