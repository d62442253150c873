// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "memory.h"

#include "workerloop.h"

#include <fstream>
#include <string>

namespace memory {
namespace {

long statusLine(const std::string& sName)
{
    std::ifstream oFile("/proc/self/status");
    for (std::string sLine; std::getline(oFile, sLine);)
        if (sLine.starts_with(sName + ':'))
            return std::stol(sLine.substr(sName.size() + 1));
    workerloop::fail("no line " + sName);
}

} // namespace

long own()
{
    return statusLine("RssAnon") + statusLine("RssShmem");
}

long resident()
{
    return statusLine("VmRSS");
}

long peak()
{
    return statusLine("VmHWM");
}

void resetPeak()
{
    std::ofstream("/proc/self/clear_refs") << "5";
}

} // namespace memory
