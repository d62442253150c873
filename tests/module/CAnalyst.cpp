// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CAnalyst.h"

#include "moduletest.h"

void CAnalyst::showWindow()
{
    oHost.call("show");
    QTUTILS_WAIT_FOR(oScreen.isActive("Ombrel"));
}

void CAnalyst::startAt(int iNode)
{
    oHost.start();
    showWindow();
    oHost.call("select", {"i:" + number(iNode)});
}

QByteArrayList CAnalyst::viewers()
{
    QByteArrayList lStates = oHost.ask({"viewers"});
    lStates.removeAll({});
    return lStates;
}

QRect CAnalyst::place(const QByteArrayList& lQuestion)
{
    const QByteArrayList lNumbers = answer(lQuestion).split(' ');
    if (lNumbers.size() != 4)
        return {};
    return {lNumbers[0].toInt(), lNumbers[1].toInt(), lNumbers[2].toInt(), lNumbers[3].toInt()};
}

void CAnalyst::click(const QRect& oPlace, int iButton)
{
    QVERIFY2(!oPlace.isEmpty(), "nothing to click there");
    oScreen.click(oPlace.center(), iButton);
}

void CAnalyst::doubleClick(const QRect& oPlace, int iButton)
{
    QVERIFY2(!oPlace.isEmpty(), "nothing to click there");
    oScreen.doubleClick(oPlace.center(), iButton);
}

void CAnalyst::choose(const QByteArray& oMenu, const QByteArray& oEntry)
{
    click(menuTitle(oMenu));
    QTUTILS_WAIT_FOR(!entry(oEntry).isEmpty());
    click(entry(oEntry));
}
