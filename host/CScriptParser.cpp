// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CScriptParser.h"

#include "CError.h"

namespace {

constexpr int iMostDepth = 64; // of brackets in each other: each level takes space on the stack

// How a token is named in an error.
std::string quoted(const SToken& oToken)
{
    return oToken.eType == EToken::eEnd ? "the end of the line" : "\"" + oToken.sText + "\"";
}

} // namespace

std::vector<SStatement> CScriptParser::statements(const std::string& sLine)
{
    CScriptParser oParser(sLine);
    std::vector<SStatement> vStatements;
    while (oParser.token().eType != EToken::eEnd) {
        if (!oParser.takeIf(EToken::eSeparator)) {
            vStatements.push_back(oParser.statement());
        }
    }
    return vStatements;
}

CScriptParser::CScriptParser(const std::string& sLine)
    : vTokens(CLexer::tokens(sLine))
{
}

SStatement CScriptParser::statement()
{
    const SToken oName = take();
    if (oName.eType != EToken::eWord) {
        throw CError("a statement begins with a method or a built-in, not with " + quoted(oName));
    }
    SStatement oStatement{oName.sText, {}, {}};
    if (takeIf(EToken::eOpen)) {
        oStatement.vArguments = list(EToken::eClose, "the arguments have no closing \")\"");
    } else {
        oStatement.vArguments = list(EToken::eEnd, "");
    }
    if (takeIf(EToken::eArrow)) {
        oStatement.sVariable = resultVariable();
    }
    if (token().eType != EToken::eEnd && token().eType != EToken::eSeparator) {
        throw CError(quoted(token()) + " is too much at the end of the statement");
    }
    return oStatement;
}

std::string CScriptParser::resultVariable()
{
    const SToken oName = take();
    if (oName.eType != EToken::eWord || !isIdentifier(oName.sText)) {
        throw CError("\"->\" needs the name of a variable, not " + quoted(oName));
    }
    return oName.sText;
}

// Arguments up to the closing token, which is taken; the end of a statement is left where it stands.
std::vector<SExpression> CScriptParser::list(EToken eClose, const char* pcUnclosed)
{
    if (++iDepth > iMostDepth) {
        throw CError("brackets stand more than " + std::to_string(iMostDepth) + " deep in each other");
    }
    std::vector<SExpression> vList;
    while (!atListEnd(eClose)) {
        if (!vList.empty()) {
            separator();
        }
        vList.push_back(argument());
    }
    if (eClose != EToken::eEnd && !takeIf(eClose)) {
        throw CError(pcUnclosed);
    }
    --iDepth;
    return vList;
}

bool CScriptParser::atListEnd(EToken eClose) const
{
    const EToken eType = token().eType;
    return eType == eClose || eType == EToken::eEnd || eType == EToken::eSeparator || eType == EToken::eArrow;
}

void CScriptParser::separator()
{
    const bool bStray = token().eType == EToken::eClose || token().eType == EToken::eArrayClose;
    if (!takeIf(EToken::eComma) && token().bJoined && !bStray) {
        throw CError("a blank or comma is missing before " + quoted(token()));
    }
}

SExpression CScriptParser::argument()
{
    SExpression oFirst = primary();
    if (token().eType != EToken::eStar) {
        return oFirst;
    }
    SExpression oProduct{EExpression::eProduct, {}, {oFirst}};
    while (takeIf(EToken::eStar)) {
        oProduct.vParts.push_back(primary());
    }
    return oProduct;
}

SExpression CScriptParser::primary()
{
    switch (token().eType) {
    case EToken::eWord:
        return word();
    case EToken::eText:
        return {EExpression::eText, take().sText, {}};
    case EToken::eVariable:
        return {EExpression::eVariable, take().sText, {}};
    case EToken::eArrayOpen:
        take();
        return {EExpression::eArray, {}, list(EToken::eArrayClose, "an array has no closing \"]\"")};
    default:
        throw CError("an argument can't begin with " + quoted(token()));
    }
}

SExpression CScriptParser::word()
{
    const std::string sWord = take().sText;
    if (joined(EToken::eArrayOpen)) {
        return buffer(sWord);
    }
    if (joined(EToken::eOpen)) {
        return maker(sWord);
    }
    return {sWord == "null" ? EExpression::eNull : EExpression::eWord, sWord, {}};
}

SExpression CScriptParser::buffer(const std::string& sType)
{
    if (sType != "int" && sType != "float" && sType != "char") {
        throw CError("\"" + sType + "[\" begins no result buffer; known are int[N], float[N] and char[N]");
    }
    take();
    std::vector<SExpression> vLength = list(EToken::eArrayClose, "a result buffer has no closing \"]\"");
    if (vLength.size() != 1) {
        throw CError("a result buffer needs one length, such as " + sType + "[5]");
    }
    return {EExpression::eBuffer, sType, vLength};
}

SExpression CScriptParser::maker(const std::string& sName)
{
    if (sName != "repeat" && sName != "ramp") {
        throw CError(
            "\"" + sName + "(\" makes no array; known are repeat(N, [...]) and ramp(N, [...], [...])");
    }
    take();
    std::vector<SExpression> vParts = list(EToken::eClose, "an array maker has no closing \")\"");
    const std::size_t nExpected = sName == "repeat" ? 2 : 3;
    if (vParts.size() != nExpected) {
        throw CError(sName + " needs a count and " + (nExpected == 2 ? "an array" : "two arrays"));
    }
    return {sName == "repeat" ? EExpression::eRepeat : EExpression::eRamp, sName, vParts};
}

bool CScriptParser::takeIf(EToken eType)
{
    const bool bFound = token().eType == eType;
    nPos += bFound ? 1 : 0;
    return bFound;
}
