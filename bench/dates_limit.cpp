// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

// The least that gives a node's dates: the stored texts lie side by side, and their digits are read by their
// places. Arguments as those of dates_module.cpp.

#include "CClient.h"
#include "CLocalTimes.h"
#include "textsum.h"
#include "workerloop.h"

#include <array>
#include <limits>
#include <optional>

namespace {

constexpr unsigned DateField = 3; // node, dist, id, date
using Text = std::array<char, 20>;

std::vector<Text> textsOf(MYSQL_RES* pResult)
{
    std::vector<Text> vTexts;
    vTexts.reserve(mysql_num_rows(pResult));
    for (MYSQL_ROW ppcRow = mysql_fetch_row(pResult); ppcRow != nullptr; ppcRow = mysql_fetch_row(pResult))
        std::memcpy(vTexts.emplace_back().data(), ppcRow[DateField], sizeof(Text));
    return vTexts;
}

// The nearest one, halves away from zero.
int minutes(std::time_t iSeconds)
{
    return int((iSeconds + (iSeconds < 0 ? -30 : 30)) / 60);
}

void fill(const std::vector<Text>& vTexts, int* piMinutes)
{
    CLocalTimes oTimes;
    std::optional<std::time_t> oFirst;
    for (const Text& acText : vTexts) {
        const std::time_t iTime = oTimes.of(acText.data());
        if (!oFirst)
            oFirst = iTime;
        *piMinutes++ = minutes(iTime - *oFirst);
    }
}

// The last time that was looked at.
std::time_t findLater(const std::vector<Text>& vTexts, std::time_t iStart)
{
    CLocalTimes oTimes;
    std::time_t iTime = -1;
    for (const Text& acText : vTexts) {
        iTime = oTimes.of(acText.data());
        if (iTime > iStart)
            break;
    }
    return iTime;
}

} // namespace

int main(int /*iArguments*/, char** apcArguments)
{
    CClient oClient(apcArguments[1]);
    workerloop::serve({}, [&](const workerloop::Words& vsWords) {
        const auto pResult =
            oClient.store(documentsOf(apcArguments[2], apcArguments[3], std::stoi(vsWords.at(0))));
        const std::vector<Text> vTexts = textsOf(pResult.get());
        std::vector<int> viMinutes(vTexts.size());
        std::time_t iLast = 0;
        CReport oReport;
        oReport.figure("fill", workerloop::seconds([&] { fill(vTexts, viMinutes.data()); }));
        oReport.figure("mark",
            workerloop::seconds([&] { iLast = findLater(vTexts, std::numeric_limits<std::time_t>::max()); }));
        oReport.result("rows", (long long)viMinutes.size());
        oReport.result("minutes", textsum::of(viMinutes));
        oReport.result("last", minutes(iLast));
        return oReport;
    });
    return 0;
}
