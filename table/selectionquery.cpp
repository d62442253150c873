// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "selectionquery.h"

#include "data/tablenames.h"

namespace selectionquery {
namespace {

constexpr int LongestDay = 10; ///< characters of YYYY-MM-DD

QString fields(const Tables& oTables)
{
    return QStringLiteral("SELECT node, dist, ") + oTables.sSourceTable + QStringLiteral(".* FROM ")
        + oTables.sSOMTable + QStringLiteral(", ")
        + tablenames::qualified(oTables.sSourceDB, oTables.sSourceTable);
}

QString dateCondition(const QString& sSource, const QString& sDateFilter)
{
    if (sDateFilter.isEmpty())
        return {};
    const QString sDate = QStringLiteral(" AND ") + sSource + QStringLiteral(".date ");
    if (sDateFilter.size() <= LongestDay)
        return sDate + QStringLiteral("like \"") + sDateFilter + QStringLiteral("%\"");
    return sDate + QStringLiteral("=\"") + sDateFilter + QStringLiteral("\"");
}

} // namespace

QString probe(const Tables& oTables)
{
    return fields(oTables) + QStringLiteral(" LIMIT 1");
}

// Deliberate: nothing is quoted or escaped. Test: tst_selectionquery, namesAndTextsGoInAsTheyStand.
QString documents(const Tables& oTables, int iNode, const QString& sSortField, const QString& sDateFilter)
{
    const QString sSource = tablenames::qualified(oTables.sSourceDB, oTables.sSourceTable);
    return fields(oTables) + QStringLiteral(" WHERE ") + sSource + QStringLiteral(".id=") + oTables.sSOMTable
        + QStringLiteral(".item AND node=") + QString::number(iNode) + dateCondition(sSource, sDateFilter)
        + QStringLiteral(" ORDER BY ") + sSortField;
}

} // namespace selectionquery
