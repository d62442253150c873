// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "paintedhost.h"

#include "CAnalyst.h"
#include "moduletest.h"

namespace paintedhost {

void show(CAnalyst& oAnalyst, int iNode, const QByteArray& oColors)
{
    CPlainHost& oHost = oAnalyst.host();
    oHost.load();
    oHost.call("setSOMTable", {"t:painted_train"});
    oHost.call("CNodeBrowser", {"t:som", "t:painted"});
    oHost.call("select", {"i:" + QByteArray::number(iNode)});
    if (!oColors.isEmpty())
        oHost.call("setRowColors", {oColors});
    oAnalyst.showWindow();
}

void repaint(CAnalyst& oAnalyst)
{
    oAnalyst.screen().close("Ombrel");
    QTUTILS_WAIT_FOR(!oAnalyst.screen().isShown("Ombrel"));
    oAnalyst.showWindow();
}

QImage cell(CAnalyst& oAnalyst, int iRow, const QByteArray& oColumn)
{
    const QRect oPlace = oAnalyst.cell(iRow, oColumn);
    return oAnalyst.screen().picture().copy(oPlace);
}

QByteArrayList fills(CAnalyst& oAnalyst, int iFirst, int iLast)
{
    QList<QRect> lPlaces;
    for (int iRow = iFirst; iRow <= iLast; iRow++)
        lPlaces << oAnalyst.cell(iRow, "title");
    const QImage oPicture = oAnalyst.screen().picture();
    QByteArrayList lFills;
    for (const QRect& oPlace : lPlaces)
        lFills << (oPlace.isEmpty() ? "nowhere" : oPicture.pixelColor(oPlace.center()).name().toUtf8());
    return lFills;
}

} // namespace paintedhost
