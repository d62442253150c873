// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <ctime>
#include <optional>

class QSqlQuery;

/// A walk over the dates of a result's rows, from the first row on. Puts the query back on its first row at
/// the end. [ui-thread]
///
/// The date column is the first field named exactly "date", or the first field if there is none.
class CRowDates
{
public:
    /// `pResult` may be null, for no rows; it must outlive this object.
    explicit CRowDates(QSqlQuery* pResult);
    ~CRowDates();
    CRowDates(const CRowDates&) = delete;
    CRowDates& operator=(const CRowDates&) = delete;

    /// False: there is no further row.
    bool isAtRow() const { return bAtRow; }
    /// Number of the row from 0.
    int row() const { return iRow; }
    void next();

    /// The row's date text, "YYYY-MM-DDTHH:MM:SS" for a date with time.
    QString text() const;
    /// The row's date as local time. Nothing, and a warning on standard output, if the text is no such date.
    std::optional<std::time_t> time() const;

private:
    QSqlQuery* pQuery;
    int iField = 0;
    int iRow = 0;
    bool bAtRow = false;
};
