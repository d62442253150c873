// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "data/datetext.h"

#include <QHash>
#include <QLocale>
#include <QString>

/// The short form of many dates in a locale: each day and each minute is put into words once.
class CShortDates
{
public:
    explicit CShortDates(const QLocale& oNewLocale = {});

    const QLocale& locale() const { return oLocale; }
    /// As fieldtext::shown() gives it.
    QString text(const datetext::Stamp& oStamp);

private:
    QLocale oLocale;
    int iPrecision; ///< seconds of a time that its text doesn't show
    QHash<std::int64_t, QString> oDays;
    QHash<int, QString> oTimes;
};
