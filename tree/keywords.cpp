// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "keywords.h"

#include "data/tablenames.h"

namespace keywords {

QString query(const QString& sSOMTable)
{
    return QStringLiteral("SELECT _assigned_topic, _keywords FROM ") + tablenames::keywordTable(sSOMTable)
        + QLatin1Char(' ');
}

// Deliberate: a search behind a failed one starts at the beginning again, so that of two keywords only the
// first is left. Test: tst_keywords, aTextIsShortened.
QString shortened(QString sKeywords)
{
    qsizetype iLineFeed = -1;
    for (int i = 0; i < 3; i++)
        iLineFeed = sKeywords.indexOf(QLatin1Char('\n'), iLineFeed + 1);
    if (iLineFeed >= 0)
        sKeywords.truncate(iLineFeed);
    return sKeywords.replace(QLatin1Char('\n'), QStringLiteral(", "));
}

} // namespace keywords
