// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QWidget>

/// Shows which pane of a window has the keyboard, and leads it round: F6 to the next pane, Shift+F6 to the
/// one before. In some panes Tab has another task. [ui-thread]
class CPaneFocus : public QObject
{
    Q_OBJECT

public:
    /// Belongs to the window; the panes, which are not owned, must live as long. A scroll area
    /// has its frame in the highlight colour while it has the keyboard.
    CPaneFocus(QWidget* pItsWindow, QWidgetList lItsPanes);

    bool eventFilter(QObject* pObject, QEvent* pEvent) override;

private:
    void go(int iStep);
    int currentPane() const;
    void paintOutline(QWidget& oPane, QEvent& oPaint);

    QWidget* pWindow;
    QWidgetList lPanes;
};
