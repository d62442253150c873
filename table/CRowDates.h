// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "data/CLocalTimes.h"
#include "data/CStoredRows.h"

#include <QByteArray>

#include <ctime>
#include <optional>

class QSqlRecord;

/// The dates of a result's rows. [ui-thread]
///
/// The date column is the first field named exactly "date", or the first field if there is none.
class CRowDates
{
public:
    /// Index of the date column.
    static int field(const QSqlRecord& oFields);

    /// `pResult` may be null, for no rows; it must outlive this object and keep the stamps of that field.
    explicit CRowDates(const CStoredRows* pResult);

    int numRows() const;
    /// A row's date text, "YYYY-MM-DDTHH:MM:SS" for a date with time; the row must exist.
    QByteArray text(int iRow) const;
    /// Reads a row's date as local time. False, and a warning on standard output, if the text is no such
    /// date. The time isn't returned as an optional one, because the compiler writes that in two parts and
    /// reads it as a whole, which takes several times as long as all else here.
    bool readTime(int iRow, std::time_t& tTime)
    {
        if (bStamps)
            if (const datetext::Stamp& oStamp = pRows->keptStamp(iRow); oStamp.iSecond >= 0) {
                tTime = oLocalTimes.time(oStamp);
                return true;
            }
        const std::optional<std::time_t> oOfText = timeOfText(iRow);
        tTime = oOfText.value_or(tTime);
        return oOfText.has_value();
    }

private:
    std::optional<std::time_t> timeOfText(int iRow) const;

    const CStoredRows* pRows;
    int iField = 0;
    bool bStamps = false; ///< the field holds dates with time
    CLocalTimes oLocalTimes;
};
