// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

// The least that shows a node's documents: the C client frees the last result, runs the statement and stores
// the new one. Arguments as those of select_module.cpp.

#include "CClient.h"
#include "memory.h"
#include "workerloop.h"

namespace {

constexpr unsigned DateField = 3; // node, dist, id, date

// The client's text as the module gives it.
std::string firstDate(MYSQL_RES* pResult)
{
    mysql_data_seek(pResult, 0);
    std::string sDate = mysql_fetch_row(pResult)[DateField];
    sDate[sDate.find(' ')] = 'T';
    return sDate;
}

} // namespace

int main(int /*iArguments*/, char** apcArguments)
{
    CClient oClient(apcArguments[1]);
    CClient::Result pResult = CClient::none();
    CReport oReady;
    oReady.figure("own", double(memory::own()));
    oReady.figure("resident", double(memory::resident()));
    workerloop::serve(oReady, [&](const workerloop::Words& vsWords) {
        const std::string sStatement =
            documentsOf(apcArguments[2], apcArguments[3], std::stoi(vsWords.at(0)));
        memory::resetPeak();
        CReport oReport;
        oReport.figure("time", workerloop::seconds([&] {
            pResult.reset();
            pResult = oClient.store(sStatement);
        }));
        oReport.figure("peak", double(memory::peak()));
        oReport.figure("own", double(memory::own()));
        oReport.result("rows", (long long)mysql_num_rows(pResult.get()));
        oReport.result("first", firstDate(pResult.get()));
        return oReport;
    });
    return 0;
}
