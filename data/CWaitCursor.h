// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QApplication>
#include <QWidget>

#include <algorithm>

/// Shows the mouse pointer of a program that is busy, as long as it lives, if the pointer is on a window: the
/// display would have to be asked twice for nothing. Not over a dialog. [ui-thread]
class CWaitCursor
{
public:
    CWaitCursor()
        : bShown(isOnWindow())
    {
        if (bShown)
            QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    }
    ~CWaitCursor()
    {
        if (bShown)
            QGuiApplication::restoreOverrideCursor();
    }
    CWaitCursor(const CWaitCursor&) = delete;
    CWaitCursor& operator=(const CWaitCursor&) = delete;

private:
    static bool isOnWindow()
    {
        const QWidgetList lWindows = QApplication::topLevelWidgets();
        return std::any_of(
            lWindows.begin(), lWindows.end(), [](const QWidget* pWindow) { return pWindow->underMouse(); });
    }

    const bool bShown;
};
