// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CCheck.h"

#include "CError.h"
#include "CLexer.h"
#include "CSignals.h"

#include <algorithm>
#include <chrono>
#include <unistd.h>
#include <utility>

namespace {

constexpr double dLook = 0.01; // seconds between two looks for a line

std::string withoutBlanksAtEnd(const std::string& sText)
{
    return sText.substr(0, sText.find_last_not_of(" \t\r") + 1);
}

// A line that can't be read counts as a word: a statement that will fail.
std::vector<SToken> readableTokens(const std::string& sLine)
{
    try {
        return CLexer::tokens(sLine);
    } catch (const CError&) {
        return {{EToken::eWord, sLine, false}, {EToken::eEnd, {}, false}};
    }
}

std::string quoted(const std::string& sText)
{
    return '"' + sText + '"';
}

} // namespace

CCheck::CCheck(const CSignals& oNoted, double dSeconds)
    : oSignals(oNoted)
    , dPatience(dSeconds)
    , aoChannels{{{"#=", "", CCapture(STDOUT_FILENO), {}},
          {"#=!", "on standard error ", CCapture(STDERR_FILENO), {}}}}
{
}

void CCheck::beginLine(const std::string& sHere, const std::string& sLine)
{
    const std::vector<SToken> vTokens = readableTokens(sLine);
    if (vTokens.size() > 1) {
        compare();
        sPlace = sHere;
    }
    noteAnswer(sHere, vTokens.back().sText);
}

// A mark that no blank follows is no mark, so that rows of signs may divide a script.
void CCheck::noteAnswer(const std::string& sHere, const std::string& sComment)
{
    const std::string sMark = sComment.substr(0, sComment.find_first_of(" \t\r"));
    for (SChannel& oChannel : aoChannels) {
        if (sMark == oChannel.pcMark) {
            const std::size_t nText = std::min(sMark.size() + 1, sComment.size());
            oChannel.vWanted.push_back({sHere, withoutBlanksAtEnd(sComment.substr(nText))});
            ++iAnswers;
        }
    }
}

void CCheck::compare()
{
    if (!sError.empty() && !expectsError()) {
        throw CError(sPlace + ": " + sError, true);
    }
    waitForLines();
    if (oSignals.pending()) {
        return;
    }
    for (SChannel& oChannel : aoChannels) {
        std::vector<std::string> vPrinted = oChannel.oPrinted.take();
        if (&oChannel == &aoChannels.back() && !sError.empty()) {
            vPrinted.push_back(sError);
        }
        compareLines(oChannel, vPrinted);
        oChannel.vWanted.clear();
    }
    sError.clear();
}

// One line for the first difference; what follows it may only be its consequence.
void CCheck::compareLines(const SChannel& oChannel, const std::vector<std::string>& vPrinted)
{
    const auto [pWanted, pPrinted] = std::mismatch(oChannel.vWanted.begin(), oChannel.vWanted.end(),
        vPrinted.begin(), vPrinted.end(), [](const SAnswer& oAnswer, const std::string& sLine) {
            return oAnswer.sText == withoutBlanksAtEnd(sLine);
        });
    const bool bMissing = pPrinted == vPrinted.end();
    const bool bSurplus = pWanted == oChannel.vWanted.end();
    if (bMissing && bSurplus) {
        return;
    }
    bRight = false;
    aoChannels.back().oPrinted.pass((bSurplus ? sPlace : pWanted->sPlace) + ": " + oChannel.pcName + "wanted "
        + (bSurplus ? "nothing" : quoted(pWanted->sText)) + ", got "
        + (bMissing ? "nothing" : quoted(*pPrinted)) + "\n");
}

// The module may print from a thread of its own, some time after the call.
void CCheck::waitForLines()
{
    using Clock = std::chrono::steady_clock;
    const auto oEnd = Clock::now() + std::chrono::duration<double>(dPatience);
    while (linesAreMissing() && Clock::now() < oEnd && !oSignals.pending()) {
        oSignals.sleep(dLook);
    }
}

bool CCheck::linesAreMissing()
{
    const std::size_t nErrors = sError.empty() ? 0 : 1;
    return aoChannels.front().oPrinted.lineCount() < aoChannels.front().vWanted.size()
        || aoChannels.back().oPrinted.lineCount() + nErrors < aoChannels.back().vWanted.size();
}

bool CCheck::expectsError() const
{
    const auto& vWanted = aoChannels.back().vWanted;
    return std::any_of(vWanted.begin(), vWanted.end(),
        [this](const SAnswer& oAnswer) { return oAnswer.sText == withoutBlanksAtEnd(sError); });
}
