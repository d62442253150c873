// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CDocumentModel.h"

#include "fieldtext.h"

#include <QSqlField>
#include <QSqlQuery>
#include <QSqlRecord>

#include <algorithm>

namespace {

// What the server gives as the number of decimals of a floating-point field; a fixed-point field has its own
// number.
constexpr int FloatingDecimals = 31;

} // namespace

CDocumentModel::CDocumentModel(QObject* pParent)
    : QAbstractTableModel(pParent)
{
}

CDocumentModel::~CDocumentModel() = default;

void CDocumentModel::setResult(std::shared_ptr<QSqlQuery> pNewQuery, const QStringList& slShownColumns)
{
    beginResetModel();
    pQuery = std::move(pNewQuery);
    vColumns.clear();
    for (const QString& sName : slShownColumns)
        vColumns.push_back(findColumn(sName));
    endResetModel();
}

void CDocumentModel::clear()
{
    setResult(nullptr, {});
}

// The first field of that name, whatever its letter case.
CDocumentModel::Column CDocumentModel::findColumn(const QString& sName) const
{
    const QSqlRecord oRecord = pQuery ? pQuery->record() : QSqlRecord();
    for (int i = 0; i < oRecord.count(); i++) {
        if (oRecord.fieldName(i).compare(sName, Qt::CaseInsensitive) == 0) {
            const QSqlField oField = oRecord.field(i);
            return {sName, i,
                oField.metaType().id() == QMetaType::Double && oField.precision() == FloatingDecimals};
        }
    }
    return {sName, -1, false};
}

int CDocumentModel::rowCount(const QModelIndex& oParent) const
{
    return oParent.isValid() || !pQuery ? 0 : std::max(pQuery->size(), 0);
}

int CDocumentModel::columnCount(const QModelIndex& oParent) const
{
    return oParent.isValid() ? 0 : int(vColumns.size());
}

QVariant CDocumentModel::data(const QModelIndex& oIndex, int iRole) const
{
    if (iRole != Qt::DisplayRole || !checkIndex(oIndex, CheckIndexOption::IndexIsValid))
        return {};
    return shownText(oIndex.row(), oIndex.column());
}

QVariant CDocumentModel::headerData(int iSection, Qt::Orientation eOrientation, int iRole) const
{
    if (iRole != Qt::DisplayRole)
        return {};
    if (eOrientation == Qt::Vertical)
        return QString::number(iSection + 1);
    return iSection >= 0 && iSection < columnCount() ? vColumns[std::size_t(iSection)].sName : QVariant();
}

// Looking a row up by its number walks a list inside the client library, so don't when the query stands there
// already.
void CDocumentModel::seek(int iRow) const
{
    if (pQuery->at() != iRow)
        pQuery->seek(iRow);
}

QVariant CDocumentModel::value(int iRow, int iColumn) const
{
    const Column& oColumn = vColumns[std::size_t(iColumn)];
    if (oColumn.iField < 0)
        return QString();
    seek(iRow);
    const QVariant oValue = pQuery->value(oColumn.iField);
    return oColumn.bFloating && !oValue.isNull() ? QVariant(oValue.toDouble()) : oValue;
}

QString CDocumentModel::shownText(int iRow, int iColumn) const
{
    return fieldtext::shown(value(iRow, iColumn), oLocale);
}

QString CDocumentModel::valueText(int iRow, int iColumn) const
{
    const bool bInside = iRow >= 0 && iRow < rowCount() && iColumn >= 0 && iColumn < columnCount();
    return bInside ? fieldtext::plain(value(iRow, iColumn)) : QString();
}

QSqlRecord CDocumentModel::record(int iRow) const
{
    if (!pQuery || !pQuery->isActive())
        return {};
    seek(iRow);
    return pQuery->record();
}
