// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "CCapture.h"

#include <array>
#include <string>
#include <vector>

class CSignals;

/// Compares what is printed while a script runs with the answers that are written in it.
///
/// An answer is a comment: "#= " and a line of standard output, or "#=! " and a line of standard error. It
/// stands on the line of the statement that it belongs to, or below it. All that is printed until the next
/// line with a statement must be written. Blanks at the end of a line don't count.
class CCheck
{
public:
    /// Takes standard output and standard error; prints the differences on the latter all the same.
    /// @param oNoted must outlive the object; a signal ends the comparing
    /// @param dSeconds how long to wait for a line that is written and not printed yet
    CCheck(const CSignals& oNoted, double dSeconds);

    /// Notes the answers of a line. Call it before the line is carried out: if there is a statement, what was
    /// printed so far is compared first. Throws CError when an error was noted that the script doesn't
    /// expect.
    /// @param sHere the line's file and number
    void beginLine(const std::string& sHere, const std::string& sLine);

    /// The line failed: takes the error as a line of standard error.
    void noteError(const std::string& sCause) { sError = sCause; }

    /// Compares what is left; for the end of a script. Throws CError as beginLine().
    void endScript() { compare(); }

    /// Number of answers read so far.
    [[nodiscard]] int answers() const { return iAnswers; }

    /// Whether there was no difference so far.
    [[nodiscard]] bool allRight() const { return bRight; }

private:
    struct SAnswer
    {
        std::string sPlace;
        std::string sText;
    };
    struct SChannel
    {
        const char* pcMark;
        const char* pcName; ///< as a difference names it
        CCapture oPrinted;
        std::vector<SAnswer> vWanted;
    };

    void noteAnswer(const std::string& sHere, const std::string& sComment);
    void compare();
    void compareLines(const SChannel& oChannel, const std::vector<std::string>& vPrinted);
    void waitForLines();
    bool linesAreMissing();
    [[nodiscard]] bool expectsError() const;

    const CSignals& oSignals;
    double dPatience;
    std::string sPlace; // of the last statement
    std::string sError; // of the last statement, empty when there was none
    std::array<SChannel, 2> aoChannels;
    int iAnswers = 0;
    bool bRight = true;
};
