// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CColumnMenus.h"

#include <QMenu>
#include <QMenuBar>

namespace {

QMenu* makeMenu(QWidget* pOwner, const QString& sName, const QString& sTitle)
{
    auto* pMenu = new QMenu(sTitle, pOwner);
    pMenu->setObjectName(sName);
    return pMenu;
}

void addEntry(QMenu& oMenu, const QString& sColumn, bool bMarked, const CColumnMenus::Action& action)
{
    const int iEntry = int(oMenu.actions().size());
    QAction* pAction = oMenu.addAction(sColumn);
    pAction->setData(iEntry);
    pAction->setCheckable(true);
    pAction->setChecked(bMarked);
    QObject::connect(pAction, &QAction::triggered, pAction, [pAction, action, iEntry](bool bToggled) {
        pAction->setChecked(!bToggled); // the click has toggled it, which is for us to decide
        action(iEntry);
    });
}

} // namespace

CColumnMenus::CColumnMenus(QWidget* pOwner)
    : pShowMenu(makeMenu(pOwner, QStringLiteral("ShowMenu"), QStringLiteral("&Show")))
    , pSortMenu(makeMenu(pOwner, QStringLiteral("SortMenu"), QStringLiteral("&Sort")))
{
}

void CColumnMenus::insertInto(QMenuBar& oBar)
{
    oBar.addMenu(pShowMenu);
    oBar.addMenu(pSortMenu);
}

bool CColumnMenus::isEmpty() const
{
    return pShowMenu->actions().isEmpty();
}

void CColumnMenus::rebuild(const QStringList& slColumns, const Action& show, const Action& sort)
{
    pShowMenu->clear();
    pSortMenu->clear();
    for (const QString& sColumn : slColumns) {
        const bool bDate = sColumn == QStringLiteral("date");
        addEntry(*pShowMenu, sColumn, bDate || sColumn == QStringLiteral("title"), show);
        addEntry(*pSortMenu, sColumn, bDate, sort);
    }
}

void CColumnMenus::toggleShow(int iEntry)
{
    QAction* pAction = pShowMenu->actions().value(iEntry);
    if (pAction != nullptr)
        pAction->setChecked(!pAction->isChecked());
}

void CColumnMenus::markSort(int iEntry)
{
    const QList<QAction*> lEntries = pSortMenu->actions();
    for (int i = 0; i < lEntries.size(); i++)
        lEntries[i]->setChecked(i == iEntry);
}
