// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

// Loading and constructing, the way from the process's start to the window on the screen, and the memory of
// both. Arguments: "module" or "empty" (a plug-in with an empty window), database of the map, database of the
// documents.

#include "CMapWatch.h"
#include "CModuleHost.h"
#include "memory.h"
#include "plugin.h"
#include "settle.h"
#include "workerloop.h"

#include <chrono>
#include <optional>

#include <unistd.h>

namespace {

constexpr auto Begin = "QTUTILS_BENCH_BEGIN";

long long now()
{
    return std::chrono::nanoseconds(std::chrono::steady_clock::now().time_since_epoch()).count();
}

// The program starts itself, so that the time that a start takes counts.
void startAnew(char** apcArguments)
{
    setenv(Begin, std::to_string(now()).c_str(), 1);
    execv("/proc/self/exe", apcArguments);
    workerloop::fail("can't start anew");
}

} // namespace

int main(int /*iArguments*/, char** apcArguments)
{
    const char* pcBegin = std::getenv(Begin);
    if (pcBegin == nullptr)
        startAnew(apcArguments);
    choosePlugin(apcArguments[1]);
    CMapWatch oWatch;
    std::optional<CModuleHost> oHost;
    CReport oReport;
    oReport.figure("construct", workerloop::seconds([&] {
        oHost.emplace();
        oHost->construct(apcArguments[2], apcArguments[3]);
    }));
    oHost->show();
    oWatch.wait();
    oReport.figure("window", double(now() - std::stoll(pcBegin)) / 1e9);
    settle();
    oReport.figure("memory", double(memory::own()));
    workerloop::serve(oReport, [&](const workerloop::Words&) { return oReport; });
    _exit(0); // nobody asks how fast a process ends
}
