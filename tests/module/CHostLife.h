// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#pragma once

#include "CAnalyst.h"
#include "CFakeBrowser.h"

#include <memory>

class CPrivateServer;

/// What a host does until something happens to it. What it has started ends with the object.
class CHostLife
{
public:
    /// Makes the tables that the lives need, besides those of news.sql.
    static void prepare(const CPrivateServer& oServer);
    /// All lives, in alphabetical order.
    static QByteArrayList names();
    /// Whether the window's thread is held up afterwards by something that it can't leave by itself.
    static bool isHeldUp(const QByteArray& oName);
    /// Whether lines that the module prints may be on their way still.
    static bool mayStillSpeak(const QByteArray& oName);

    /// Host and screen aren't owned.
    CHostLife(CPlainHost& oItsHost, CScreen& oScreen)
        : oHost(oItsHost)
        , oAnalyst(oItsHost, oScreen)
    {
    }

    /// Leads a life from the loading of the module on.
    void lead(const QByteArray& oName);
    /// Gives the host a command, which isn't waited for, at one of Moments moments of what the life has begun
    /// and not waited for; the first moment is at once. Lives that rest have the first one only.
    void giveAt(const QByteArray& oName, int iMoment, const QByteArrayList& lCommand);
    static constexpr int Moments = 100;
    /// Does what the life waits for, so that the host can go on with the window.
    void goOn(const QByteArray& oName);

private:
    using Step = void (CHostLife::*)();
    static const std::map<QByteArray, Step>& steps();

    void load();
    void construct();
    void start();
    void show();
    void openMenu();
    void openViewer();
    void openFind();
    void openBox();
    void openWebBrowser();
    void paint();
    void query();
    void queryForEver();
    void buildTree();
    void fillDate();
    void ask();
    void free();
    void windUp();

    CPlainHost& oHost;
    CAnalyst oAnalyst;
    std::unique_ptr<CFakeBrowser> pBrowser;
};
