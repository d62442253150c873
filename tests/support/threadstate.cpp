// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "threadstate.h"

#include <fstream>
#include <string>
#include <thread>

namespace {

// The state is the letter behind the program's name, which stands in brackets.
bool isAsleep(pid_t iThread)
{
    std::ifstream oFile("/proc/self/task/" + std::to_string(iThread) + "/stat");
    std::string sLine;
    std::getline(oFile, sLine);
    const auto uBracket = sLine.rfind(')');
    return uBracket != std::string::npos && sLine.substr(uBracket + 2, 1) == "S";
}

} // namespace

void waitUntilAsleep(pid_t iThread, const std::function<bool()>& orDone)
{
    while (!orDone() && !isAsleep(iThread))
        std::this_thread::yield();
}
