// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CInterpreter.h"

#include "CArguments.h"
#include "CError.h"
#include "CLexer.h"
#include "CModule.h"
#include "CSignals.h"
#include "closestname.h"
#include "help.h"
#include "nullhandle.h"
#include "numbers.h"

#include <algorithm>
#include <cstdio>

namespace {

constexpr std::size_t nAny = std::size_t(-1);

// The module prints with the C library too; the same stream keeps the lines in order.
void print(const std::string& sText)
{
    std::fwrite(sText.data(), 1, sText.size(), stdout);
}

const std::string& toWord(const Value& oValue, const std::string& sWhat)
{
    if (const auto* pText = std::get_if<SText>(&oValue)) {
        return pText->sText;
    }
    const auto* pWord = std::get_if<SWord>(&oValue);
    if (!pWord) {
        throw CError(sWhat + " must be text, got " + describe(oValue));
    }
    return pWord->sText;
}

} // namespace

CInterpreter::CInterpreter(
    const CModule& oLoaded, CArena& oBuffers, const CSignals& oNoted, std::vector<std::string> vNeeded)
    : oModule(oLoaded)
    , oArena(oBuffers)
    , oSignals(oNoted)
    , vNeededVariables(std::move(vNeeded))
    , pClass(&oModule.classes().front())
    , oInstances(oArena)
{
}

const std::vector<CInterpreter::SBuiltIn>& CInterpreter::builtIns()
{
    static const std::vector<SBuiltIn> vBuiltIns = {
        {".help", 0, 1, &CInterpreter::help},
        {".include", 1, 1, &CInterpreter::includeFile},
        {".set", 2, 2, &CInterpreter::setVariable},
        {".echo", 0, nAny, &CInterpreter::echo},
        {".sleep", 1, 1, &CInterpreter::sleep},
        {".class", 1, 1, &CInterpreter::chooseClass},
        {".quit", 0, 0, &CInterpreter::requestQuit},
    };
    return vBuiltIns;
}

const CInterpreter::SBuiltIn& CInterpreter::findBuiltIn(const std::string& sName)
{
    std::vector<std::string> vNames;
    for (const SBuiltIn& oBuiltIn : builtIns()) {
        if (sName == oBuiltIn.pcName) {
            return oBuiltIn;
        }
        vNames.emplace_back(oBuiltIn.pcName);
    }
    throw CError("unknown built-in \"" + sName + "\"; did you mean \"" + closestName(sName, vNames) + "\"?");
}

void CInterpreter::execute(const SStatement& oStatement)
{
    if (oStatement.sName[0] == '.') {
        executeBuiltIn(oStatement);
    } else {
        executeCall(oStatement);
    }
    std::fflush(stdout);
}

std::vector<std::string> CInterpreter::completions() const
{
    std::vector<std::string> vNames;
    for (const SEntryPoint& oEntry : pClass->entryPoints()) {
        vNames.push_back(oEntry.oPrototype.name());
    }
    for (const SBuiltIn& oBuiltIn : builtIns()) {
        vNames.emplace_back(oBuiltIn.pcName);
    }
    for (const std::string& sName : oVariables.names()) {
        vNames.push_back("$" + sName);
    }
    return vNames;
}

CInterpreter::Values CInterpreter::evaluateAll(const std::vector<SExpression>& vExpressions) const
{
    Values vValues;
    for (const SExpression& oExpression : vExpressions) {
        vValues.push_back(oVariables.evaluate(oExpression));
    }
    return vValues;
}

void CInterpreter::executeBuiltIn(const SStatement& oStatement)
{
    const SBuiltIn& oBuiltIn = findBuiltIn(oStatement.sName);
    const std::size_t nCount = oStatement.vArguments.size();
    if (nCount < oBuiltIn.nLeast || nCount > oBuiltIn.nMost) {
        throw CError(oStatement.sName + ": wrong number of arguments; see .help");
    }
    if (!oStatement.sVariable.empty()) {
        throw CError(oStatement.sName + ": has no result to store");
    }
    (this->*oBuiltIn.pFunction)(evaluateAll(oStatement.vArguments));
}

void CInterpreter::help(const Values& vValues)
{
    if (vValues.empty()) {
        print(helpText(*pClass));
    } else {
        print(helpText(pClass->find(toWord(vValues[0], ".help: METHOD")).oPrototype));
    }
}

void CInterpreter::includeFile(const Values& vValues)
{
    include(toWord(vValues[0], ".include: FILE"));
}

void CInterpreter::setVariable(const Values& vValues)
{
    const std::string& sName = toWord(vValues[0], ".set: NAME");
    if (!isIdentifier(sName)) {
        throw CError(".set: \"" + sName + "\" can't name a variable");
    }
    if (std::holds_alternative<SBuffer>(vValues[1])) {
        throw CError(".set: a result buffer stands only in a call");
    }
    oVariables.set(sName, vValues[1]);
}

void CInterpreter::echo(const Values& vValues)
{
    std::string sLine;
    for (const Value& oValue : vValues) {
        if (&oValue != &vValues.front())
            sLine += ' ';
        sLine += printed(oValue);
    }
    print(sLine + "\n");
}

void CInterpreter::sleep(const Values& vValues)
{
    const auto oSeconds = parseNumber(toWord(vValues[0], ".sleep: SECONDS"));
    if (!oSeconds || *oSeconds < 0 || *oSeconds > 1e6) {
        throw CError(".sleep: SECONDS must be a number from 0 to 1000000, got " + describe(vValues[0]));
    }
    oSignals.sleep(*oSeconds);
}

void CInterpreter::chooseClass(const Values& vValues)
{
    pClass = &oModule.find(toWord(vValues[0], ".class: NAME"));
}

void CInterpreter::requestQuit(const Values& /*vValues*/)
{
    bQuit = true;
}

void CInterpreter::executeCall(const SStatement& oStatement)
{
    const SEntryPoint& oEntry = pClass->find(oStatement.sName);
    const CArguments oArguments(oEntry.oPrototype, evaluateAll(oStatement.vArguments), oArena);
    const bool bStore = !oStatement.sVariable.empty();
    if (bStore && oArguments.results().empty()) {
        throw CError(oStatement.sName + ": has no result buffer to store in $" + oStatement.sVariable);
    }
    call(oEntry, oArguments.slots());
    const auto vResults = oArguments.results();
    for (const auto& oResult : vResults) {
        print(oResult.sName + " = " + printed(oResult.oValue) + "\n");
    }
    if (bStore) {
        oVariables.set(oStatement.sVariable, vResults.front().oValue);
    }
}

void CInterpreter::call(const SEntryPoint& oEntry, void** ppSlots)
{
    const std::string& sName = oEntry.oPrototype.name();
    if (&oEntry == &pClass->constructor()) {
        if (!oInstances.construct(*pClass, ppSlots)) {
            throw CError(sName + " returned a null handle: " + nullHandleReason(vNeededVariables));
        }
        return;
    }
    void* pHandle = oInstances.handle(*pClass);
    if (!pHandle) {
        throw CError(sName + ": there is no instance; call " + pClass->name() + " first");
    }
    if (&oEntry == &pClass->destructor()) {
        oInstances.free(*pClass, ppSlots);
    } else {
        callEntryPoint(oEntry.pFunction, pHandle, ppSlots);
    }
}
