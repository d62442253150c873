// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "options.h"

#include <CLI/CLI.hpp>

#include <filesystem>

namespace {

std::string moduleBesideProgram()
{
    std::error_code oIgnored; // without the answer the module is looked for in the current folder
    return (std::filesystem::read_symlink("/proc/self/exe", oIgnored).parent_path() / "qtutils.so").string();
}

CLI::Option* addRepeatable(
    CLI::App& oApp, const char* pcName, std::vector<std::string>& vTexts, const char* pcHelp)
{
    return oApp.add_option(pcName, vTexts, pcHelp)->expected(1)->take_all()->allow_extra_args(false);
}

std::vector<SSource> inOrder(const CLI::App& oApp, const CLI::Option* pScript, const CLI::Option* pCommand)
{
    std::vector<SSource> vSources;
    std::size_t nScript = 0;
    std::size_t nCommand = 0;
    for (const CLI::Option* pOption : oApp.parse_order()) {
        if (pOption == pScript) {
            vSources.push_back({true, pScript->results().at(nScript++)});
        } else if (pOption == pCommand) {
            vSources.push_back({false, pCommand->results().at(nCommand++)});
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
    oOptions.sModule = moduleBesideProgram();
    oOptions.vNeededVariables = {"MYSQL_HOST", "MYSQL_USER", "MYSQL_PWD"};
    oApp.failure_message(&oneLine);
    oApp.set_version_flag("--version", "qtutils-host " QTUTILS_VERSION);
    oApp.add_option("MODULE", oOptions.sModule, "The module; qtutils.so beside the program when not given");
    const auto* pScript =
        addRepeatable(oApp, "--script", vScripts, "Run the statements of this file; repeatable");
    const auto* pCommand = addRepeatable(oApp, "--command", vCommands, "Run these statements; repeatable");
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
    oOptions.vSources = inOrder(oApp, pScript, pCommand);
    return std::nullopt;
}
