// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "CUserInterfaceThread.h"

#include "CAnswer.h"
#include "calllog.h"
#include "exitguard.h"
#include "forkguard.h"
#include "mirta_qtutils.h"

#include "browser/CNodeBrowser.h"
#include "browser/displayloss.h"
#include "data/somconnection.h"

#include <QApplication>
#include <QPixmapCache>
#include <QPointer>

#include <cfenv>
#include <csignal>
#include <cstdio>
#include <pthread.h>
#include <unistd.h>

namespace {

constexpr auto LongestTakeDown = std::chrono::seconds(5);
// Bytes. Qt walks trees by recursion, some 300 bytes a level; a chain of 100,000 nodes is to be had. Only
// what is used of it takes memory.
constexpr std::size_t StackSize = std::size_t(512) << 20;

QString fromHost(const std::string& sText)
{
    return QString::fromLocal8Bit(sText.c_str());
}

void stopAtExit()
{
    CUserInterfaceThread::instance().stop();
}

void giveUpAfterLoss()
{
    CUserInterfaceThread::instance().giveUp();
}

void renewExitGuard()
{
    exitguard::renew(stopAtExit);
}

void endEvent()
{
    renewExitGuard();
    forkguard::endWork();
}

constexpr ApplicationHooks Hooks{forkguard::beginWork, endEvent, forkguard::pauseWork, giveUpAfterLoss};

// At load: the process may end in its main thread while the first construction of another thread makes the
// application object, which is before any exit handler of ours.
[[gnu::constructor]] void guardLoadingThread()
{
    exitguard::guardMainThread(stopAtExit);
}

// The viewers as well: nobody serves them until the next construction.
void hideWindows()
{
    for (QWidget* pWindow : QApplication::topLevelWidgets())
        pWindow->hide();
}

void deleteRemainingWindows()
{
    QList<QPointer<QWidget>> lWindows;
    for (QWidget* pWindow : QApplication::topLevelWidgets())
        lWindows.append(pWindow);
    for (const QPointer<QWidget>& pWindow : lWindows)
        delete pWindow.data();
}

} // namespace

CUserInterfaceThread& CUserInterfaceThread::instance()
{
    static auto* pInstance = new CUserInterfaceThread;
    return *pInstance;
}

CNodeBrowser* CUserInterfaceThread::construct(const BrowserSettings& oNewSettings)
{
    exitguard::guardMainThread(stopAtExit);
    forkguard::guardChildren();
    pNewBrowser = nullptr;
    oHandover.open();
    oHandover.ask([&] {
        const std::lock_guard<std::mutex> lock(oStateMutex);
        oSettings = oNewSettings;
        bWanted = !bStopping && start();
        oStateChanged.notify_all();
        return bWanted;
    });
    if (pNewBrowser == nullptr)
        oHandover.close();
    else
        oCommandPost.open(pNewBrowser);
    return pNewBrowser;
}

// The thread starts with all signals blocked, so that the host's handlers run in the host's threads.
bool CUserInterfaceThread::start()
{
    if (bStarted)
        return true;
    sigset_t oAll;
    sigset_t oBefore;
    sigfillset(&oAll);
    pthread_sigmask(SIG_SETMASK, &oAll, &oBefore);
    const auto body = [](void* pThis) -> void* {
        static_cast<CUserInterfaceThread*>(pThis)->run();
        return nullptr;
    };
    pthread_attr_t oAttributes;
    pthread_attr_init(&oAttributes);
    pthread_attr_setstacksize(&oAttributes, StackSize);
    bStarted = pthread_create(&oThread, &oAttributes, body, this) == 0
        || pthread_create(&oThread, nullptr, body, this) == 0; // less room for addresses: less deep trees
    pthread_attr_destroy(&oAttributes);
    pthread_sigmask(SIG_SETMASK, &oBefore, nullptr);
    return bStarted;
}

// Threads inherit the floating-point mode, too. Qt needs the usual one: with exceptions that trap, it would
// end the process.
void CUserInterfaceThread::run()
{
    std::fesetenv(FE_DFL_ENV);
    while (waitForWork())
        nodeBrowser_thread(nullptr);
    takeDown();
    sleepForever();
}

// Deliberate: the thread must not return. Qt frees the data of the thread that made the application once when
// that thread ends and once more at process exit. Test: tst_module_exit, aHostThatExitsKeepsItsExitCode.
void CUserInterfaceThread::sleepForever()
{
    for (;;)
        pause();
}

bool CUserInterfaceThread::waitForWork()
{
    std::unique_lock<std::mutex> lock(oStateMutex);
    oStateChanged.wait(lock, [this] { return bWanted || bStopping; });
    bWanted = false;
    return !bStopping;
}

void CUserInterfaceThread::runBrowser()
{
    forkguard::beginWork();
    const bool bMade = makeBrowser();
    endEvent();
    CAnswer(oHandover.flag(), oHandover.mutex(), oHandover.condition()).give([] {});
    if (!bMade)
        return;
    QCoreApplication::exec();
    forkguard::beginWork();
    hideWindows();
    endEvent();
}

bool CUserInterfaceThread::makeBrowser()
{
    deleteBrowser();
    if (!CNodeBrowser::oOmbrelWin.create(Hooks))
        return false;
    calllog::open();
    BrowserSettings oWanted;
    {
        const std::lock_guard<std::mutex> lock(oStateMutex);
        if (bStopping)
            return false;
        oWanted = oSettings;
        bLoopAlive = true;
    }
    pBrowser = new CNodeBrowser(fromHost(oWanted.sHost), fromHost(oWanted.sUser), fromHost(oWanted.sPassword),
        fromHost(oWanted.sSOMDatabase), fromHost(oWanted.sSourceDatabase), oHandover.flag(),
        oHandover.mutex(), oHandover.condition(), nullptr, "NodeBrowser");
    pBrowser->setSOMTable(oWanted.sSOMTable ? fromHost(*oWanted.sSOMTable) : QString());
    pBrowser->setSourceTable(QStringLiteral("document"));
    pNewBrowser = pBrowser;
    const std::lock_guard<std::mutex> lock(oStateMutex);
    return !bStopping;
}

// The connection goes after the window whose table and tree hold copies of it. Qt would keep copies of the
// tree's signs, new ones with each window.
void CUserInterfaceThread::deleteBrowser()
{
    if (pBrowser == nullptr)
        return;
    delete pBrowser;
    pBrowser = nullptr;
    QPixmapCache::clear();
    somconnection::remove();
}

void CUserInterfaceThread::takeDown()
{
    {
        const std::lock_guard<std::mutex> lock(oStateMutex);
        bLoopAlive = false;
    }
    deleteBrowser();
    deleteRemainingWindows();
    CNodeBrowser::oOmbrelWin.destroy();
    finish();
}

void CUserInterfaceThread::finish()
{
    oHandover.abandon();
    const std::lock_guard<std::mutex> lock(oStateMutex);
    bStopping = true;
    bFinished = true;
    oStateChanged.notify_all();
}

// Windows and application are left as they are: they can't be used any more, not even be deleted.
void CUserInterfaceThread::giveUp()
{
    std::fputs("qtutils: the display is lost, and with it the window; there will be no other one\n", stderr);
    oCommandPost.close();
    finish();
    forkguard::pauseWork();
    sleepForever();
}

void CUserInterfaceThread::stop()
{
    if (exitguard::isChild())
        return;
    oCommandPost.close();
    oHandover.close();
    std::unique_lock<std::mutex> lock(oStateMutex);
    if (!bStopping)
        oTakeDownEnd = std::chrono::steady_clock::now() + LongestTakeDown;
    bStopping = true;
    oStateChanged.notify_all();
    endLoop();
    if (bStarted && !pthread_equal(pthread_self(), oThread))
        oStateChanged.wait_until(lock, oTakeDownEnd, [this] { return bFinished; });
}

// By event: an exit asked for before the loop has started would be lost.
void CUserInterfaceThread::endLoop() const
{
    if (bLoopAlive)
        QMetaObject::invokeMethod(
            QCoreApplication::instance(), [] { QCoreApplication::exit(0); }, Qt::QueuedConnection);
}
