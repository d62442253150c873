// SPDX-FileCopyrightText: The qtutils developers
// SPDX-License-Identifier: MIT

#include "COmbrelWin.h"

#include "CSurroundings.h"
#include "binding/eventorder.h"
#include "displayloss.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QPainter>
#include <QPixmapCache>
#include <QThreadPool>

#include <cstdio>
#include <memory>

#include <xcb/xcb.h>

namespace {

/// Calls the hooks of events.
class CApplication : public QApplication
{
public:
    CApplication(int& iArguments, char** apcArguments, const ApplicationHooks& oApplicationHooks)
        : QApplication(iArguments, apcArguments)
        , oHooks(oApplicationHooks)
    {
        connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
            oHooks.beforeWaiting);
    }

    bool notify(QObject* pReceiver, QEvent* pEvent) override
    {
        oHooks.beforeEvent();
        eventorder::received(pEvent);
        const bool bResult = QApplication::notify(pReceiver, pEvent);
        oHooks.afterEvent();
        return bResult;
    }

private:
    const ApplicationHooks oHooks;
};

// What Qt makes when it first paints, for the whole process, and takes away at the process's end. Were it
// made in the midst of an event, an exit at that moment would take it away before the window (see exitguard).
void makeSharedObjects()
{
    QPixmap oPixmap(1, 1);
    QPixmapCache::find(QStringLiteral("qtutils"), &oPixmap);
    QThreadPool::globalInstance();
    QPainter oPainter(&oPixmap);
    oPainter.fillRect(oPixmap.rect(), Qt::Dense4Pattern);
    oPainter.fillRect(oPixmap.rect(), QLinearGradient(0, 0, 1, 1));
    oPainter.drawPoint(0, 0);
}

using XConnection = std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)>;

bool needsXDisplay()
{
    return !qEnvironmentVariableIsSet("QT_QPA_PLATFORM") || qgetenv("QT_QPA_PLATFORM").startsWith("xcb");
}

} // namespace

bool COmbrelWin::create(const ApplicationHooks& oHooks)
{
    if (pApplication != nullptr)
        return true;
    if (QCoreApplication::instance() != nullptr) {
        std::fputs("qtutils: the host has an application object of its own\n", stderr);
        return false;
    }
    // Asked before Qt, which aborts the process when there is no display. The connection is kept until Qt has
    // its own: some servers start anew when their last client leaves.
    const XConnection oConnection(xcb_connect(nullptr, nullptr), &xcb_disconnect);
    if (needsXDisplay() && xcb_connection_has_error(oConnection.get()) != 0) {
        std::fputs("qtutils: the display cannot be opened\n", stderr);
        return false;
    }
    // Qt keeps references to both for its whole life.
    static char acName[] = "Ombrel";
    static char* apcArguments[] = {acName, nullptr};
    static int iArguments = 1;
    const CSurroundings surroundings;
    pApplication = new CApplication(iArguments, apcArguments, oHooks);
    QApplication::setQuitOnLastWindowClosed(false);
    makeSharedObjects();
    displayloss::guard(oHooks.displayLost);
    return true;
}

void COmbrelWin::destroy()
{
    delete pApplication;
    pApplication = nullptr;
}
