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
    oHost.numRows(); // the server has been asked then
}

QByteArrayList CAnalyst::marked(const QByteArray& oName)
{
    const QByteArray oMark("[x] ");
    QByteArrayList lMarked;
    for (const QByteArray& oEntry : menu(oName))
        if (oEntry.startsWith(oMark))
            lMarked << oEntry.mid(oMark.size());
    return lMarked;
}

QByteArrayList CAnalyst::viewers()
{
    QByteArrayList lStates = oHost.ask({"viewers"});
    lStates.removeAll({});
    return lStates;
}

QByteArray CAnalyst::openNodes()
{
    QByteArrayList lNodes;
    for (const QByteArray& oLine : tree())
        if (const QByteArray oItem = oLine.trimmed(); oItem.startsWith('v'))
            lNodes << oItem.split(' ')[1];
    return lNodes.join(' ');
}

QByteArray CAnalyst::currentNode()
{
    for (const QByteArray& oLine : tree())
        if (oLine.endsWith(" <"))
            return oLine.trimmed().split(' ')[1];
    return "none";
}

QRect CAnalyst::branchMark(int iNode)
{
    const QRect oItem = item(iNode);
    return oItem.isEmpty() ? oItem : oItem.adjusted(-12, 0, -oItem.width() - 4, 0);
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

void CAnalyst::chooseAt(const QRect& oPlace, const QByteArray& oEntry)
{
    click(oPlace, 3);
    click(entry(oEntry));
}

void CAnalyst::openViewer(int iRow)
{
    const QByteArray oText = number(int(viewers().size())) + "/fullEdit";
    doubleClickCell(iRow, "title");
    QTUTILS_WAIT_FOR(focus() == oText);
}

void CAnalyst::askWhatToFind(const QByteArray& oKey)
{
    QTUTILS_WAIT_FOR(focus().contains('/'));
    press({oKey});
    QTUTILS_WAIT_FOR(focus() == "QLineEdit");
}

void CAnalyst::find(const QByteArray& oText)
{
    askWhatToFind();
    type(oText);
    press({"Return"});
}
