// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CRealModule.h"

#include "binding/mirta_qtutils.h"
#include "host/CError.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <exception>

namespace {

constexpr const char* Prefix = "nodeBrowser_";
constexpr std::array<const char*, NumEntryPoints> Names = {"CNodeBrowser", "FREE_CNodeBrowser", "select",
    "getNumRows", "fillDate", "dateToInt", "setRowColors", "markRow", "getFirstDateInFrame",
    "getFirstDateInSelection", "passNodeHierarchy", "setSOMTable", "hideTable", "show"};

std::string besideThisOne()
{
    Dl_info oInfo{};
    dladdr(&NAMESPACE, &oInfo);
    const std::string sOwnPath = oInfo.dli_fname == nullptr ? "" : oInfo.dli_fname;
    return sOwnPath.substr(0, sOwnPath.rfind('/') + 1) + "qtutils.so";
}

std::string chosenPath()
{
    const char* pcPath = std::getenv("QTUTILS_TRACE_MODULE");
    return pcPath != nullptr && *pcPath != '\0' ? std::string(pcPath) : besideThisOne();
}

} // namespace

CRealModule::CRealModule()
    : sPath(chosenPath())
{
    try {
        load();
    } catch (const std::exception& oError) {
        std::fprintf(stderr, "qtutils-trace: no calls are passed on: %s\n", oError.what());
    }
}

void CRealModule::load()
{
    pLibrary = dlopen(sPath.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (pLibrary == nullptr)
        throw CError(dlerror());
    const auto* ppcNamespace = static_cast<const char* const*>(symbol("NAMESPACE"));
    const auto* ppcDescriptor = static_cast<const char* const*>(symbol("CNodeBrowser_def"));
    if (ppcNamespace == &NAMESPACE)
        throw CError(sPath + " is the tracer itself; name the module with QTUTILS_TRACE_MODULE");
    if (ppcNamespace == nullptr || ppcDescriptor == nullptr || std::strcmp(*ppcNamespace, NAMESPACE) != 0)
        throw CError(sPath + " is not a qtutils module");
    readDescriptor(ppcDescriptor);
}

// The tracer's own descriptor becomes the same: hosts look there for what the module can do.
void CRealModule::readDescriptor(const char* const* ppcDescriptor)
{
    const auto* ppcEnd = std::find(ppcDescriptor, ppcDescriptor + std::size(CNodeBrowser_def) - 1, nullptr);
    std::copy(ppcDescriptor, ppcEnd, CNodeBrowser_def);
    for (const char* const* ppcText = ppcDescriptor + 1; ppcText < ppcEnd; ++ppcText) {
        const CPrototype oPrototype(*ppcText);
        const auto* pName = std::find(Names.begin(), Names.end(), oPrototype.name());
        if (pName == Names.end())
            continue;
        SFunction& oFunction = aoFunctions.at(std::size_t(pName - Names.begin()));
        oFunction.sSymbol = Prefix + oPrototype.name();
        oFunction.pFunction = symbol(oFunction.sSymbol.c_str());
        oFunction.oPrototype = oPrototype;
    }
}

void* CRealModule::symbol(const char* pcName) const
{
    return pLibrary == nullptr ? nullptr : dlsym(pLibrary, pcName);
}
