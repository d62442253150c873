// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CKeywordTable.h"

#include "keywords.h"

#include <QSqlQuery>
#include <QVariant>

#include <algorithm>

namespace {

enum Field
{
    TopicField,
    KeywordField
};

} // namespace

CKeywordTable::CKeywordTable(std::unique_ptr<QSqlQuery> pResult)
    : pQuery(std::move(pResult))
    , iNumRows(std::max(pQuery->size(), 0))
{
}

CKeywordTable::~CKeywordTable() = default;

void CKeywordTable::seek(int iRow) const
{
    if (pQuery->at() != iRow)
        pQuery->seek(iRow);
}

int CKeywordTable::topic(int iNode) const
{
    seek(iNode);
    return pQuery->value(TopicField).toInt();
}

QString CKeywordTable::keywords(int iNode) const
{
    if (iNode < 0 || iNode >= iNumRows)
        return {};
    seek(iNode);
    return keywords::shortened(pQuery->value(KeywordField).toString());
}
