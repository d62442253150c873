// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "help.h"

#include "CModule.h"

#include <algorithm>

namespace {

constexpr const char* pcBuiltIns = R"(Built-ins:
  .help [METHOD]      this list, or the arguments of one method
  .include FILE       run a script; relative to the folder of the script that says so
  .set NAME VALUE     give a variable a value; $NAME stands for it
  .echo TEXT          print text and variables
  .sleep SECONDS      wait
  .class NAME         choose the class that calls go to
  .quit               free all instances and end
)";

const char* howToWrite(EKind eKind)
{
    switch (eKind) {
    case EKind::eInt:
        return "7, -1, $n, $n*3 or null";
    case EKind::eText:
        return "word, \"text\", $name or null; char[N] for a result";
    case EKind::eInts:
        return "[1 2 3], repeat(N, [...]), ramp(N, [...], [...]), $name or null; int[N] for a result";
    case EKind::eFloats:
        return "[0 80.5 255], repeat(N, [...]), ramp(N, [...], [...]), $name or null; float[N] for a result";
    }
    return "";
}

} // namespace

std::string helpText(const CClass& oClass)
{
    std::string sText = "Class " + oClass.name() + ":\n";
    for (const SEntryPoint& oEntry : oClass.entryPoints()) {
        sText += "  " + oEntry.oPrototype.text() + "\n";
    }
    return sText + pcBuiltIns;
}

std::string helpText(const CPrototype& oPrototype)
{
    std::string sText = oPrototype.text() + "\n";
    for (std::size_t n = 0; n < oPrototype.arguments().size(); ++n) {
        const EKind eKind = oPrototype.arguments()[n].eKind;
        sText +=
            "  " + oPrototype.argumentLabel(n) + ", " + declaration(eKind) + ": " + howToWrite(eKind) + "\n";
    }
    return oPrototype.arguments().empty() ? sText + "  no arguments\n" : sText;
}

std::string moduleText(const CModule& oModule)
{
    std::string sText = "module " + oModule.path() + ", namespace " + oModule.nameSpace() + "\n";
    for (const CClass& oClass : oModule.classes()) {
        sText += "class " + oClass.name() + "\n";
        std::size_t nWidth = 0;
        for (const SEntryPoint& oEntry : oClass.entryPoints()) {
            nWidth = std::max(nWidth, oEntry.sSymbol.size());
        }
        for (const SEntryPoint& oEntry : oClass.entryPoints()) {
            const std::string sGap(nWidth - oEntry.sSymbol.size() + 2, ' ');
            sText += "  " + oEntry.sSymbol + sGap + oEntry.oPrototype.text() + "\n";
        }
    }
    return sText;
}
