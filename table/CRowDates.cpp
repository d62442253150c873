// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CRowDates.h"

#include "data/datetext.h"
#include "fieldtext.h"

#include <QSqlQuery>
#include <QSqlRecord>
#include <QVariant>

#include <cstdio>

namespace {

int dateField(const QSqlRecord& oRecord)
{
    for (int i = 0; i < oRecord.count(); i++)
        if (oRecord.fieldName(i) == QStringLiteral("date"))
            return i;
    return 0;
}

} // namespace

CRowDates::CRowDates(QSqlQuery* pResult)
    : pQuery(pResult)
{
    if (pQuery == nullptr)
        return;
    iField = dateField(pQuery->record());
    bAtRow = pQuery->first();
}

CRowDates::~CRowDates()
{
    if (pQuery != nullptr)
        pQuery->first();
}

void CRowDates::next()
{
    bAtRow = pQuery->next();
    iRow++;
}

QString CRowDates::text() const
{
    return fieldtext::plain(pQuery->value(iField));
}

std::optional<std::time_t> CRowDates::time() const
{
    const QByteArray oText = text().toLatin1();
    const auto iTime = datetext::rowTime(oText.constData());
    if (!iTime) {
        std::printf("CNodeBrowser->CTable: Warning: The                        following Date could not be "
                    "parsed: %s\n",
            oText.constData());
        std::fflush(stdout);
    }
    return iTime;
}
