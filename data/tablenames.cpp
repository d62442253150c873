// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "tablenames.h"

namespace tablenames {

QString keywordTable(const QString& sSOMTable)
{
    const QString sTrain = QStringLiteral("train");
    if (!sSOMTable.endsWith(sTrain))
        return sSOMTable;
    return sSOMTable.chopped(sTrain.size()) + QStringLiteral("som");
}

QString qualified(const QString& sDatabase, const QString& sTable)
{
    return sDatabase + QLatin1Char('.') + sTable;
}

} // namespace tablenames
