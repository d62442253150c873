// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "CShortDates.h"

#include <QAbstractTableModel>
#include <QFontMetrics>
#include <QStringList>

#include <functional>
#include <map>
#include <memory>
#include <vector>

class CStoredRows;
class CWidestText;
class QSqlField;
class QSqlRecord;

/// The rows of a query's result and those of its columns that are shown. Copies nothing: values are read
/// where the database client stores the result. [ui-thread]
class CDocumentModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit CDocumentModel(QObject* pParent = nullptr);
    ~CDocumentModel() override;

    /// Shows dates in the short form of this locale.
    void setLocale(const QLocale& oNewLocale) { oShortDates = CShortDates(oNewLocale); }

    using MakeRows = std::function<std::shared_ptr<CStoredRows>()>;

    /// Shows a result's columns of the given names, in this order; a name that it lacks gives an empty
    /// column. The result may be a failed one: it has no rows. It is made when the one before has been let
    /// go.
    void setResult(const MakeRows& makeRows, const QStringList& slShownColumns);
    /// Lets the result go; no rows and columns are left.
    void clear();

    int rowCount(const QModelIndex& oParent = {}) const override;
    int columnCount(const QModelIndex& oParent = {}) const override;
    /// Qt::DisplayRole: the text that the cell shows.
    QVariant data(const QModelIndex& oIndex, int iRole = Qt::DisplayRole) const override;
    /// Column names, and row numbers from 1. Qt::ToolTipRole: the column's name with its type.
    QVariant headerData(
        int iSection, Qt::Orientation eOrientation, int iRole = Qt::DisplayRole) const override;

    /// The text a cell shows; row and column must exist.
    QString shownText(int iRow, int iColumn) const;
    /// A part of the text that a cell shows, if that is long, which looks the same in the cell's first
    /// pixels; else the whole text.
    QString shownPart(const QModelIndex& oIndex, const QFontMetrics& oMetrics, int iWidth) const;
    /// Adds the text that a cell shows to those whose width is sought.
    void addWidth(CWidestText& oWidest, int iRow, int iColumn) const;
    /// The value of a cell as text, which is not always what it shows; "" outside of the table.
    QString valueText(int iRow, int iColumn) const;
    /// All fields of a row, also those not shown; without values if there is no such row.
    QSqlRecord record(int iRow) const;

private:
    enum class Kind
    {
        Missing, ///< the result has no such field
        Text,
        DateTime,
        Floating, ///< floating-point numbers
        Other
    };

    struct Excerpt
    {
        int iWidth = -1; ///< in pixels, that it was made for
        QString sText;
    };

    struct Column
    {
        QString sName;
        int iField = -1;
        Kind eKind = Kind::Missing;
    };

    static Kind kind(const QSqlField& oField);
    Column findColumn(const QString& sName) const;
    QString columnTip(int iColumn) const;
    QVariant value(int iRow, const Column& oColumn) const;
    QString makeExcerpt(const QModelIndex& oIndex, const QFontMetrics& oMetrics, int iWidth) const;

    mutable CShortDates oShortDates;
    std::shared_ptr<CStoredRows> pRows; ///< null: no result
    mutable std::map<std::pair<int, int>, Excerpt> oExcerpts; ///< of long texts, by row and column
    std::vector<Column> vColumns;
};
