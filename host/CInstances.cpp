// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CInstances.h"

#include "CArena.h"
#include "CClass.h"

#include <algorithm>

void* callConstructor(void* pFunction, void* pHandle, void** ppArguments)
{
    return reinterpret_cast<void* (*)(void*, void**)>(pFunction)(pHandle, ppArguments);
}

void callEntryPoint(void* pFunction, void* pHandle, void** ppArguments)
{
    reinterpret_cast<void (*)(void*, void**)>(pFunction)(pHandle, ppArguments);
}

bool CInstances::construct(const CClass& oClass, void** ppArguments)
{
    void* pHandle = callConstructor(oClass.constructor().pFunction, nullptr, ppArguments);
    if (pHandle) {
        vInstances.push_back({&oClass, pHandle});
    }
    return pHandle;
}

void* CInstances::handle(const CClass& oClass) const
{
    const auto pInstance = newest(oClass);
    return pInstance == vInstances.rend() ? nullptr : pInstance->pHandle;
}

void CInstances::free(const CClass& oClass, void** ppArguments)
{
    const auto pInstance = newest(oClass);
    void* pHandle = pInstance->pHandle;
    vInstances.erase(std::next(pInstance).base()); // first, so that nothing can free it twice
    callEntryPoint(oClass.destructor().pFunction, pHandle, ppArguments);
}

void CInstances::freeAll()
{
    while (!vInstances.empty()) {
        const CClass& oClass = *vInstances.back().pClass;
        free(oClass, oArena.array<void*>(oClass.destructor().oPrototype.arguments().size() + 1));
    }
}

std::vector<CInstances::SInstance>::const_reverse_iterator CInstances::newest(const CClass& oClass) const
{
    return std::find_if(vInstances.rbegin(), vInstances.rend(),
        [&](const SInstance& oInstance) { return oInstance.pClass == &oClass; });
}
