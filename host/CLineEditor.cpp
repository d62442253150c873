// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CLineEditor.h"

#include "CSignals.h"
#include "completion.h"

#include <clocale>
#include <cstdlib>
#include <cwchar>
#include <filesystem>
#include <unistd.h>

namespace {

constexpr int iHistorySize = 1000;

// Empty when the environment names no absolute folder.
std::filesystem::path historyFile()
{
    const char* pcState = std::getenv("XDG_STATE_HOME");
    const char* pcHome = std::getenv("HOME");
    std::filesystem::path oFolder = pcState ? pcState : "";
    if (!oFolder.is_absolute() && pcHome) {
        oFolder = std::filesystem::path(pcHome) / ".local" / "state";
    }
    return oFolder.is_absolute() ? oFolder / "qtutils-host" / "history" : std::filesystem::path();
}

EditLine* openTerminal()
{
    std::setlocale(LC_CTYPE, ""); // first: the library asks for the terminal's encoding only once
    return el_init("qtutils-host", stdin, stdout, stderr);
}

} // namespace

CLineEditor::CLineEditor(const CSignals& oNoted, Candidates fnAll)
    : oSignals(oNoted)
    , fnCandidates(std::move(fnAll))
    , sHistoryFile(historyFile())
    , pEdit(openTerminal(), &el_end)
    , pHistory(history_init(), &history_end)
{
    EditLine* pLine = pEdit.get();
    el_set(pLine, EL_CLIENTDATA, this);
    el_set(pLine, EL_PROMPT, &promptText);
    el_set(pLine, EL_EDITOR, "emacs");
    el_set(pLine, EL_GETCFN, &readCharacter);
    // The wide form, because the other one copies the texts and never frees them.
    el_wset(pLine, EL_ADDFN, L"complete-word", L"Complete a method, built-in or variable", &completeWord);
    el_set(pLine, EL_BIND, "^I", "complete-word", nullptr);
    el_set(pLine, EL_HIST, history, pHistory.get());
    loadHistory();
}

CLineEditor::~CLineEditor()
{
    HistEvent oEvent = {};
    if (!sHistoryFile.empty()) {
        std::error_code oIgnored; // without the folder the save fails, which is no error
        std::filesystem::create_directories(std::filesystem::path(sHistoryFile).parent_path(), oIgnored);
        history(pHistory.get(), &oEvent, H_SAVE, sHistoryFile.c_str());
    }
}

void CLineEditor::loadHistory()
{
    HistEvent oEvent = {};
    history(pHistory.get(), &oEvent, H_SETSIZE, iHistorySize);
    history(pHistory.get(), &oEvent, H_SETUNIQUE, 1);
    if (!sHistoryFile.empty()) {
        history(pHistory.get(), &oEvent, H_LOAD, sHistoryFile.c_str());
    }
}

std::optional<std::string> CLineEditor::next(const std::string& sText)
{
    sPrompt = sText;
    int iCount = 0;
    const char* pcLine = el_gets(pEdit.get(), &iCount);
    if (!pcLine || iCount <= 0 || oSignals.pending()) {
        std::fputc('\n', stdout); // leave the line of the prompt
        return std::nullopt;
    }
    std::string sLine(pcLine, std::size_t(iCount));
    while (!sLine.empty() && (sLine.back() == '\n' || sLine.back() == '\r')) {
        sLine.pop_back();
    }
    remember(sLine);
    return sLine;
}

void CLineEditor::remember(const std::string& sLine)
{
    HistEvent oEvent = {};
    if (sLine.find_first_not_of(" \t") != std::string::npos) {
        history(pHistory.get(), &oEvent, H_ENTER, sLine.c_str());
    }
}

CLineEditor& CLineEditor::self(EditLine* pLine)
{
    void* pSelf = nullptr;
    el_get(pLine, EL_CLIENTDATA, &pSelf);
    return *static_cast<CLineEditor*>(pSelf);
}

char* CLineEditor::promptText(EditLine* pLine)
{
    return self(pLine).sPrompt.data();
}

// The library's own function can't be woken by a signal without a race, so this one waits for both.
int CLineEditor::readCharacter(EditLine* pLine, wchar_t* pcRead)
{
    std::mbstate_t oState = {};
    char cByte = 0;
    while (self(pLine).oSignals.waitReadable(STDIN_FILENO) && read(STDIN_FILENO, &cByte, 1) == 1) {
        const std::size_t nResult = std::mbrtowc(pcRead, &cByte, 1, &oState);
        if (nResult <= 1) {
            return 1;
        }
        if (nResult == std::size_t(-1)) {
            oState = {}; // no character of this encoding: skip the byte
        }
    }
    return 0;
}

unsigned char CLineEditor::completeWord(EditLine* pLine, int /*iKey*/)
{
    const LineInfo* pInfo = el_line(pLine);
    const SCompletion oCompletion =
        complete(std::string(pInfo->buffer, pInfo->cursor), self(pLine).fnCandidates());
    if (!oCompletion.sInsert.empty()) {
        el_insertstr(pLine, oCompletion.sInsert.c_str());
        return CC_REFRESH;
    }
    if (oCompletion.vMatches.empty()) {
        return CC_REFRESH_BEEP;
    }
    std::fputc('\n', stdout);
    for (const std::string& sMatch : oCompletion.vMatches) {
        std::fprintf(stdout, "%s  ", sMatch.c_str());
    }
    std::fputc('\n', stdout);
    std::fflush(stdout);
    return CC_REDISPLAY;
}
