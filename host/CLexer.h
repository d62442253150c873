// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <vector>

enum class EToken
{
    eWord, ///< bare word: a name, a number or text
    eText, ///< quoted text, without quotes and with its escapes replaced
    eVariable, ///< `$name`, without the dollar sign
    eOpen,
    eClose,
    eArrayOpen,
    eArrayClose,
    eComma,
    eStar,
    eArrow,
    eSeparator, ///< the semicolon between two statements
    eEnd,
};

struct SToken
{
    EToken eType;
    std::string sText; ///< content of a word, text or variable; of the end: the comment; else as written
    bool bJoined; ///< no blank stands between this token and the one before
};

/// Splits one line of a script into tokens.
class CLexer
{
public:
    /// The tokens of @p sLine, closed by an eEnd token that holds the comment with its `#`.
    /// Throws CError for a text without a closing quote, an unknown escape or a character that can't be read.
    static std::vector<SToken> tokens(const std::string& sLine);

private:
    explicit CLexer(const std::string& sText);

    bool skipBlanks();
    SToken next(bool bJoined);
    SToken readText(bool bJoined);
    SToken readVariable(bool bJoined);
    SToken readWord(bool bJoined);
    [[nodiscard]] char escaped() const;
    [[nodiscard]] bool atArrow() const;
    [[nodiscard]] bool atWordEnd() const;

    const std::string& sLine;
    std::size_t nPos = 0;
};

/// Whether the text can name a variable: letters, digits and underscores, no digit first.
bool isIdentifier(const std::string& sText);
