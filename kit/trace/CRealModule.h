// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "host/CPrototype.h"
#include "kit/src/calls.h"

#include <array>
#include <optional>
#include <string>

/// One function of the module that is traced.
struct SFunction
{
    std::string sSymbol;
    std::optional<CPrototype> oPrototype; ///< from the module's descriptor
    void* pFunction = nullptr; ///< null when the module doesn't have it
};

/// The module that the calls are passed on to. Never closed, as it never leaves the memory itself.
class CRealModule
{
public:
    /// Loads what QTUTILS_TRACE_MODULE names, or else "qtutils.so" beside the tracer. When that fails, says
    /// why in one line on standard error; there are no functions then.
    CRealModule();

    [[nodiscard]] const std::string& path() const { return sPath; }
    [[nodiscard]] const SFunction& function(entry_point eFunction) const { return aoFunctions.at(eFunction); }

    /// A symbol of the module; null when there is none.
    [[nodiscard]] void* symbol(const char* pcName) const;

private:
    void load();
    void readDescriptor(const char* const* ppcDescriptor);

    std::string sPath;
    void* pLibrary = nullptr;
    std::array<SFunction, NumEntryPoints> aoFunctions;
};
