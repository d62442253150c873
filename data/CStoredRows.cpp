// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CStoredRows.h"

#include "fieldtype.h"

#include <QDateTime>
#include <QSqlField>
#include <QSqlResult>

#include <algorithm>

#include <mysql.h>

namespace {

st_mysql_res* storedResult(const QSqlQuery& oQuery)
{
    const QVariant oHandle = oQuery.result()->handle();
    const bool bStored = oQuery.isActive() && oHandle.metaType() == QMetaType::fromType<MYSQL_RES*>();
    return bStored ? *static_cast<MYSQL_RES* const*>(oHandle.constData()) : nullptr;
}

// Begins to load a row into the caches, which takes a fifth off the first walk through all rows. The client
// library mostly puts a row's list of texts and its texts behind the row.
void loadAhead(const st_mysql_rows* pRow)
{
    constexpr std::size_t CacheLine = 64;
    constexpr std::size_t NumLines = 4;
    if (pRow == nullptr) // behind the last row
        return;
    const auto* pcRow = reinterpret_cast<const char*>(pRow);
    for (std::size_t uLine = 0; uLine < NumLines; uLine++)
        __builtin_prefetch(pcRow + uLine * CacheLine);
}

} // namespace

CStoredRows::CStoredRows(QSqlQuery&& oExecuted)
    : oQuery(std::move(oExecuted))
    , oFields(oQuery.record())
    , pResult(storedResult(oQuery))
{
    oFields.clearValues();
    if (pResult == nullptr)
        return;
    iNumRows = std::max(oQuery.size(), 0);
    mysql_data_seek(pResult, 0);
    vPlaces.push_back(mysql_row_tell(pResult));
}

// The client library keeps the rows in a list, so the way to a row is walked once, and remembered.
void CStoredRows::goTo(int iRow) const
{
    if (iRow == iCurrent)
        return;
    const auto uRow = std::size_t(iRow);
    mysql_row_seek(pResult, vPlaces[std::min(uRow, vPlaces.size() - 1)]);
    while (vPlaces.size() <= uRow) {
        mysql_fetch_row(pResult);
        vPlaces.push_back(mysql_row_tell(pResult));
    }
    ppcCurrent = mysql_fetch_row(pResult);
    if (vPlaces.size() == uRow + 1) {
        vPlaces.push_back(mysql_row_tell(pResult));
        loadAhead(vPlaces.back());
    }
    piLengths = mysql_fetch_lengths(pResult);
    iCurrent = iRow;
}

QString CStoredRows::typeName(int iField) const
{
    return pResult == nullptr ? QString()
                              : fieldtype::name(*mysql_fetch_field_direct(pResult, unsigned(iField)));
}

std::optional<std::string_view> CStoredRows::bytes(int iRow, int iField) const
{
    goTo(iRow);
    if (ppcCurrent[iField] == nullptr)
        return std::nullopt;
    return std::string_view(ppcCurrent[iField], piLengths[iField]);
}

void CStoredRows::keepStamps(int iField)
{
    iStampField = iField;
    vStamps.assign(std::size_t(iNumRows), {0, Unread});
}

datetext::Stamp CStoredRows::readStamp(int iRow, int iField) const
{
    const auto oBytes = bytes(iRow, iField);
    const auto oStamp = oBytes ? datetext::stamp(*oBytes) : std::nullopt;
    return oStamp.value_or(datetext::Stamp{0, NoStamp});
}

// Source of the types: the driver's own reading of a row.
QVariant CStoredRows::value(int iRow, int iField) const
{
    const QMetaType oType = oFields.field(iField).metaType();
    const auto oBytes = bytes(iRow, iField);
    if (!oBytes)
        return QVariant(oType);
    if (oType.id() == QMetaType::QByteArray)
        return QByteArray(oBytes->data(), qsizetype(oBytes->size()));
    const QString sText = QString::fromUtf8(oBytes->data(), qsizetype(oBytes->size()));
    switch (oType.id()) {
    case QMetaType::LongLong:
        return sText.toLongLong();
    case QMetaType::ULongLong:
        return sText.toULongLong();
    case QMetaType::Char:
    case QMetaType::Short:
    case QMetaType::Int:
        return sText.toInt();
    case QMetaType::UChar:
    case QMetaType::UShort:
    case QMetaType::UInt:
        return sText.toUInt();
    case QMetaType::QDate:
        return QDate::fromString(sText, Qt::ISODate);
    case QMetaType::QDateTime:
        return QDateTime::fromString(sText, Qt::ISODate);
    default:
        return sText;
    }
}

QSqlRecord CStoredRows::record(int iRow) const
{
    QSqlRecord oRecord = oFields;
    if (iRow < 0 || iRow >= iNumRows)
        return oRecord;
    for (int i = 0; i < oRecord.count(); i++)
        oRecord.setValue(i, value(iRow, i));
    return oRecord;
}
