// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

// A host whose surroundings fail. The runner lets them fail, and measures. Argument: the fault, for the
// runner's messages.

#include "CModuleHost.h"
#include "settle.h"
#include "treehost.h"
#include "workerloop.h"

namespace {

std::string sMarkedDate; // the module reads it later

CReport answers(const CModuleHost& oHost)
{
    CReport oReport;
    oReport.result("rows", oHost.numRows());
    oReport.result("date", oHost.firstDateInFrame());
    return oReport;
}

void obey(CModuleHost& oHost, const workerloop::Words& vsWords)
{
    const std::string& sWord = vsWords.at(0);
    if (sWord == "construct") {
        oHost.construct(vsWords.at(1), vsWords.at(2));
        oHost.setSOMTable(vsWords.at(3));
    } else if (sWord == "free") {
        oHost.free();
    } else if (sWord == "show") {
        oHost.show();
    } else if (sWord == "tree") {
        fillTree(oHost, std::stoi(vsWords.at(1)));
    } else if (sWord == "select") {
        oHost.select(std::stoi(vsWords.at(1)));
        sMarkedDate = vsWords.at(2) + ' ' + vsWords.at(3);
        oHost.markRow(sMarkedDate);
    } else if (sWord == "settle") {
        settle();
    } else {
        workerloop::fail("no such word: " + sWord);
    }
}

} // namespace

int main()
{
    CModuleHost oHost;
    workerloop::serve({}, [&](const workerloop::Words& vsWords) {
        if (vsWords.at(0) == "ask")
            return answers(oHost);
        obey(oHost, vsWords);
        return CReport();
    });
    return 0;
}
