// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <optional>
#include <string>
#include <vector>

enum class ESource
{
    eScript,
    eCommand,
    eCheck, ///< a script whose answers are compared
    eReplay, ///< a recording whose calls are made again
};

/// A script or command text of the command line.
struct SSource
{
    ESource eType;
    std::string sText; ///< name of the file, or the command text
};

/// What the command line asks for.
struct SOptions
{
    std::string sModule;
    std::string sFolder; ///< working folder of the module; empty for the one that the program was started in
    std::vector<SSource> vSources; ///< in the order given
    std::vector<std::string> vNeededVariables;
    double dPatience = 10; ///< seconds
    bool bInteractive = false;
    bool bList = false;
};

/// Exit code when a checked script or a recording had other answers.
constexpr int iDifferenceCode = 1;

/// Exit code of every error.
constexpr int iErrorCode = 2;

/// Reads the command line into @p oOptions. Returns the exit code when the program is to end here: after
/// `--help` and `--version`, and after an error, which it has printed.
std::optional<int> parseOptions(int iArguments, char** ppcArguments, SOptions& oOptions);
