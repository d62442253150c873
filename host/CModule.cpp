// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CModule.h"

#include "CError.h"
#include "closestname.h"

#include <dlfcn.h>
#include <filesystem>

CModule::CModule(const std::string& sFile)
    : sPath(sFile)
{
    std::error_code oIgnored; // a path that can't be read is not there for us
    if (!std::filesystem::exists(sPath, oIgnored)) {
        throw CError("module \"" + sPath + "\" not found");
    }
    const std::string sLoadPath = sPath.find('/') == std::string::npos ? "./" + sPath : sPath;
    pLibrary = dlopen(sLoadPath.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!pLibrary) {
        throw CError("can't load module \"" + sPath + "\": " + dlerror());
    }
    try {
        readClasses();
    } catch (const CError& oError) {
        throw CError("module \"" + sPath + "\": " + oError.what());
    }
}

void CModule::readClasses()
{
    const char* pcNamespace = *static_cast<const char**>(descriptorSymbol("NAMESPACE"));
    if (!pcNamespace || !*pcNamespace) {
        throw CError("no class descriptor: NAMESPACE is empty");
    }
    sNamespace = pcNamespace;
    const std::string sClasses = "CLASSES_" + sNamespace;
    auto* pppcClasses = static_cast<const char* const* const*>(descriptorSymbol(sClasses));
    for (; *pppcClasses; ++pppcClasses) {
        vClasses.emplace_back(*pppcClasses, [this](const std::string& sName) { return symbol(sName); });
    }
    if (vClasses.empty()) {
        throw CError("no class descriptor: " + sClasses + " is empty");
    }
}

void* CModule::symbol(const std::string& sName) const
{
    return dlsym(pLibrary, sName.c_str());
}

void* CModule::descriptorSymbol(const std::string& sName) const
{
    void* pSymbol = symbol(sName);
    if (!pSymbol) {
        throw CError("no class descriptor: the symbol " + sName + " is missing");
    }
    return pSymbol;
}

const CClass& CModule::find(const std::string& sName) const
{
    std::vector<std::string> vNames;
    for (const CClass& oClass : vClasses) {
        if (oClass.name() == sName) {
            return oClass;
        }
        vNames.push_back(oClass.name());
    }
    throw CError("unknown class \"" + sName + "\"; did you mean \"" + closestName(sName, vNames) + "\"?");
}
