// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CInterior.h"

#include "workerloop.h"

#include <array>
#include <cstdlib>

#include <dlfcn.h>

CInterior::CInterior()
{
    void* pLibrary = dlopen(std::getenv("QTUTILS_BENCH_INTERIOR"), RTLD_NOW | RTLD_LOCAL);
    void* pSymbol = pLibrary == nullptr ? nullptr : dlsym(pLibrary, "interior_ask");
    if (pSymbol == nullptr)
        workerloop::fail(dlerror());
    pfAsk = reinterpret_cast<decltype(pfAsk)>(pSymbol);
}

std::string CInterior::ask(const std::string& sQuestion) const
{
    std::array<char, 256> acAnswer{};
    pfAsk(sQuestion.c_str(), acAnswer.data(), acAnswer.size());
    return acAnswer.data();
}
