// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CDateFilter.h"

#include "tests/support/CPrivateServer.h"

CDateFilter::CDateFilter(const CPrivateServer& oItsServer, CScreen& oScreen)
    : oAnalyst(oHost, oScreen)
    , oServer(oItsServer)
{
    oHost.start();
    oAnalyst.showWindow();
    oHost.call("select", {"i:1"});
    oAnalyst.table();
    oServer.startLog();
}

void CDateFilter::clickBox()
{
    // The box itself, without its text.
    const QRect oBox = oAnalyst.part("checkdate");
    oAnalyst.click({oBox.topLeft(), QSize(16, oBox.height())});
}

void CDateFilter::fillIn(const QByteArray& oDigits, const QByteArrayList& lKeys)
{
    clickBox();
    oAnalyst.press({"Tab"});
    oAnalyst.type(oDigits);
    if (!lKeys.isEmpty())
        oAnalyst.press(lKeys);
    oAnalyst.table();
}

QStringList CDateFilter::conditions() const
{
    QStringList slConditions;
    for (const QString& sStatement : oServer.log())
        slConditions << sStatement.section(QStringLiteral(" ORDER BY "), 0, 0)
                            .section(QStringLiteral(" AND news.document.date "), 1);
    return slConditions;
}
