// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "CInstances.h"
#include "CVariables.h"
#include "statement.h"

#include <functional>
#include <string>
#include <vector>

class CArena;
class CModule;
class CSignals;
struct SEntryPoint;

/// Carries out statements: calls into the module, and the built-ins.
class CInterpreter
{
public:
    /// Runs the script of that name for `.include`.
    using Include = std::function<void(const std::string& sFile)>;

    /// The references must outlive the interpreter, and the arena every thread of the module.
    /// @param vNeeded environment variables that a null handle is explained with
    CInterpreter(
        const CModule& oLoaded, CArena& oBuffers, const CSignals& oNoted, std::vector<std::string> vNeeded);

    void setInclude(Include fnInclude) { include = std::move(fnInclude); }

    /// Carries out one statement and prints its results. Throws CError.
    void execute(const SStatement& oStatement);

    /// Whether `.quit` was called.
    [[nodiscard]] bool quit() const { return bQuit; }

    /// The class that calls go to.
    [[nodiscard]] const CClass& currentClass() const { return *pClass; }

    /// What a statement or argument may begin with: methods, built-ins and variables with their dollar sign.
    [[nodiscard]] std::vector<std::string> completions() const;

    /// Calls the destructor for each construction that is not freed yet.
    void freeAll() { oInstances.freeAll(); }

private:
    using Values = std::vector<Value>;
    using BuiltIn = void (CInterpreter::*)(const Values&);
    struct SBuiltIn
    {
        const char* pcName;
        std::size_t nLeast;
        std::size_t nMost;
        BuiltIn pFunction;
    };
    static const std::vector<SBuiltIn>& builtIns();
    static const SBuiltIn& findBuiltIn(const std::string& sName);

    void executeBuiltIn(const SStatement& oStatement);
    void help(const Values& vValues);
    void includeFile(const Values& vValues);
    void setVariable(const Values& vValues);
    void echo(const Values& vValues);
    void sleep(const Values& vValues);
    void chooseClass(const Values& vValues);
    void requestQuit(const Values& vValues);

    void executeCall(const SStatement& oStatement);
    void call(const SEntryPoint& oEntry, void** ppSlots);
    [[nodiscard]] Values evaluateAll(const std::vector<SExpression>& vExpressions) const;

    const CModule& oModule;
    CArena& oArena;
    const CSignals& oSignals;
    std::vector<std::string> vNeededVariables;
    Include include;
    const CClass* pClass;
    CInstances oInstances;
    CVariables oVariables;
    bool bQuit = false;
};
