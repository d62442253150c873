// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CClass.h"

#include "CError.h"
#include "closestname.h"

#include <algorithm>

CClass::CClass(const char* const* ppcDescriptor, const Resolver& resolve)
{
    const std::string sFirst = *ppcDescriptor ? *ppcDescriptor : "";
    if (sFirst.size() < 2 || sFirst.back() != ':') {
        throw CError(
            "a class descriptor begins with \"" + sFirst + "\", which is no symbol prefix with a colon");
    }
    sPrefix = sFirst.substr(0, sFirst.size() - 1);
    for (const char* const* ppcText = ppcDescriptor + 1; *ppcText; ++ppcText) {
        const CPrototype oPrototype(*ppcText);
        const std::string sSymbol = sPrefix + oPrototype.name();
        void* pFunction = resolve(sSymbol);
        if (!pFunction) {
            throw CError("the symbol " + sSymbol + " is missing; \"" + *ppcText + "\" needs it");
        }
        vEntryPoints.push_back({oPrototype, sSymbol, pFunction});
    }
    if (vEntryPoints.size() < 2) {
        throw CError("the descriptor of the class with prefix \"" + sFirst
            + "\" lacks the prototype of its constructor or destructor");
    }
}

const SEntryPoint& CClass::find(const std::string& sName) const
{
    const auto isNamed = [&](const SEntryPoint& oEntry) { return oEntry.oPrototype.name() == sName; };
    const auto pFound = std::find_if(vEntryPoints.begin(), vEntryPoints.end(), isNamed);
    if (pFound != vEntryPoints.end()) {
        return *pFound;
    }
    std::vector<std::string> vNames;
    for (const SEntryPoint& oEntry : vEntryPoints) {
        vNames.push_back(oEntry.oPrototype.name());
    }
    throw CError("unknown method \"" + sName + "\"; did you mean \"" + closestName(sName, vNames) + "\"?");
}
