// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>
#include <histedit.h>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class CSignals;

/// Reads lines from the terminal with editing, history and completion.
///
/// The history is kept in `qtutils-host/history` below XDG_STATE_HOME, or below `~/.local/state`. A history
/// that can't be read or written is no error.
class CLineEditor
{
public:
    /// Returns all texts that a word can be completed to.
    using Candidates = std::function<std::vector<std::string>()>;

    /// @p oNoted must outlive the editor.
    CLineEditor(const CSignals& oNoted, Candidates fnAll);

    /// Writes the history.
    ~CLineEditor();

    CLineEditor(const CLineEditor&) = delete;
    CLineEditor& operator=(const CLineEditor&) = delete;

    /// The next line behind the prompt @p sText, without its line end; nothing at the end of input or when a
    /// signal is noted.
    std::optional<std::string> next(const std::string& sText);

private:
    static CLineEditor& self(EditLine* pLine);
    static char* promptText(EditLine* pLine);
    static int readCharacter(EditLine* pLine, wchar_t* pcRead);
    static unsigned char completeWord(EditLine* pLine, int iKey);

    void loadHistory();
    void remember(const std::string& sLine);

    const CSignals& oSignals;
    Candidates fnCandidates;
    std::string sPrompt;
    std::string sHistoryFile; ///< empty when there is no folder for it
    std::unique_ptr<EditLine, decltype(&el_end)> pEdit;
    std::unique_ptr<History, decltype(&history_end)> pHistory;
};
