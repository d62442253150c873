// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

// The least that answers a call in another thread. The argument is the answer.

#include "CPlainHandover.h"
#include "callrounds.h"
#include "onecore.h"

int main(int /*iArguments*/, char** apcArguments)
{
    stayOnOneCore();
    const int iRows = std::stoi(apcArguments[1]);
    CPlainHandover oHandover([&](int) { return iRows; });
    serveCalls([&] { return oHandover.ask(0); });
    return 0;
}
