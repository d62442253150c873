// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "datedhost.h"

#include "CPlainHost.h"
#include "tests/support/CPrivateServer.h"

#include <QDate>
#include <QTest>

namespace datedhost {

void make(const CPrivateServer& oServer, const Dates& oDates)
{
    QStringList slDocuments;
    for (int i = 1; i <= oDates.slDates.size(); i++) {
        const QString& sDate = oDates.slDates[i - 1];
        const QString sValue =
            sDate.isNull() ? QStringLiteral("NULL") : QLatin1Char('\'') + sDate + QLatin1Char('\'');
        slDocuments << QStringLiteral("(%1, %2, 'row %1', 'text %1')").arg(i).arg(sValue);
    }
    oServer.sql(
        QStringLiteral("SET sql_mode=''; USE som; CREATE OR REPLACE DATABASE dated CHARSET utf8mb4; "
                       "CREATE TABLE dated.document (id INT, %1 %2, title VARCHAR(20), text VARCHAR(20)); "
                       "INSERT INTO dated.document VALUES %3; "
                       "CREATE OR REPLACE VIEW dates AS "
                       "SELECT 0 node, 0.5 dist, seq item FROM seq_1_to_%4")
            .arg(oDates.sColumn, oDates.sType, slDocuments.join(QLatin1Char(',')))
            .arg(slDocuments.size()));
}

int choose(CPlainHost& oHost)
{
    oHost.load();
    oHost.call("setSOMTable", {"t:dates"});
    oHost.call("CNodeBrowser", {"t:som", "t:dated"});
    oHost.call("select", {"i:0"});
    return oHost.numRows();
}

void show(CPlainHost& oHost, const CPrivateServer& oServer, const Dates& oDates)
{
    make(oServer, oDates);
    QCOMPARE(choose(oHost), oDates.slDates.size());
}

Dates days(int iDays)
{
    Dates oDates;
    for (int i = 0; i < iDays; i++)
        oDates.slDates << QDate(2006, 1, 1).addDays(i).toString(Qt::ISODate);
    return oDates;
}

QByteArray warning(const QByteArray& oDate)
{
    return "CNodeBrowser->CTable: Warning: The                        following Date could not be parsed: "
        + oDate;
}

} // namespace datedhost
