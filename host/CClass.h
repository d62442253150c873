// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "CPrototype.h"

#include <functional>
#include <string>
#include <vector>

/// An entry point of a class: its prototype and the exported function that serves it.
struct SEntryPoint
{
    CPrototype oPrototype;
    std::string sSymbol;
    void* pFunction; ///< owned by the module; of type `void (void* pHandle, void** ppArgs)`
};

/// One class of a module, made from its descriptor.
///
/// A descriptor is a null-terminated array: the symbol prefix followed by a colon, the prototypes of the
/// constructor and the destructor, then those of the methods.
class CClass
{
public:
    /// Finds the address of an exported symbol; null when there is none.
    using Resolver = std::function<void*(const std::string& sSymbol)>;

    /// Reads @p ppcDescriptor and resolves every entry point.
    /// Throws CError when the descriptor is too short, a prototype can't be read or a symbol is missing.
    CClass(const char* const* ppcDescriptor, const Resolver& resolve);

    /// The name of the constructor, which is the name of the class.
    [[nodiscard]] const std::string& name() const { return constructor().oPrototype.name(); }
    [[nodiscard]] const std::string& prefix() const { return sPrefix; }

    [[nodiscard]] const SEntryPoint& constructor() const { return vEntryPoints[0]; }
    [[nodiscard]] const SEntryPoint& destructor() const { return vEntryPoints[1]; }

    /// Constructor, destructor and methods, in the order of the descriptor.
    [[nodiscard]] const std::vector<SEntryPoint>& entryPoints() const { return vEntryPoints; }

    /// The entry point of that name; throws CError with the closest name when there is none.
    [[nodiscard]] const SEntryPoint& find(const std::string& sName) const;

private:
    std::string sPrefix;
    std::vector<SEntryPoint> vEntryPoints;
};
