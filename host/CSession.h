// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "CCheck.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

class CInterpreter;
class CSignals;

/// Feeds an interpreter with the statements of scripts, command texts, an open file or the prompt.
class CSession
{
public:
    /// Both must outlive the session. The session serves the interpreter's `.include`. Names of scripts are
    /// taken from what is the working folder now, also when it changes later.
    CSession(CInterpreter& oCarriesOut, CSignals& oNoted);
    CSession(const CSession&) = delete;
    CSession& operator=(const CSession&) = delete;
    ~CSession();

    /// Runs a script; throws CError "FILE:LINE: cause" at its first error.
    void runFile(const std::string& sFile);

    /// Runs a script and compares what is printed with the answers written in it; see CCheck. Prints a line
    /// for each difference, or the number of answers. Throws CError as runFile(), but not for errors that are
    /// answers.
    /// @param dPatience how long to wait for a line that is written and not printed yet, in seconds
    /// @return whether there was no difference
    bool checkFile(const std::string& sFile, double dPatience);

    /// Runs a text of one or several lines; an error calls it @p sName.
    void runText(const std::string& sText, const std::string& sName);

    /// Runs the lines of an open file as they come; an error calls it @p sName.
    void runInput(int iFile, const std::string& sName);

    /// Runs the lines of standard input until it ends, on a terminal with editing, history and completion.
    /// An error is printed and the prompt goes on; SIGINT gives up what runs or the line that is being typed.
    void runPrompt();

    /// Whether `.quit` or a signal has ended the session.
    [[nodiscard]] bool stopped() const;

private:
    void includeFile(const std::string& sFile);
    void runLine(const std::string& sLine, const std::string& sName, int iLine);
    void runLineAtPrompt(const std::string& sLine);
    void execute(const std::string& sLine);

    CInterpreter& oInterpreter;
    CSignals& oSignals;
    int iStartFolder;
    std::optional<CCheck> oCheck; ///< only while a script is checked
    std::vector<std::filesystem::path> vFolders; ///< of the scripts that run, the innermost last
};

/// Prints "qtutils-host: cause" on standard error, after what was printed before on standard output.
void printError(const std::string& sCause);
