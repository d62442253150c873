// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CArena.h"
#include "CError.h"
#include "CInterpreter.h"
#include "CModule.h"
#include "CReplay.h"
#include "CSession.h"
#include "CSignals.h"
#include "help.h"
#include "options.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <exception>
#include <filesystem>
#include <string>
#include <unistd.h>

namespace {

// What every source of statements or calls needs.
struct SRun
{
    const CModule& oModule;
    const SOptions& oOptions;
    CArena& oArena;
    CSignals& oSignals;
    CSession& oSession;
    std::filesystem::path oStart; ///< the folder that the program was started in
};

// The name of a recording as the working folder needs it.
std::string recording(const SRun& oRun, const std::string& sName)
{
    return oRun.oOptions.sFolder.empty() ? sName : (oRun.oStart / sName).string();
}

// Runs one source; false when the answers of a checked script or a recording differ.
bool runSource(const SRun& oRun, const SSource& oSource, int& iCommand)
{
    switch (oSource.eType) {
    case ESource::eScript:
        oRun.oSession.runFile(oSource.sText);
        return true;
    case ESource::eCommand:
        oRun.oSession.runText(oSource.sText, "command " + std::to_string(++iCommand));
        return true;
    case ESource::eCheck:
        return oRun.oSession.checkFile(oSource.sText, oRun.oOptions.dPatience);
    case ESource::eReplay:
        return CReplay(oRun.oModule, oRun.oArena, oRun.oSignals, oRun.oOptions.dPatience)
            .run(recording(oRun, oSource.sText), oRun.oOptions.vNeededVariables);
    }
    return true;
}

// Returns the exit code.
int runSources(const SRun& oRun)
{
    int iCommand = 0;
    int iCode = 0;
    const SOptions& oOptions = oRun.oOptions;
    for (const SSource& oSource : oOptions.vSources) {
        if (oRun.oSession.stopped()) {
            return iCode;
        }
        if (!runSource(oRun, oSource, iCommand)) {
            iCode = iDifferenceCode;
        }
    }
    if (oOptions.bInteractive || (oOptions.vSources.empty() && isatty(STDIN_FILENO))) {
        oRun.oSession.runPrompt();
    } else if (oOptions.vSources.empty()) {
        oRun.oSession.runInput(STDIN_FILENO, "standard input");
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
    const SRun oRun{oModule, oOptions, oArena, oSignals, oSession, std::filesystem::current_path()};
    enterFolder(oOptions.sFolder); // after the session, which looks for scripts where the program was started
    int iCode = 0;
    try {
        iCode = runSources(oRun);
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
