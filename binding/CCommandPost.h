// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include <memory>
#include <mutex>

class QObject;

/// The way of commands from the host's threads to the browser window. Without a receiver nothing is posted.
class CCommandPost
{
public:
    /// Commands go to `pWindow` from now on; it must live until close(). [any-thread]
    void open(QObject* pWindow);
    /// Nothing is posted from now on. [any-thread]
    void close();
    /// Posts the last command, without payload, and closes. [any-thread]
    void closeWith(int iCommand);

    /// Posts a command (numbers and payloads: commands.h). `pOwned` is kept alive until it has been handled.
    /// False when there is no receiver. [any-thread]
    bool post(int iCommand, void* pData = nullptr, std::shared_ptr<const void> pOwned = nullptr);

private:
    bool postLocked(int iCommand, void* pData, std::shared_ptr<const void> pOwned);

    // Held while an event is made and posted, so that nothing is posted behind the last command. The
    // user-interface thread never takes it.
    std::mutex oMutex;
    QObject* pReceiver = nullptr;
};
