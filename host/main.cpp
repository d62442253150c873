// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CArena.h"
#include "CError.h"
#include "CInterpreter.h"
#include "CModule.h"
#include "CSession.h"
#include "CSignals.h"
#include "help.h"
#include "options.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <exception>
#include <string>
#include <unistd.h>

namespace {

// Runs one source; false when a checked script's answers differ.
bool runSource(CSession& oSession, const SSource& oSource, double dPatience, int& iCommand)
{
    switch (oSource.eType) {
    case ESource::eScript:
        oSession.runFile(oSource.sText);
        return true;
    case ESource::eCommand:
        oSession.runText(oSource.sText, "command " + std::to_string(++iCommand));
        return true;
    case ESource::eCheck:
        return oSession.checkFile(oSource.sText, dPatience);
    }
    return true;
}

// Returns the exit code.
int runSources(CSession& oSession, const SOptions& oOptions)
{
    int iCommand = 0;
    int iCode = 0;
    for (const SSource& oSource : oOptions.vSources) {
        if (oSession.stopped()) {
            return iCode;
        }
        if (!runSource(oSession, oSource, oOptions.dPatience, iCommand)) {
            iCode = iDifferenceCode;
        }
    }
    if (oOptions.bInteractive || (oOptions.vSources.empty() && isatty(STDIN_FILENO))) {
        oSession.runPrompt();
    } else if (oOptions.vSources.empty()) {
        oSession.runInput(STDIN_FILENO, "standard input");
    }
    return iCode;
}

void enterFolder(const std::string& sFolder)
{
    if (!sFolder.empty() && chdir(sFolder.c_str()) != 0) {
        throw CError("can't enter folder \"" + sFolder + "\": " + std::strerror(errno));
    }
}

int runModule(const CModule& oModule, const SOptions& oOptions, CArena& oArena, CSignals& oSignals)
{
    CInterpreter oInterpreter(oModule, oArena, oSignals, oOptions.vNeededVariables);
    CSession oSession(oInterpreter, oSignals);
    enterFolder(oOptions.sFolder); // after the session, which looks for scripts where the program was started
    int iCode = 0;
    try {
        iCode = runSources(oSession, oOptions);
    } catch (const CError& oError) {
        printError(oError.located() ? oError.what() : std::string("qtutils-host: ") + oError.what());
        iCode = iErrorCode;
    }
    oInterpreter.freeAll();
    return oSignals.pending() ? 128 + oSignals.pending() : iCode;
}

int run(const SOptions& oOptions)
{
    // Deliberate: never destroyed. The module's threads may use the buffers until the process is gone; the
    // static pointer tells leak checkers that the memory is still in use. Test: tst_hostcalls,
    // buffersOutliveTheCallAndTheLastDestructor.
    static auto* const pArena = new CArena;
    CSignals oSignals;
    const CModule oModule(oOptions.sModule);
    if (oOptions.bList) {
        std::fputs(moduleText(oModule).c_str(), stdout);
        return 0;
    }
    return runModule(oModule, oOptions, *pArena, oSignals);
}

} // namespace

int main(int iArguments, char** ppcArguments)
{
    try {
        SOptions oOptions;
        const auto oExitCode = parseOptions(iArguments, ppcArguments, oOptions);
        return oExitCode ? *oExitCode : run(oOptions);
    } catch (const std::exception& oError) {
        printError(std::string("qtutils-host: ") + oError.what());
        return iErrorCode;
    }
}
