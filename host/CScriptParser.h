// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "CLexer.h"
#include "statement.h"

#include <string>
#include <vector>

/// Turns one line of a script into its statements.
class CScriptParser
{
public:
    /// The statements of the line, none when it is blank or only a comment. Throws CError.
    static std::vector<SStatement> statements(const std::string& sLine);

private:
    explicit CScriptParser(const std::string& sLine);

    SStatement statement();
    std::string resultVariable();
    std::vector<SExpression> list(EToken eClose, const char* pcUnclosed);
    void separator();
    [[nodiscard]] bool atListEnd(EToken eClose) const;
    SExpression argument();
    SExpression primary();
    SExpression word();
    SExpression buffer(const std::string& sType);
    SExpression maker(const std::string& sName);

    [[nodiscard]] const SToken& token() const { return vTokens[nPos]; }
    SToken take() { return vTokens[nPos++]; }
    bool takeIf(EToken eType);
    [[nodiscard]] bool joined(EToken eType) const { return token().eType == eType && token().bJoined; }

    std::vector<SToken> vTokens;
    std::size_t nPos = 0;
    int iDepth = 0; // of the list that is read
};
