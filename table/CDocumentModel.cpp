// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CDocumentModel.h"

#include "data/CStoredRows.h"
#include "data/CWidestText.h"
#include "excerpt.h"
#include "fieldtext.h"

#include <QSqlField>
#include <QSqlRecord>
#include <QTextDocument>

namespace {

// What the server gives as the number of decimals of a floating-point field; a fixed-point field has its own
// number.
constexpr int FloatingDecimals = 31;
constexpr std::size_t LongText = 4096; ///< bytes
constexpr std::size_t MostExcerpts = 1000;

} // namespace

CDocumentModel::CDocumentModel(QObject* pParent)
    : QAbstractTableModel(pParent)
{
}

CDocumentModel::~CDocumentModel() = default;

void CDocumentModel::setResult(const MakeRows& makeRows, const QStringList& slShownColumns)
{
    beginResetModel();
    pRows.reset();
    oExcerpts.clear();
    pRows = makeRows();
    vColumns.clear();
    for (const QString& sName : slShownColumns)
        vColumns.push_back(findColumn(sName));
    endResetModel();
}

void CDocumentModel::clear()
{
    setResult([] { return nullptr; }, {});
}

CDocumentModel::Kind CDocumentModel::kind(const QSqlField& oField)
{
    switch (oField.metaType().id()) {
    case QMetaType::QString:
        return Kind::Text;
    case QMetaType::QDateTime:
        return Kind::DateTime;
    case QMetaType::Double:
        return oField.precision() == FloatingDecimals ? Kind::Floating : Kind::Other;
    default:
        return Kind::Other;
    }
}

// The first field of that name, whatever its letter case.
CDocumentModel::Column CDocumentModel::findColumn(const QString& sName) const
{
    const QSqlRecord oFields = pRows ? pRows->fields() : QSqlRecord();
    for (int i = 0; i < oFields.count(); i++)
        if (oFields.fieldName(i).compare(sName, Qt::CaseInsensitive) == 0)
            return {sName, i, kind(oFields.field(i))};
    return {sName};
}

int CDocumentModel::rowCount(const QModelIndex& oParent) const
{
    return oParent.isValid() || !pRows ? 0 : pRows->numRows();
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
    if (iRole == Qt::ToolTipRole && eOrientation == Qt::Horizontal)
        return columnTip(iSection);
    if (iRole != Qt::DisplayRole)
        return {};
    if (eOrientation == Qt::Vertical)
        return QString::number(iSection + 1);
    return iSection >= 0 && iSection < columnCount() ? vColumns[std::size_t(iSection)].sName : QVariant();
}

QString CDocumentModel::columnTip(int iColumn) const
{
    const bool bInside = iColumn >= 0 && iColumn < columnCount();
    const Column oColumn = bInside ? vColumns[std::size_t(iColumn)] : Column();
    if (oColumn.eKind == Kind::Missing)
        return {};
    const QString sTip = oColumn.sName + QStringLiteral(": ") + pRows->typeName(oColumn.iField);
    return Qt::mightBeRichText(sTip) ? sTip.toHtmlEscaped() : sTip; // a name has no tags
}

QVariant CDocumentModel::value(int iRow, const Column& oColumn) const
{
    if (oColumn.eKind == Kind::Missing)
        return QString();
    const QVariant oValue = pRows->value(iRow, oColumn.iField);
    return oColumn.eKind == Kind::Floating && !oValue.isNull() ? QVariant(oValue.toDouble()) : oValue;
}

QString CDocumentModel::shownText(int iRow, int iColumn) const
{
    const Column& oColumn = vColumns[std::size_t(iColumn)];
    if (oColumn.eKind == Kind::DateTime)
        if (const auto oStamp = pRows->stamp(iRow, oColumn.iField))
            return oShortDates.text(*oStamp);
    return fieldtext::shown(value(iRow, oColumn), oShortDates.locale());
}

// Once for each cell and width: painting comes back to the same cells.
QString CDocumentModel::shownPart(const QModelIndex& oIndex, const QFontMetrics& oMetrics, int iWidth) const
{
    const Column& oColumn = vColumns[std::size_t(oIndex.column())];
    const auto oBytes =
        oColumn.eKind == Kind::Missing ? std::nullopt : pRows->bytes(oIndex.row(), oColumn.iField);
    if (!oBytes || oBytes->size() < LongText)
        return shownText(oIndex.row(), oIndex.column());
    if (oExcerpts.size() > MostExcerpts)
        oExcerpts.clear();
    Excerpt& oExcerpt = oExcerpts[{oIndex.row(), oIndex.column()}];
    if (oExcerpt.iWidth < iWidth) {
        const int iWider = iWidth + iWidth / 4; // for the next steps of the scroll bar
        oExcerpt = {iWider, makeExcerpt(oIndex, oMetrics, iWider)};
    }
    return oExcerpt.sText;
}

QString CDocumentModel::makeExcerpt(const QModelIndex& oIndex, const QFontMetrics& oMetrics, int iWidth) const
{
    const Column& oColumn = vColumns[std::size_t(oIndex.column())];
    if (oColumn.eKind == Kind::Text)
        return excerpt::ofText(*pRows->bytes(oIndex.row(), oColumn.iField), oMetrics, iWidth);
    return excerpt::ofText(shownText(oIndex.row(), oIndex.column()).toStdString(), oMetrics, iWidth);
}

void CDocumentModel::addWidth(CWidestText& oWidest, int iRow, int iColumn) const
{
    const Column& oColumn = vColumns[std::size_t(iColumn)];
    if (oColumn.eKind == Kind::Text)
        if (const auto oBytes = pRows->bytes(iRow, oColumn.iField))
            return oWidest.add(*oBytes);
    oWidest.add(shownText(iRow, iColumn));
}

QString CDocumentModel::valueText(int iRow, int iColumn) const
{
    const bool bInside = iRow >= 0 && iRow < rowCount() && iColumn >= 0 && iColumn < columnCount();
    return bInside ? fieldtext::plain(value(iRow, vColumns[std::size_t(iColumn)])) : QString();
}

QSqlRecord CDocumentModel::record(int iRow) const
{
    return pRows ? pRows->record(iRow) : QSqlRecord();
}
