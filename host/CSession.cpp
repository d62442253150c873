// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CSession.h"

#include "CClass.h"
#include "CError.h"
#include "CInterpreter.h"
#include "CLineEditor.h"
#include "CLineReader.h"
#include "CScriptParser.h"
#include "CSignals.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <functional>
#include <new>
#include <optional>
#include <sstream>
#include <unistd.h>

namespace {

constexpr std::size_t nMaxDepth = 16; // of scripts that include each other

// A script that is open, and its folder as the place to look for what it includes.
class COpenScript
{
public:
    COpenScript(int iStartFolder, const std::string& sFile, std::vector<std::filesystem::path>& vOpenFolders)
        : vFolders(vOpenFolders)
        , iFile(openat(iStartFolder, sFile.c_str(), O_RDONLY | O_CLOEXEC))
    {
        if (iFile < 0) {
            throw CError("can't open script \"" + sFile + "\": " + std::strerror(errno));
        }
        vFolders.push_back(std::filesystem::path(sFile).parent_path());
    }
    COpenScript(const COpenScript&) = delete;
    COpenScript& operator=(const COpenScript&) = delete;
    ~COpenScript()
    {
        vFolders.pop_back();
        close(iFile);
    }

    [[nodiscard]] int file() const { return iFile; }

private:
    std::vector<std::filesystem::path>& vFolders;
    int iFile;
};

} // namespace

CSession::CSession(CInterpreter& oCarriesOut, CSignals& oNoted)
    : oInterpreter(oCarriesOut)
    , oSignals(oNoted)
    , iStartFolder(open(".", O_PATH | O_DIRECTORY | O_CLOEXEC))
{
    oInterpreter.setInclude([this](const std::string& sFile) { includeFile(sFile); });
}

CSession::~CSession()
{
    close(iStartFolder);
}

bool CSession::stopped() const
{
    return oInterpreter.quit() || oSignals.pending();
}

void CSession::runFile(const std::string& sFile)
{
    const COpenScript oScript(iStartFolder, sFile, vFolders);
    runInput(oScript.file(), sFile);
    if (oCheck) {
        oCheck->endScript();
    }
}

bool CSession::checkFile(const std::string& sFile, double dPatience)
{
    oCheck.emplace(oSignals, dPatience);
    try {
        runFile(sFile);
    } catch (...) {
        oCheck.reset(); // gives the channels back, so that the error is seen
        throw;
    }
    const bool bRight = oCheck->allRight();
    const int iAnswers = oCheck->answers();
    oCheck.reset();
    if (bRight && !oSignals.pending()) {
        std::printf("%s: answers as written: %d\n", sFile.c_str(), iAnswers);
        std::fflush(stdout);
    }
    return bRight;
}

void CSession::includeFile(const std::string& sFile)
{
    if (vFolders.size() >= nMaxDepth) {
        throw CError(".include: scripts include each other more than " + std::to_string(nMaxDepth) + " deep");
    }
    runFile(vFolders.empty() ? sFile : (vFolders.back() / sFile).string());
}

void CSession::runText(const std::string& sText, const std::string& sName)
{
    std::istringstream oLines(sText);
    std::string sLine;
    for (int iLine = 1; !stopped() && std::getline(oLines, sLine); ++iLine) {
        runLine(sLine, sName, iLine);
    }
}

void CSession::runInput(int iFile, const std::string& sName)
{
    CLineReader oReader(iFile, sName, oSignals);
    for (int iLine = 1; !stopped(); ++iLine) {
        const auto oLine = oReader.next();
        if (!oLine) {
            return;
        }
        runLine(*oLine, sName, iLine);
    }
}

void CSession::runPrompt()
{
    std::optional<CLineEditor> oEditor;
    CLineReader oReader(STDIN_FILENO, "standard input", oSignals);
    if (isatty(STDIN_FILENO)) {
        oEditor.emplace(oSignals, [this] { return oInterpreter.completions(); });
    }
    while (!stopped()) {
        const auto oLine =
            oEditor ? oEditor->next(oInterpreter.currentClass().name() + "> ") : oReader.next();
        if (oLine) {
            runLineAtPrompt(*oLine);
        }
        const bool bInterrupted = oSignals.takeInterrupt();
        if (!oLine && !bInterrupted) {
            return;
        }
    }
}

void CSession::runLineAtPrompt(const std::string& sLine)
{
    try {
        execute(sLine);
    } catch (const CError& oError) {
        printError(oError.what());
    }
}

// An error of an included script names its own place, so the outer scripts add nothing to it.
void CSession::runLine(const std::string& sLine, const std::string& sName, int iLine)
{
    const std::string sPlace = sName + ":" + std::to_string(iLine);
    try {
        if (oCheck) {
            oCheck->beginLine(sPlace, sLine);
        }
        execute(sLine);
    } catch (const CError& oError) {
        if (oError.located()) {
            throw;
        }
        if (!oCheck) {
            throw CError(sPlace + ": " + oError.what(), true);
        }
        oCheck->noteError(oError.what());
    }
}

void CSession::execute(const std::string& sLine)
{
    try {
        for (const SStatement& oStatement : CScriptParser::statements(sLine)) {
            if (stopped()) {
                return;
            }
            oInterpreter.execute(oStatement);
        }
    } catch (const std::bad_alloc&) {
        throw CError("not enough memory");
    }
}

void printError(const std::string& sCause)
{
    std::fflush(stdout);
    std::fprintf(stderr, "%s\n", sCause.c_str());
}
