// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "settle.h"

#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

#include <unistd.h>

namespace {

constexpr auto Pause = std::chrono::milliseconds(10); // longer than the toolkit puts a paint off
constexpr int QuietLooks = 2;

struct Activity
{
    bool bAsleep = true;
    long iSwitches = 0;
    long iVoluntary = 0;
};

// The state is the letter behind "State:", the switches stand in two lines that end in "ctxt_switches:".
void add(Activity& oActivity, const std::filesystem::path& oThread)
{
    std::ifstream oFile(oThread / "status");
    for (std::string sLine; std::getline(oFile, sLine);) {
        const std::string sValue = sLine.substr(sLine.find(':') + 1);
        if (sLine.starts_with("State:"))
            oActivity.bAsleep = oActivity.bAsleep && sValue.find('S') != std::string::npos;
        else if (sLine.find("ctxt_switches:") != std::string::npos)
            oActivity.iSwitches += std::stol(sValue);
        if (sLine.starts_with("voluntary"))
            oActivity.iVoluntary += std::stol(sValue);
    }
}

Activity otherThreads()
{
    Activity oActivity;
    for (const auto& oThread : std::filesystem::directory_iterator("/proc/self/task"))
        if (oThread.path().filename() != std::to_string(gettid()))
            add(oActivity, oThread.path());
    return oActivity;
}

} // namespace

void settle()
{
    int iQuiet = 0;
    for (Activity oLast = otherThreads(); iQuiet < QuietLooks;) {
        std::this_thread::sleep_for(Pause); // wait-reason: nobody tells when a thread has nothing to do
        const Activity oNow = otherThreads();
        iQuiet = oNow.bAsleep && oNow.iSwitches == oLast.iSwitches ? iQuiet + 1 : 0;
        oLast = oNow;
    }
}

long switchesOfOtherThreads()
{
    return otherThreads().iVoluntary;
}
