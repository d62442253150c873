// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

// What one would otherwise take: the toolkit's query, whose values know the time. Arguments as those of
// dates_module.cpp.

#include "peer.h"
#include "textsum.h"
#include "workerloop.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QSqlQuery>
#include <QVariant>

#include <cmath>
#include <functional>

namespace {

constexpr int DateField = 3; // node, dist, id, date

void eachTime(QSqlQuery& oQuery, const std::function<void(qint64)>& take)
{
    for (bool bAtRow = oQuery.first(); bAtRow; bAtRow = oQuery.next())
        take(oQuery.value(DateField).toDateTime().toSecsSinceEpoch());
}

int minutes(qint64 iSeconds)
{
    return int(std::lround(double(iSeconds) / 60.0));
}

std::vector<int> minutesOf(QSqlQuery& oQuery)
{
    std::vector<int> viMinutes;
    viMinutes.reserve(std::size_t(oQuery.size()));
    qint64 iFirst = -1;
    eachTime(oQuery, [&](qint64 iTime) {
        if (viMinutes.empty())
            iFirst = iTime;
        viMinutes.push_back(minutes(iTime - iFirst));
    });
    return viMinutes;
}

} // namespace

int main(int iArguments, char** apcArguments)
{
    const QCoreApplication oApplication(iArguments, apcArguments);
    QSqlQuery oQuery(peer::connection(apcArguments[1]));
    workerloop::serve({}, [&](const workerloop::Words& vsWords) {
        oQuery.exec(peer::documentsOf(apcArguments[2], apcArguments[3], vsWords.at(0)));
        std::vector<int> viMinutes;
        qint64 iLast = -1;
        CReport oReport;
        oReport.figure("fill", workerloop::seconds([&] { viMinutes = minutesOf(oQuery); }));
        oReport.figure(
            "mark", workerloop::seconds([&] { eachTime(oQuery, [&](qint64 iTime) { iLast = iTime; }); }));
        oReport.result("rows", (long long)viMinutes.size());
        oReport.result("minutes", textsum::of(viMinutes));
        oReport.result("last", minutes(iLast));
        return oReport;
    });
    return 0;
}
