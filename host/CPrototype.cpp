// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CPrototype.h"

#include "CError.h"

#include <algorithm>
#include <optional>
#include <string_view>

namespace {

/// Reads a prototype from left to right; blanks between its parts don't matter.
class CScanner
{
public:
    explicit CScanner(std::string_view svText)
        : svRest(svText)
    {
    }

    /// The identifier that comes next; empty when none does.
    std::string word()
    {
        skipBlanks();
        const bool bDigitFirst = !svRest.empty() && svRest[0] >= '0' && svRest[0] <= '9';
        const std::size_t nLength =
            bDigitFirst ? 0 : std::min(svRest.find_first_not_of(svLetters), svRest.size());
        std::string sWord(svRest.substr(0, nLength));
        svRest.remove_prefix(nLength);
        return sWord;
    }

    bool take(char cSign)
    {
        const bool bFound = at(cSign);
        svRest.remove_prefix(bFound ? 1 : 0);
        return bFound;
    }

    bool at(char cSign)
    {
        skipBlanks();
        return !svRest.empty() && svRest[0] == cSign;
    }

    bool atEnd()
    {
        skipBlanks();
        return svRest.empty();
    }

private:
    static constexpr std::string_view svLetters =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ_0123456789";

    void skipBlanks() { svRest.remove_prefix(std::min(svRest.find_first_not_of(" \t"), svRest.size())); }

    std::string_view svRest;
};

std::optional<EKind> kindOf(const std::string& sType, bool bPointer)
{
    if (sType == "int") {
        return bPointer ? EKind::eInts : EKind::eInt;
    }
    if (bPointer && sType == "char") {
        return EKind::eText;
    }
    return bPointer && sType == "float" ? std::optional(EKind::eFloats) : std::nullopt;
}

// The arguments behind the opening bracket; nothing when they can't be read.
std::optional<std::vector<SArgument>> readArguments(CScanner& oScanner)
{
    std::vector<SArgument> vArguments;
    do {
        std::string sType = oScanner.word();
        if (vArguments.empty() && (sType.empty() || sType == "void") && oScanner.at(')')) {
            break;
        }
        if (sType == "const") {
            sType = oScanner.word();
        }
        const auto oKind = kindOf(sType, oScanner.take('*'));
        if (!oKind) {
            return std::nullopt;
        }
        vArguments.push_back({*oKind, oScanner.word()});
    } while (oScanner.take(','));
    return oScanner.take(')') && oScanner.atEnd() ? std::optional(vArguments) : std::nullopt;
}

} // namespace

CPrototype::CPrototype(const std::string& sPrototype)
    : sText(sPrototype)
{
    CScanner oScanner(sText);
    sName = oScanner.word();
    if (sName == "void") {
        sName = oScanner.word();
    }
    const bool bNamed = !sName.empty() && oScanner.take('(');
    const auto oArguments = bNamed ? readArguments(oScanner) : std::nullopt;
    if (!oArguments) {
        throw CError("can't read the prototype \"" + sText + "\"");
    }
    vArguments = *oArguments;
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
