// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QAbstractTableModel>
#include <QLocale>
#include <QStringList>

#include <memory>
#include <vector>

class QSqlQuery;
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
    void setLocale(const QLocale& oNewLocale) { oLocale = oNewLocale; }

    /// Shows a result's columns of the given names, in this order; a name that it lacks gives an empty
    /// column. The result may be a failed one: it has no rows.
    void setResult(std::shared_ptr<QSqlQuery> pNewQuery, const QStringList& slShownColumns);
    /// Lets the result go; no rows and columns are left.
    void clear();

    int rowCount(const QModelIndex& oParent = {}) const override;
    int columnCount(const QModelIndex& oParent = {}) const override;
    /// Qt::DisplayRole: the text that the cell shows.
    QVariant data(const QModelIndex& oIndex, int iRole = Qt::DisplayRole) const override;
    /// Column names, and row numbers from 1.
    QVariant headerData(
        int iSection, Qt::Orientation eOrientation, int iRole = Qt::DisplayRole) const override;

    /// The text a cell shows; row and column must exist.
    QString shownText(int iRow, int iColumn) const;
    /// The value of a cell as text, which is not always what it shows; "" outside of the table.
    QString valueText(int iRow, int iColumn) const;
    /// All fields of a row, also those not shown; without values if there is no such row.
    QSqlRecord record(int iRow) const;

private:
    struct Column
    {
        QString sName;
        int iField; ///< -1: the result has no such field
        bool bFloating; ///< the field holds floating-point numbers
    };

    Column findColumn(const QString& sName) const;
    QVariant value(int iRow, int iColumn) const;
    void seek(int iRow) const;

    QLocale oLocale;
    std::shared_ptr<QSqlQuery> pQuery;
    std::vector<Column> vColumns;
};
