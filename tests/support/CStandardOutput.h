// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QStringList>
#include <QTemporaryFile>

/// Catches what the process writes to standard output during its lifetime. Make it around the action only:
/// the test library reports there as well.
class CStandardOutput
{
public:
    CStandardOutput();
    ~CStandardOutput();
    CStandardOutput(const CStandardOutput&) = delete;
    CStandardOutput& operator=(const CStandardOutput&) = delete;

    /// Gives standard output back and returns the lines written, without their line feeds. A last line that
    /// lacks its line feed is marked by " (no line feed)".
    QStringList lines();

private:
    void giveBack();

    QTemporaryFile oFile;
    int iBefore;
};
