// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CArena.h"
#include "CArguments.h"
#include "CError.h"
#include "CLexer.h"
#include "CScriptParser.h"
#include "CSmallMemory.h"
#include "CVariables.h"
#include "closestname.h"
#include "oracle.h"

#include <array>
#include <sstream>

using oracle::demand;

namespace {

const std::vector<CPrototype>& prototypes()
{
    static const std::vector<CPrototype> vPrototypes{CPrototype("none()"), CPrototype("int(int i)"),
        CPrototype("text(char* pc)"), CPrototype("ints(int* pi)"), CPrototype("floats(float*)"),
        CPrototype("all(int i, char* pc, int* pi, float* pf)")};
    return vPrototypes;
}

// Everything that a script may do, apart from the calls themselves.
class CScript
{
public:
    void run(const std::string& sLine)
    {
        const std::vector<SToken> vTokens = CLexer::tokens(sLine);
        demand(vTokens.back().eType == EToken::eEnd, "a line's last token is its end");
        for (const SStatement& oStatement : CScriptParser::statements(sLine)) {
            demand(!oStatement.sName.empty(), "a statement has a name");
            closestName(oStatement.sName, {"select", "show", ".set"});
            carryOut(oStatement);
        }
    }

private:
    void carryOut(const SStatement& oStatement)
    {
        std::vector<Value> vValues;
        for (const SExpression& oExpression : oStatement.vArguments) {
            vValues.push_back(oVariables.evaluate(oExpression));
            demand(!describe(vValues.back()).empty(), "a value is described");
            printed(vValues.back());
        }
        if (oStatement.sName == ".set" && vValues.size() == 2) {
            oVariables.set(printed(vValues[0]), vValues[1]);
        }
        for (const CPrototype& oPrototype : prototypes()) {
            tryCall(oPrototype, vValues, oStatement.sVariable);
        }
    }

    void tryCall(
        const CPrototype& oPrototype, const std::vector<Value>& vValues, const std::string& sVariable)
    {
        try {
            const CArguments oArguments(oPrototype, vValues, oArena);
            demand(oArguments.slots()[vValues.size()] == nullptr, "null stands behind the last slot");
            for (const auto& oResult : oArguments.results()) {
                demand(!oResult.sName.empty(), "a result has a name");
                oVariables.set(sVariable, oResult.oValue);
            }
        } catch (const CError& oError) {
            oracle::demandOneLine(oError.what());
        }
    }

    CArena oArena;
    CVariables oVariables;
};

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t nSize)
{
    prototypes();
    std::istringstream oLines(oracle::text(pData, nSize));
    const CSmallMemory smallMemory;
    CScript oScript;
    for (std::string sLine; std::getline(oLines, sLine);) {
        try {
            oScript.run(sLine);
        } catch (const CError& oError) {
            oracle::demandOneLine(oError.what());
        } catch (const std::bad_alloc&) { // NOLINT(bugprone-empty-catch): the host says so and goes on
        }
    }
    return 0;
}
