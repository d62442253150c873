// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "CClass.h"

#include <string>
#include <vector>

/// A loaded class module: a shared object that describes its classes in exported data.
///
/// `NAMESPACE` is a `const char*`, and `CLASSES_` followed by that text a null-terminated array of class
/// descriptors. The module stays loaded until the program ends: its threads may still run after the last
/// destructor call has returned, and must not lose their code, so nothing ever closes it.
class CModule
{
public:
    /// Loads the file; a path without a slash means the current folder, never the library path.
    /// Throws CError when the file can't be loaded or its description is incomplete.
    explicit CModule(const std::string& sFile);

    [[nodiscard]] const std::string& path() const { return sPath; }
    [[nodiscard]] const std::string& nameSpace() const { return sNamespace; }

    /// At least one class, in the order of the module.
    [[nodiscard]] const std::vector<CClass>& classes() const { return vClasses; }

    /// The class of that name; throws CError with the closest name when there is none.
    [[nodiscard]] const CClass& find(const std::string& sName) const;

private:
    void readClasses();
    [[nodiscard]] void* symbol(const std::string& sName) const;
    [[nodiscard]] void* descriptorSymbol(const std::string& sName) const;

    std::string sPath;
    void* pLibrary = nullptr;
    std::string sNamespace;
    std::vector<CClass> vClasses;
};
