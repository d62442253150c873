// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

class QApplication;

/// What the application object calls. [ui-thread]
struct ApplicationHooks
{
    void (*beforeEvent)();
    void (*afterEvent)();
    void (*beforeWaiting)(); ///< for events; a menu or a dialog waits in the midst of one
    void (*displayLost)(); ///< the X server has gone; must not return
};

/// Holder of the application object. Empty at load: Qt ties the object to the thread that makes it.
class COmbrelWin
{
public:
    constexpr COmbrelWin() = default;
    COmbrelWin(const COmbrelWin&) = delete;
    COmbrelWin& operator=(const COmbrelWin&) = delete;

    /// Makes the application object (arguments { "Ombrel" }) unless there is one of ours. Leaves locale and
    /// environment of the process as they were. False, with one line on standard error, when there is no
    /// display or the process has an application object of its own. [ui-thread]
    bool create(const ApplicationHooks& oHooks);

    /// Deletes the application object; all windows must be gone. [ui-thread]
    void destroy();

private:
    QApplication* pApplication = nullptr;
};
