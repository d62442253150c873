// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

// Nothing to do: how often threads wake up while a filled window is shown and nobody does anything.
// Arguments: "module" or "empty" (a plug-in with an empty window), database and table of the map, database of
// the documents.

#include "CModuleHost.h"
#include "plugin.h"
#include "settle.h"
#include "treehost.h"
#include "workerloop.h"

#include <chrono>
#include <thread>

#include <unistd.h>

namespace {

constexpr auto Nothing = std::chrono::seconds(10);
constexpr int NumNodes = 100;

} // namespace

int main(int /*iArguments*/, char** apcArguments)
{
    choosePlugin(apcArguments[1]);
    CModuleHost oHost;
    oHost.construct(apcArguments[2], apcArguments[4]);
    if (std::string(apcArguments[1]) == "module")
        oHost.setSOMTable(apcArguments[3]);
    oHost.show();
    workerloop::serve({}, [&](const workerloop::Words& vsWords) {
        fillTree(oHost, NumNodes);
        oHost.select(std::stoi(vsWords.at(0)));
        oHost.numRows();
        settle();
        const long iBefore = switchesOfOtherThreads();
        std::this_thread::sleep_for(Nothing); // wait-reason: this is what is measured
        CReport oReport;
        oReport.figure("wakeups", double(switchesOfOtherThreads() - iBefore));
        return oReport;
    });
    _exit(0);
}
