// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CKeywordTable.h"

#include "data/beginning.h"
#include "keywords.h"

#include <QSqlField>

#include <algorithm>
#include <charconv>

namespace {

enum Field
{
    TopicField,
    KeywordField
};

bool isOneOf(const QSqlField& oField, std::initializer_list<QMetaType::Type> lTypes)
{
    return std::find(lTypes.begin(), lTypes.end(), oField.metaType().id()) != lTypes.end();
}

constexpr std::size_t MostBytes = 4000; ///< of a text in one piece: half a screen

} // namespace

CKeywordTable::CKeywordTable(QSqlQuery&& oExecuted)
    : oRows(std::move(oExecuted))
    , bShortTopics(
          isOneOf(oRows.fields().field(TopicField), {QMetaType::Char, QMetaType::Short, QMetaType::Int}))
    , bTexts(isOneOf(oRows.fields().field(KeywordField), {QMetaType::QString, QMetaType::QByteArray}))
{
}

// Numbers with a point as numbers.
QVariant CKeywordTable::value(int iNode, int iField) const
{
    const QVariant oValue = oRows.value(iNode, iField);
    const bool bNumber = oRows.fields().field(iField).metaType().id() == QMetaType::Double;
    return bNumber && !oValue.isNull() ? QVariant(oValue.toDouble()) : oValue;
}

int CKeywordTable::topic(int iNode) const
{
    if (!bShortTopics)
        return value(iNode, TopicField).toInt();
    int iTopic = 0;
    if (const auto oBytes = oRows.bytes(iNode, TopicField))
        std::from_chars(oBytes->data(), oBytes->data() + oBytes->size(), iTopic);
    return iTopic;
}

std::string_view CKeywordTable::shown(int iNode) const
{
    if (bTexts)
        keywords::shorten(oRows.bytes(iNode, KeywordField).value_or(std::string_view()), oShown);
    else
        keywords::shorten(value(iNode, KeywordField).toString().toStdString(), oShown);
    return oShown;
}

QString CKeywordTable::keywords(int iNode) const
{
    if (iNode < 0 || iNode >= numRows())
        return {};
    const std::string_view oText = shown(iNode);
    return QString::fromUtf8(oText.data(), qsizetype(oText.size()));
}

QString CKeywordTable::allKeywords(int iNode) const
{
    if (iNode < 0 || iNode >= numRows())
        return {};
    const QString sTexts = bTexts
        ? beginning(oRows.bytes(iNode, KeywordField).value_or(std::string_view()), MostBytes)
        : value(iNode, KeywordField).toString();
    return sTexts.trimmed().replace(QLatin1Char('\n'), QStringLiteral(", "));
}
