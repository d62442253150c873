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
void shorten(std::string_view oKeywords, std::string& oShown)
{
    std::size_t uLineFeed = std::string_view::npos;
    for (int i = 0; i < 3; i++)
        uLineFeed = oKeywords.find('\n', uLineFeed + 1);
    const std::string_view oFirst = oKeywords.substr(0, uLineFeed);
    oShown.clear();
    std::size_t uBegin = 0;
    for (std::size_t uEnd = oFirst.find('\n'); uEnd != std::string_view::npos;
         uEnd = oFirst.find('\n', uBegin)) {
        oShown.append(oFirst, uBegin, uEnd - uBegin).append(", ");
        uBegin = uEnd + 1;
    }
    oShown.append(oFirst, uBegin);
}

} // namespace keywords
