// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "options.h"

#include "places.h"

#include <CLI/CLI.hpp>

#include <map>

namespace {

CLI::Option* addRepeatable(
    CLI::App& oApp, const char* pcName, std::vector<std::string>& vTexts, const char* pcHelp)
{
    return oApp.add_option(pcName, vTexts, pcHelp)->expected(1)->take_all()->allow_extra_args(false);
}

using SourceOptions = std::map<const CLI::Option*, ESource>;

std::vector<SSource> inOrder(const CLI::App& oApp, const SourceOptions& oKinds)
{
    std::vector<SSource> vSources;
    std::map<const CLI::Option*, std::size_t> oUsed;
    for (const CLI::Option* pOption : oApp.parse_order()) {
        const auto pKind = oKinds.find(pOption);
        if (pKind != oKinds.end()) {
            vSources.push_back({pKind->second, pOption->results().at(oUsed[pOption]++)});
        }
    }
    return vSources;
}

std::string oneLine(const CLI::App* /*pApp*/, const CLI::Error& oError)
{
    return std::string("qtutils-host: ") + oError.what() + "; see --help\n";
}

} // namespace

std::optional<int> parseOptions(int iArguments, char** ppcArguments, SOptions& oOptions)
{
    CLI::App oApp("Loads a class module by its descriptor and calls its methods", "qtutils-host");
    std::vector<std::string> vScripts;
    std::vector<std::string> vCommands;
    std::vector<std::string> vChecks;
    std::vector<std::string> vReplays;
    oOptions.vNeededVariables = {"MYSQL_HOST", "MYSQL_USER", "MYSQL_PWD"};
    oApp.failure_message(&oneLine);
    oApp.set_version_flag("--version", "qtutils-host " QTUTILS_VERSION);
    oApp.add_option("MODULE", oOptions.sModule,
        "The module; when not given, qtutils.so beside the program, or else the installed one");
    oApp.add_option("--directory", oOptions.sFolder,
        "Working folder of the module, where it finds its files; when neither this nor MODULE is given, the "
        "folder of the module's signs. Scripts are looked for in yours all the same");
    const SourceOptions oSources = {
        {addRepeatable(oApp, "--script", vScripts, "Run the statements of this file; repeatable"),
            ESource::eScript},
        {addRepeatable(oApp, "--command", vCommands, "Run these statements; repeatable"), ESource::eCommand},
        {addRepeatable(oApp, "--check", vChecks,
             "Run this file and compare what is printed with the answers written in it; repeatable"),
            ESource::eCheck},
        {addRepeatable(oApp, "--replay", vReplays,
             "Make the calls of this recording of qtutils-trace again and compare the answers; repeatable"),
            ESource::eReplay},
    };
    oApp.add_option("--wait", oOptions.dPatience,
            "Longest wait of --check and --replay for an answer, in seconds; 10 when not given")
        ->check(CLI::Range(0.0, 1e6));
    oApp.add_flag("--interactive", oOptions.bInteractive, "Go on with the prompt after scripts and commands");
    oApp.add_flag("--list", oOptions.bList, "Print classes, symbols and prototypes, and end");
    addRepeatable(oApp, "--need", oOptions.vNeededVariables,
        "Environment variable that a null handle is explained with, instead of MYSQL_HOST, MYSQL_USER, "
        "MYSQL_PWD; "
        "repeatable")
        ->delimiter(',');
    try {
        oApp.parse(iArguments, ppcArguments);
    } catch (const CLI::ParseError& oError) {
        return oApp.exit(oError) == 0 ? 0 : iErrorCode;
    }
    oOptions.vSources = inOrder(oApp, oSources);
    if (oOptions.sModule.empty()) {
        const SPlace oPlace = defaultPlace();
        oOptions.sModule = oPlace.sModule;
        oOptions.sFolder = oOptions.sFolder.empty() ? oPlace.sFolder : oOptions.sFolder;
    }
    return std::nullopt;
}
