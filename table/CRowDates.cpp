// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CRowDates.h"

#include "data/datetext.h"
#include "fieldtext.h"

#include <QSqlField>

#include <cstdio>

int CRowDates::field(const QSqlRecord& oFields)
{
    for (int i = 0; i < oFields.count(); i++)
        if (oFields.fieldName(i) == QStringLiteral("date"))
            return i;
    return 0;
}

CRowDates::CRowDates(const CStoredRows* pResult)
    : pRows(pResult)
{
    if (pRows == nullptr)
        return;
    iField = field(pRows->fields());
    bStamps = pRows->fields().field(iField).metaType().id() == QMetaType::QDateTime;
}

int CRowDates::numRows() const
{
    return pRows == nullptr ? 0 : pRows->numRows();
}

QByteArray CRowDates::text(int iRow) const
{
    return fieldtext::plain(pRows->value(iRow, iField)).toLatin1();
}

std::optional<std::time_t> CRowDates::timeOfText(int iRow) const
{
    const QByteArray oText = text(iRow);
    const auto iTime = datetext::rowTime(oText.constData());
    if (!iTime) {
        std::printf("CNodeBrowser->CTable: Warning: The                        following Date could not be "
                    "parsed: %s\n",
            oText.constData());
        std::fflush(stdout);
    }
    return iTime;
}
