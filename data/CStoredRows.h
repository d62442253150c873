// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "datetext.h"

#include <QSqlQuery>
#include <QSqlRecord>
#include <QVariant>

#include <optional>
#include <string_view>
#include <vector>

struct st_mysql_res;
struct st_mysql_rows;

/// A query's result where the client library stores it. Copies nothing; any row that has been passed once is
/// found by its number at once. [ui-thread]
class CStoredRows
{
public:
    /// Takes an executed query, which nobody else may move any more. A failed one has no rows and no fields.
    explicit CStoredRows(QSqlQuery&& oExecuted);
    CStoredRows(const CStoredRows&) = delete;
    CStoredRows& operator=(const CStoredRows&) = delete;

    int numRows() const { return iNumRows; }
    /// Names and types of the fields, without values.
    const QSqlRecord& fields() const { return oFields; }

    /// The type of a field, which must exist, as one writes it in a table's definition; empty if unknown.
    QString typeName(int iField) const;
    /// A field's bytes as the server sent them, or nothing for NULL; row and field must exist. They stay
    /// where they are as long as this object lives.
    std::optional<std::string_view> bytes(int iRow, int iField) const;
    /// Keeps the stamps of this field from now on, so that each is read once only.
    void keepStamps(int iField);
    /// The stamp of the kept field, which must exist and hold dates with time; a negative second where there
    /// is none. The row must exist.
    const datetext::Stamp& keptStamp(int iRow) const
    {
        datetext::Stamp& oStamp = vStamps[std::size_t(iRow)];
        if (oStamp.iSecond == Unread)
            oStamp = readStamp(iRow, iStampField);
        return oStamp;
    }
    /// The stamp of a date with time; nothing for NULL, a zero date or another text. Row and field must
    /// exist.
    std::optional<datetext::Stamp> stamp(int iRow, int iField) const
    {
        const datetext::Stamp oStamp = iField == iStampField ? keptStamp(iRow) : readStamp(iRow, iField);
        return oStamp.iSecond == NoStamp ? std::nullopt : std::optional(oStamp);
    }
    /// A field's value in the type that the database driver gives it, fixed-point and floating-point numbers
    /// as text; row and field must exist.
    QVariant value(int iRow, int iField) const;
    /// All fields of a row; without values if there is no such row.
    QSqlRecord record(int iRow) const;

private:
    static constexpr std::int32_t Unread = -1; ///< for the second of a stamp
    static constexpr std::int32_t NoStamp = -2;

    void goTo(int iRow) const;
    datetext::Stamp readStamp(int iRow, int iField) const;

    QSqlQuery oQuery;
    QSqlRecord oFields;
    st_mysql_res* pResult = nullptr; ///< the query's own
    int iNumRows = 0;
    mutable std::vector<st_mysql_rows*> vPlaces; ///< of the rows passed so far, and of the one after them
    int iStampField = -1;
    mutable std::vector<datetext::Stamp> vStamps; ///< of that field
    mutable int iCurrent = -1;
    mutable char** ppcCurrent = nullptr;
    mutable unsigned long* piLengths = nullptr;
};
