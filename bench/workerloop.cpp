// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "workerloop.h"

#include <cstdlib>
#include <iostream>
#include <sstream>

#include <unistd.h>

namespace workerloop {
namespace {

void say(const CReport& oReport)
{
    std::cout << "= " << oReport.line() << std::endl;
}

Words wordsOf(const std::string& sLine)
{
    std::istringstream oStream(sLine);
    Words vsWords;
    for (std::string sWord; oStream >> sWord;)
        vsWords.push_back(sWord);
    return vsWords;
}

} // namespace

void serve(const CReport& oReady, const std::function<CReport(const Words&)>& round)
{
    say(oReady);
    for (std::string sLine; std::getline(std::cin, sLine);)
        say(round(wordsOf(sLine)));
}

void fail(const std::string& sWhy)
{
    std::cerr << sWhy << std::endl;
    _exit(2);
}

} // namespace workerloop
