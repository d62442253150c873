// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "workerloop.h"

#include <algorithm>

/// Rounds of as many calls as the runner wants, each call timed; the answer of the calls is an int.
template <typename Call> void serveCalls(Call call)
{
    workerloop::serve({}, [&](const workerloop::Words& vsWords) {
        std::vector<double> vfTimes(std::stoul(vsWords.at(0)));
        long long iSum = 0;
        for (double& fTime : vfTimes)
            fTime = workerloop::seconds([&] { iSum += call(); });
        std::sort(vfTimes.begin(), vfTimes.end());
        CReport oReport;
        oReport.figure("median", vfTimes[vfTimes.size() / 2]);
        oReport.figure("p99", vfTimes[vfTimes.size() * 99 / 100]);
        oReport.result("sum", iSum);
        return oReport;
    });
}
