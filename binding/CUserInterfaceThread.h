// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "CCommandPost.h"
#include "CHandover.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <string>

#include <pthread.h>

class CNodeBrowser;

/// What a browser window is made from. All texts are in the host's encoding.
struct BrowserSettings
{
    std::string sHost;
    std::string sUser;
    std::string sPassword;
    std::string sSOMDatabase;
    std::string sSourceDatabase;
    std::optional<std::string> sSOMTable; ///< unset: the host has not named one yet
};

/// The one thread that owns the application object and runs the windows, for the life of the process.
///
/// Qt binds everything to the thread that made the application object, so the thread is started by the first
/// construction and kept: between two constructions it is parked. It never ends: when the process exits it
/// takes down windows and application and then sleeps.
class CUserInterfaceThread
{
public:
    /// The one instance; never destroyed, because the thread outlives static objects. [any-thread]
    static CUserInterfaceThread& instance();

    /// Makes a window and waits until it exists. Null when there is no display, when the host has an
    /// application object of its own (one line on standard error each), or when the process is ending. The
    /// window belongs to this thread and lives until the next construction. [host-thread]
    CNodeBrowser* construct(const BrowserSettings& oNewSettings);

    /// Body of one construction: makes the window, answers construct(), runs the event loop until the window
    /// is terminated, hides all windows. [ui-thread]
    void runBrowser();

    /// Takes everything down; all calls together wait for that at most five seconds. Later constructions
    /// fail. [any-thread]
    void stop();

    /// The display is gone, and Qt would end the process: says so on standard error, lets the host's calls
    /// return from now on, and sleeps for ever. [ui-thread]
    [[noreturn]] void giveUp();

    CHandover& handover() { return oHandover; }
    CCommandPost& commandPost() { return oCommandPost; }

private:
    CUserInterfaceThread() = default;

    bool start();
    void run();
    bool waitForWork();
    bool makeBrowser();
    void deleteBrowser();
    void takeDown();
    void finish();
    [[noreturn]] static void sleepForever();
    void endLoop() const;

    CHandover oHandover;
    CCommandPost oCommandPost;
    CNodeBrowser* pBrowser = nullptr; ///< [ui-thread] the window, hidden between two constructions
    CNodeBrowser* pNewBrowser = nullptr; ///< answer to construct(), under the hand-over

    std::mutex oStateMutex; ///< guards what follows
    std::condition_variable oStateChanged;
    BrowserSettings oSettings;
    pthread_t oThread{};
    bool bStarted = false;
    bool bWanted = false; ///< a construction waits
    bool bLoopAlive = false; ///< the application object exists
    bool bStopping = false;
    bool bFinished = false;
    std::chrono::steady_clock::time_point
        oTakeDownEnd; ///< nobody waits longer, however often stop() is called
};
