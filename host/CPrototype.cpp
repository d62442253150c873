// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CPrototype.h"

#include "CError.h"

#include <regex>

namespace {

[[noreturn]] void throwUnreadable(const std::string& sText)
{
    throw CError("can't read the prototype \"" + sText + "\"");
}

EKind kindOf(const std::string& sType, bool bPointer, const std::string& sText)
{
    if (sType == "int") {
        return bPointer ? EKind::eInts : EKind::eInt;
    }
    if (!bPointer) {
        throwUnreadable(sText);
    }
    return sType == "char" ? EKind::eText : EKind::eFloats;
}

SArgument argumentOf(const std::string& sArgument, const std::string& sText)
{
    static const std::regex oPattern(
        R"(\s*(?:const\s+)?(char|int|float)(?:\s*(\*)\s*|\s+|$)([A-Za-z_]\w*)?\s*)");
    std::smatch oMatch;
    if (!std::regex_match(sArgument, oMatch, oPattern)) {
        throwUnreadable(sText);
    }
    return {kindOf(oMatch[1], oMatch[2].matched, sText), oMatch[3]};
}

std::vector<SArgument> argumentsOf(const std::string& sList, const std::string& sText)
{
    std::vector<SArgument> vArguments;
    if (sList.empty() || sList == "void") {
        return vArguments;
    }
    std::size_t nStart = 0;
    while (nStart != std::string::npos) {
        const std::size_t nComma = sList.find(',', nStart);
        vArguments.push_back(argumentOf(sList.substr(nStart, nComma - nStart), sText));
        nStart = nComma == std::string::npos ? nComma : nComma + 1;
    }
    return vArguments;
}

} // namespace

CPrototype::CPrototype(const std::string& sPrototype)
    : sText(sPrototype)
{
    static const std::regex oPattern(R"(\s*(?:void\s+)?([A-Za-z_]\w*)\s*\(\s*([^()]*?)\s*\)\s*)");
    std::smatch oMatch;
    if (!std::regex_match(sText, oMatch, oPattern) || oMatch[1] == "void") {
        throwUnreadable(sText);
    }
    sName = oMatch[1];
    vArguments = argumentsOf(oMatch[2], sText);
}

std::string CPrototype::argumentLabel(std::size_t nIndex) const
{
    const std::string sLabel = "argument " + std::to_string(nIndex + 1);
    const std::string& sArgument = vArguments.at(nIndex).sName;
    return sArgument.empty() ? sLabel : sLabel + " (" + sArgument + ")";
}

const char* declaration(EKind eKind)
{
    switch (eKind) {
    case EKind::eInt:
        return "int";
    case EKind::eText:
        return "char*";
    case EKind::eInts:
        return "int*";
    case EKind::eFloats:
        return "float*";
    }
    return "";
}
