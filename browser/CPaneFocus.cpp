// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CPaneFocus.h"

#include <QAbstractScrollArea>
#include <QKeyEvent>
#include <QPainter>

CPaneFocus::CPaneFocus(QWidget* pItsWindow, QWidgetList lItsPanes)
    : QObject(pItsWindow)
    , pWindow(pItsWindow)
    , lPanes(std::move(lItsPanes))
{
    pWindow->installEventFilter(this);
    for (QWidget* pPane : lPanes)
        if (qobject_cast<QAbstractScrollArea*>(pPane) != nullptr)
            pPane->installEventFilter(this);
}

int CPaneFocus::currentPane() const
{
    return int(lPanes.indexOf(pWindow->focusWidget()));
}

// Past panes that are hidden or have no width.
void CPaneFocus::go(int iStep)
{
    const int iNumPanes = int(lPanes.size());
    int iPane = std::max(currentPane(), iStep < 0 ? 0 : -1);
    for (int i = 0; i < iNumPanes; i++) {
        iPane = (iPane + iStep + iNumPanes) % iNumPanes;
        if (lPanes[iPane]->isVisible() && lPanes[iPane]->width() > 0)
            break;
    }
    lPanes[iPane]->setFocus(iStep > 0 ? Qt::TabFocusReason : Qt::BacktabFocusReason);
}

void CPaneFocus::paintOutline(QWidget& oPane, QEvent& oPaint)
{
    static_cast<QObject&>(oPane).event(&oPaint); // first the pane's own frame
    QPainter oPainter(&oPane);
    oPainter.setPen(oPane.palette().color(QPalette::Highlight));
    oPainter.drawRect(oPane.rect().adjusted(0, 0, -1, -1));
}

bool CPaneFocus::eventFilter(QObject* pObject, QEvent* pEvent)
{
    auto* pWidget = static_cast<QWidget*>(pObject);
    switch (pEvent->type()) {
    case QEvent::KeyPress: {
        const auto* pKey = static_cast<const QKeyEvent*>(pEvent);
        const bool bShift = pKey->modifiers() == Qt::ShiftModifier;
        if (pObject != pWindow || pKey->key() != Qt::Key_F6
            || (!bShift && pKey->modifiers() != Qt::NoModifier))
            return false;
        go(bShift ? -1 : 1);
        return true;
    }
    case QEvent::FocusIn:
    case QEvent::FocusOut:
        pWidget->update();
        return false;
    case QEvent::Paint:
        if (pObject == pWindow || !pWidget->hasFocus())
            return false;
        paintOutline(*pWidget, *pEvent);
        return true;
    default:
        return false;
    }
}
