// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

// An answered call, getNumRows, with all threads on one core. Arguments: database and table of the map,
// database of the documents, a node.

#include "CModuleHost.h"
#include "callrounds.h"
#include "onecore.h"
#include "settle.h"

int main(int /*iArguments*/, char** apcArguments)
{
    stayOnOneCore();
    const CModuleHost oHost(apcArguments[1], apcArguments[3], apcArguments[2], CModuleHost::Window::Hidden);
    oHost.select(std::stoi(apcArguments[4]));
    oHost.numRows();
    settle();
    serveCalls([&] { return oHost.numRows(); });
    return 0;
}
