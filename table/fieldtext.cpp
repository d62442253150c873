// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "fieldtext.h"

#include <QDateTime>
#include <QLocale>
#include <QVariant>

namespace fieldtext {
namespace {

QString dateTimeText(const QDateTime& oDateTime)
{
    // From the parts: a local time that summer time skips is invalid as a whole, and toString() would add
    // fractions.
    if (!oDateTime.date().isValid())
        return {};
    return oDateTime.date().toString(Qt::ISODate) + QLatin1Char('T')
        + oDateTime.time().toString(QStringLiteral("HH:mm:ss"));
}

QString shortForm(const QDateTime& oDateTime, const QLocale& oLocale)
{
    return oLocale.toString(oDateTime.date(), QLocale::ShortFormat) + QLatin1Char(' ')
        + oLocale.toString(oDateTime.time(), QLocale::ShortFormat);
}

} // namespace

QString plain(const QVariant& oValue)
{
    switch (oValue.typeId()) {
    case QMetaType::QDateTime:
        return dateTimeText(oValue.toDateTime());
    case QMetaType::Double:
        return oValue.isNull() ? QString() : QString::number(oValue.toDouble(), 'g', 15);
    default:
        return oValue.toString();
    }
}

QString shown(const QVariant& oValue, const QLocale& oLocale)
{
    if (oValue.isNull())
        return QStringLiteral("NULL");
    switch (oValue.typeId()) {
    case QMetaType::QDateTime: {
        const QDateTime oDateTime = oValue.toDateTime();
        return oDateTime.date().isValid() ? shortForm(oDateTime, oLocale) : QStringLiteral("NULL");
    }
    case QMetaType::QDate: {
        const QDate oDate = oValue.toDate();
        return oDate.isValid() ? oLocale.toString(oDate, QLocale::ShortFormat) : QStringLiteral("NULL");
    }
    default:
        return plain(oValue);
    }
}

} // namespace fieldtext
