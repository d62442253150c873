// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "spelling.h"

#include <QCryptographicHash>
#include <QString>

namespace spelling {
namespace {

constexpr qsizetype LongestSpelled = 600; // code units

QByteArray hash(const QString& sText)
{
    const auto* pcText = reinterpret_cast<const char*>(sText.constData());
    const QByteArrayView oBytes(pcText, sText.size() * qsizetype(sizeof(QChar)));
    return QCryptographicHash::hash(oBytes, QCryptographicHash::Sha1).toHex();
}

} // namespace

QByteArray spelled(const QString& sText)
{
    if (sText.size() > LongestSpelled)
        return QByteArray::number(sText.size()) + " code units, hash " + hash(sText);
    QByteArray oSpelled;
    for (const QChar c : sText) {
        if (c >= u' ' && c <= u'~')
            oSpelled += c.toLatin1();
        else
            oSpelled += QString::asprintf("\\u%04x", c.unicode()).toLatin1();
    }
    return oSpelled;
}

} // namespace spelling
