// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CLexer.h"

#include "CError.h"

#include <algorithm>
#include <string_view>

namespace {

constexpr std::string_view svSigns = "()[],*;";
constexpr std::string_view svWordEnds = "()[],*;\"#$ \t\r";

EToken signType(char cSign)
{
    constexpr EToken aeTypes[] = {EToken::eOpen, EToken::eClose, EToken::eArrayOpen, EToken::eArrayClose,
        EToken::eComma, EToken::eStar, EToken::eSeparator};
    return aeTypes[svSigns.find(cSign)];
}

// ASCII only, whatever the locale.
bool isNameCharacter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

bool isControl(char c)
{
    return (c >= 0 && c < ' ' && c != '\t' && c != '\r') || c == 127;
}

} // namespace

bool isIdentifier(const std::string& sText)
{
    const bool bDigitFirst = !sText.empty() && sText[0] >= '0' && sText[0] <= '9';
    return !sText.empty() && !bDigitFirst && std::all_of(sText.begin(), sText.end(), isNameCharacter);
}

std::vector<SToken> CLexer::tokens(const std::string& sLine)
{
    if (std::any_of(sLine.begin(), sLine.end(), isControl)) {
        throw CError("the line holds a control character");
    }
    CLexer oLexer(sLine);
    std::vector<SToken> vTokens;
    bool bJoined = oLexer.skipBlanks();
    while (oLexer.nPos < sLine.size() && sLine[oLexer.nPos] != '#') {
        vTokens.push_back(oLexer.next(bJoined));
        bJoined = oLexer.skipBlanks();
    }
    vTokens.push_back({EToken::eEnd, sLine.substr(oLexer.nPos), false});
    return vTokens;
}

CLexer::CLexer(const std::string& sText)
    : sLine(sText)
{
}

// True when there was no blank.
bool CLexer::skipBlanks()
{
    const std::size_t nStart = nPos;
    nPos = std::min(sLine.find_first_not_of(" \t\r", nPos), sLine.size());
    return nPos == nStart;
}

SToken CLexer::next(bool bJoined)
{
    const char c = sLine[nPos];
    if (c == '"') {
        return readText(bJoined);
    }
    if (c == '$') {
        return readVariable(bJoined);
    }
    if (atArrow()) {
        nPos += 2;
        return {EToken::eArrow, "->", bJoined};
    }
    if (svSigns.find(c) != std::string_view::npos) {
        ++nPos;
        return {signType(c), std::string(1, c), bJoined};
    }
    return readWord(bJoined);
}

SToken CLexer::readText(bool bJoined)
{
    std::string sText;
    for (++nPos; nPos < sLine.size(); ++nPos) {
        if (sLine[nPos] == '"') {
            ++nPos;
            return {EToken::eText, sText, bJoined};
        }
        if (sLine[nPos] == '\\') {
            ++nPos;
            sText += escaped();
        } else {
            sText += sLine[nPos];
        }
    }
    throw CError("a text has no closing quote");
}

char CLexer::escaped() const
{
    switch (nPos < sLine.size() ? sLine[nPos] : '\0') {
    case '"':
        return '"';
    case '\\':
        return '\\';
    case 'n':
        return '\n';
    case 't':
        return '\t';
    case '\0':
        throw CError("a text has no closing quote");
    default:
        throw CError(std::string("unknown escape \\") + sLine[nPos] + R"( in a text; known are \" \\ \n \t)");
    }
}

SToken CLexer::readVariable(bool bJoined)
{
    const std::size_t nStart = ++nPos;
    while (nPos < sLine.size() && isNameCharacter(sLine[nPos])) {
        ++nPos;
    }
    const std::string sName = sLine.substr(nStart, nPos - nStart);
    if (!isIdentifier(sName)) {
        throw CError("$ needs the name of a variable, such as $n");
    }
    return {EToken::eVariable, sName, bJoined};
}

SToken CLexer::readWord(bool bJoined)
{
    const std::size_t nStart = nPos;
    while (nPos < sLine.size() && !atWordEnd()) {
        ++nPos;
    }
    return {EToken::eWord, sLine.substr(nStart, nPos - nStart), bJoined};
}

bool CLexer::atArrow() const
{
    return sLine.compare(nPos, 2, "->") == 0;
}

bool CLexer::atWordEnd() const
{
    return svWordEnds.find(sLine[nPos]) != std::string_view::npos || atArrow();
}
