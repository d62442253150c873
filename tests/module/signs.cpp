// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "signs.h"

#include <QImage>

namespace signs {
namespace {

constexpr int LastTopic = 21;

QByteArray seenAt(const QImage& oPicture, const QRect& oItem)
{
    for (int i = 0; i <= LastTopic; i++)
        if (oPicture.pixel(oItem.left() + 6, oItem.center().y()) == color(i))
            return QByteArray::number(i);
    return "none";
}

} // namespace

QRgb color(int iTopic)
{
    return qRgb(10 * iTopic + 3, 250 - 10 * iTopic, 7);
}

QString file(int iTopic)
{
    return QStringLiteral("Images/%1.xpm").arg(iTopic);
}

void draw(int iTopic, const QSize& oSize, const char* pcFormat)
{
    QImage oSign(oSize, QImage::Format_RGB32);
    oSign.fill(color(iTopic));
    QVERIFY(oSign.save(file(iTopic), pcFormat));
}

QByteArrayList seen(CAnalyst& oAnalyst)
{
    QByteArrayList lSigns;
    const QImage oPicture = oAnalyst.screen().picture();
    for (const QByteArray& oLine : oAnalyst.tree())
        lSigns << seenAt(oPicture, oAnalyst.item(oLine.trimmed().split(' ')[1].toInt()));
    return lSigns;
}

} // namespace signs
