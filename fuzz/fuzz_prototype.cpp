// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CError.h"
#include "CLexer.h"
#include "CPrototype.h"
#include "oracle.h"

using oracle::demand;

namespace {

// The prototype in one fixed spelling.
std::string spelled(const CPrototype& oPrototype)
{
    std::string sArguments;
    for (const SArgument& oArgument : oPrototype.arguments()) {
        sArguments += sArguments.empty() ? "" : ",";
        sArguments += std::string(declaration(oArgument.eKind)) + " " + oArgument.sName;
    }
    return "void " + oPrototype.name() + "(" + sArguments + ")";
}

void check(const CPrototype& oPrototype, const std::string& sText)
{
    demand(oPrototype.text() == sText, "a prototype keeps its text");
    demand(isIdentifier(oPrototype.name()), "a prototype has a name");
    for (std::size_t n = 0; n < oPrototype.arguments().size(); ++n) {
        const std::string& sName = oPrototype.arguments()[n].sName;
        demand(sName.empty() || isIdentifier(sName), "an argument has a name or none");
        oracle::demandOneLine(oPrototype.argumentLabel(n));
    }
    const std::string sSpelled = spelled(oPrototype);
    demand(spelled(CPrototype(sSpelled)) == sSpelled, "a prototype reads the same again");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize)
{
    const std::string sText = oracle::text(pData, nSize);
    try {
        check(CPrototype(sText), sText);
    } catch (const CError& oError) {
        oracle::demandOneLine(oError.what());
    }
    return 0;
}
