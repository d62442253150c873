// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QProcess>
#include <QSize>
#include <QTemporaryDir>

/// An X server of the test's own, with a window manager if wanted. Sets DISPLAY of the process. Ends with the
/// object, or with the test program. Make it before the application object.
class CPrivateDisplay
{
public:
    enum class Manager
    {
        None,
        Running
    };

    /// Starts the server and waits until it takes clients; ends the program with a message if it can't be
    /// started. The size is in pixels. The programs that are started afterwards find the display.
    explicit CPrivateDisplay(Manager eManager = Manager::None, QSize oSize = {1280, 1024});
    ~CPrivateDisplay();
    CPrivateDisplay(const CPrivateDisplay&) = delete;
    CPrivateDisplay& operator=(const CPrivateDisplay&) = delete;

    /// The display's name, such as ":5".
    QByteArray name() const { return oName; }
    /// Ends the server at once, as a crash would.
    void kill();

private:
    void startManager();

    QTemporaryDir oFolder;
    QProcess oServer;
    QProcess oManager;
    QByteArray oName;
};
